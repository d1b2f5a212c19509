#include "platform/embedded/store/StoreFile.h"

#include "platform/AppStore.h"
#include "platform/OwnFile.h"

#include <QFile>
#include <QFileInfo>

namespace tarnwik {

namespace {

/// Whether something is there, be it a link that leads nowhere.
bool isTaken(const QString &path)
{
    const QFileInfo file(path);
    return file.exists() || file.isSymbolicLink();
}

/// A name beside \a path, with the local time, that no file has.
QString pathAside(const QString &path, const QDateTime &now)
{
    const QString first = path + now.toLocalTime().toString(QStringLiteral("'.broken-'yyyyMMdd-HHmmss"));
    QString name = first;
    for (int number = 2; isTaken(name); ++number)
        name = QStringLiteral("%1-%2").arg(first).arg(number);
    return name;
}

} // namespace

std::optional<QByteArray> readStoreFile(const QString &path)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        QByteArray bytes = file.readAll();
        if (file.error() == QFileDevice::NoError)
            return bytes;
    } else if (!isTaken(path)) {
        // Asked after opening: a file that is made in between would count as one that cannot be read otherwise.
        return std::nullopt;
    }
    throw StoreError(QStringLiteral("The store’s file “%1” cannot be read: %2.").arg(path, file.errorString()));
}

void writeStoreFile(const QString &path, const QByteArray &bytes)
{
    if (const auto problem = replaceOwnFile(path, bytes))
        throw StoreError(QStringLiteral("The store’s file “%1” cannot be written: %2.").arg(path, *problem));
}

void keepAside(const QString &path, const QString &problem, const QDateTime &now)
{
    const QString aside = pathAside(path, now);
    // Does not overwrite.
    if (!QFile::rename(path, aside)) {
        throw StoreError(
            QStringLiteral("%1 The file “%2” could not be renamed, and is left as it is.").arg(problem, path));
    }
    throw StoreError(QStringLiteral("%1 The file “%2” was renamed to “%3”.").arg(problem, path, aside));
}

} // namespace tarnwik
