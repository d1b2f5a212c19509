#include "ui/app/WindowPlace.h"

#include "platform/OwnFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <limits>

namespace tarnwik {

namespace {

const QString xKey = QStringLiteral("x");
const QString yKey = QStringLiteral("y");
const QString widthKey = QStringLiteral("width");
const QString heightKey = QStringLiteral("height");
const QString isMaximizedKey = QStringLiteral("isMaximized");

/// No desktop is larger; whatever lies beyond came from elsewhere.
constexpr int largestCoordinate = std::numeric_limits<qint16>::max();
/// The file is some 80 bytes long; one that is larger is not ours.
constexpr qint64 largestFile = 4096;

std::optional<int> coordinate(const QJsonObject &object, const QString &key)
{
    constexpr int absent = std::numeric_limits<int>::min();
    const int value = object.value(key).toInt(absent);
    if (value < -largestCoordinate || value > largestCoordinate)
        return {};
    return value;
}

qint64 overlap(const QRect &one, const QRect &other)
{
    const QRect common = one & other;
    return common.isEmpty() ? 0 : qint64(common.width()) * common.height();
}

} // namespace

WindowPlaceFile::WindowPlaceFile(QString path)
    : m_path(std::move(path))
{
}

QString WindowPlaceFile::defaultPath()
{
    QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(folder))
        folder = QDir::homePath() + QStringLiteral("/.local/state");
    return folder + QStringLiteral("/tarnwik/window.json");
}

std::optional<WindowPlace> WindowPlaceFile::read() const
{
    // Anything but a regular file is left unopened: a pipe would hold the program up.
    if (!QFileInfo(m_path).isFile())
        return {};
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject object = QJsonDocument::fromJson(file.read(largestFile)).object();
    const auto x = coordinate(object, xKey);
    const auto y = coordinate(object, yKey);
    const auto width = coordinate(object, widthKey);
    const auto height = coordinate(object, heightKey);
    if (!x || !y || !width || !height || *width <= 0 || *height <= 0)
        return {};
    return WindowPlace{QRect(*x, *y, *width, *height), object.value(isMaximizedKey).toBool()};
}

bool WindowPlaceFile::write(const WindowPlace &place) const
{
    if (!QFileInfo(m_path).absoluteDir().mkpath(QStringLiteral(".")))
        return false;
    const QJsonObject object{{xKey, place.geometry.x()},
                             {yKey, place.geometry.y()},
                             {widthKey, place.geometry.width()},
                             {heightKey, place.geometry.height()},
                             {isMaximizedKey, place.isMaximized}};
    return !replaceOwnFile(m_path, QJsonDocument(object).toJson());
}

QRect fittedToScreens(const QRect &geometry, const QList<QRect> &screens, QSize minimum)
{
    if (screens.isEmpty())
        return geometry;
    const QRect screen = *std::ranges::max_element(
        screens, {}, [&geometry](const QRect &candidate) { return overlap(candidate, geometry); });
    const QSize size = geometry.size().boundedTo(screen.size()).expandedTo(minimum);
    const auto within = [](int wanted, int first, int last) { return std::max(first, std::min(wanted, last)); };
    const int x = within(geometry.x(), screen.x(), screen.x() + screen.width() - size.width());
    const int y = within(geometry.y(), screen.y(), screen.y() + screen.height() - size.height());
    return {QPoint(x, y), size};
}

} // namespace tarnwik
