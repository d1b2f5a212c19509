#include "ui/controls/IconProvider.h"

#include "ui/controls/IconTable.h"

#include <QColor>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace tarnwik {

namespace {

/// The drawing in white on nothing, with the glyphs of filled icons in black: the brightness of a pixel is then how
/// much of the tint belongs there.
QImage brightness(const QString &fileName, const QSize &size)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    auto drawing = file.readAll();
    drawing.replace("#fff", "#000").replace("currentColor", "#fff");

    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer renderer(drawing);
    QPainter painter(&image);
    renderer.render(&painter, QRectF(QPointF(), size));
    return image;
}

QImage tinted(QImage image, const QColor &color)
{
    const auto tint = color.rgba64();
    for (auto y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y)); // The format's own pixels.
        for (auto x = 0; x < image.width(); ++x) {
            auto pixel = tint;
            pixel.setAlpha(static_cast<quint16>(tint.alpha() * qRed(line[x]) / 255));
            line[x] = pixel.premultiplied().toArgb32();
        }
    }
    return image;
}

} // namespace

IconProvider::IconProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
{
}

QImage IconProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const auto file = iconFile(id.section(u'/', 0, 0));
    const QColor color(id.section(u'/', 1));
    if (!file || !color.isValid())
        return {};

    constexpr auto drawnSize = 24;
    const auto pixels = requestedSize.isEmpty() ? QSize(drawnSize, drawnSize) : requestedSize;
    auto image = tinted(brightness(*file, pixels), color);
    *size = image.size();
    return image;
}

} // namespace tarnwik
