#include "ui/controls/IconProvider.h"
#include "ui/controls/ControlsWindow.h"
#include "ui/controls/IconTable.h"

#include <QDir>
#include <QFile>
#include <QQuickItem>
#include <QSet>
#include <QtQml>

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

/// Before the application is made: the screens of this program have two pixels a point.
const bool isScaled = qputenv("QT_SCALE_FACTOR", "2");

const QStringList symbols = {
    QStringLiteral("network"),
    QStringLiteral("person.crop.circle"),
    QStringLiteral("gearshape"),
    QStringLiteral("arrow.right.circle.fill"),
    QStringLiteral("power"),
    QStringLiteral("xmark.circle"),
    QStringLiteral("network.slash"),
    QStringLiteral("person.crop.circle.badge.exclamationmark"),
    QStringLiteral("checkmark.circle.fill"),
    QStringLiteral("checkmark.seal.fill"),
    QStringLiteral("slash.circle"),
    QStringLiteral("circle"),
    QStringLiteral("creditcard"),
    QStringLiteral("arrow.clockwise"),
    QStringLiteral("rectangle.portrait.and.arrow.right"),
    QStringLiteral("line.3.horizontal"),
    QStringLiteral("checkmark"),
    QStringLiteral("chevron.up.chevron.down"),
};

QImage drawn(const QString &symbol, const QString &color, int pixels)
{
    QSize size;
    const auto image = IconProvider().requestImage(symbol + u'/' + color, &size, QSize(pixels, pixels));
    return image;
}

/// How much of the image is covered, from 0 to 1.
double coverage(const QImage &image)
{
    double sum = 0;
    for (auto y = 0; y < image.height(); ++y) {
        for (auto x = 0; x < image.width(); ++x)
            sum += image.pixelColor(x, y).alphaF();
    }
    return sum / (image.width() * image.height());
}

/// Remembers at which sizes an engine asks.
class RecordingProvider : public IconProvider
{
public:
    explicit RecordingProvider(QList<QSize> *sizes)
        : m_sizes(sizes)
    {
    }

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override
    {
        m_sizes->append(requestedSize);
        return IconProvider::requestImage(id, size, requestedSize);
    }

private:
    QList<QSize> *m_sizes;
};

} // namespace

TEST(IconProvider, drawsEverySymbolAtEverySize)
{
    for (const auto &symbol : symbols) {
        for (const auto pixels : {14, 16, 32, 48, 96}) {
            const auto image = drawn(symbol, QStringLiteral("#ff000000"), pixels);
            EXPECT_EQ(image.size(), QSize(pixels, pixels)) << symbol.toStdString();
            EXPECT_GT(coverage(image), 0.04) << symbol.toStdString();
            EXPECT_LT(coverage(image), 0.90) << symbol.toStdString();
        }
    }
}

TEST(IconProvider, drawsEverySymbolDifferently)
{
    QSet<QString> files;
    for (const auto &symbol : symbols) {
        ASSERT_TRUE(iconFile(symbol));
        EXPECT_TRUE(QFile::exists(*iconFile(symbol))) << symbol.toStdString();
        files.insert(*iconFile(symbol));
    }
    EXPECT_EQ(files.size(), symbols.size());
    EXPECT_EQ(QDir(QStringLiteral(":/tarnwik/icons")).entryList().size(), symbols.size())
        << "an icon that nothing names";
}

TEST(IconProvider, drawsInTheColorThatIsAskedForAndNoOther)
{
    const auto image = drawn(QStringLiteral("power"), QStringLiteral("#ff1e7b34"), 48);
    for (auto y = 0; y < image.height(); ++y) {
        for (auto x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() == 255)
                EXPECT_EQ(image.pixel(x, y), 0xff1e7b34);
        }
    }
}

TEST(IconProvider, drawsTranslucentColorsTranslucently)
{
    const auto image = drawn(QStringLiteral("circle"), QStringLiteral("#80000000"), 48);
    auto greatest = 0;
    for (auto x = 0; x < image.width(); ++x)
        greatest = std::max(greatest, image.pixelColor(x, image.height() / 2).alpha());
    EXPECT_NEAR(greatest, 0x80, 1);
}

TEST(IconProvider, cutsTheGlyphOutOfAFilledIcon)
{
    const auto image = drawn(QStringLiteral("arrow.right.circle.fill"), QStringLiteral("#ff0000ff"), 96);
    EXPECT_EQ(image.pixel(48, 12), 0xff0000ff) << "The disc is filled.";
    EXPECT_EQ(image.pixelColor(48, 48).alpha(), 0) << "The arrow's shaft is a hole.";
    EXPECT_EQ(image.pixelColor(1, 1).alpha(), 0) << "Nothing is drawn around the disc.";
}

TEST(IconProvider, givesNothingForAnUnknownSymbolOrColor)
{
    EXPECT_TRUE(drawn(QStringLiteral("no.such.symbol"), QStringLiteral("#ff000000"), 16).isNull());
    EXPECT_TRUE(drawn(QStringLiteral("../power"), QStringLiteral("#ff000000"), 16).isNull());
    EXPECT_TRUE(drawn(QStringLiteral("power"), QStringLiteral("colourful"), 16).isNull());
    EXPECT_TRUE(drawn(QString(), QString(), 16).isNull());
}

TEST(IconProvider, isAskedForTheScreensPixelsOnce)
{
    ASSERT_TRUE(isScaled);
    QList<QSize> sizes;
    ControlsWindow window("Timer {}");
    ASSERT_EQ(window.view().effectiveDevicePixelRatio(), 2);

    window.engine().removeImageProvider(QStringLiteral("icon"));
    window.engine().addImageProvider(QStringLiteral("icon"), new RecordingProvider(&sizes));
    QQmlComponent component(&window.engine());
    component.setData("import QtQuick\nimport Tarnwik.Controls\n"
                      "Row { Repeater { model: 3; Icon { symbol: \"power\"; color: \"#123456\" } } }",
                      {});
    const std::unique_ptr<QObject> row(component.createWithInitialProperties(
        {{QStringLiteral("parent"), QVariant::fromValue(window.view().contentItem())}}));
    ASSERT_TRUE(row) << component.errorString().toStdString();
    EXPECT_EQ(sizes, QList<QSize>({QSize(32, 32)}));
}

} // namespace tarnwik::test
