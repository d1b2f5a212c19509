#pragma once

#include <QQuickImageProvider>

namespace tarnwik {

/// Draws `image://icon/SYMBOL/COLOUR`: the icon with this SF Symbols name in this colour (`#AARRGGBB`), at exactly the
/// size in pixels that is asked for. A filled icon's white glyph is cut out, so that what lies behind is seen through
/// it. An unknown name or colour gives no image.
class IconProvider : public QQuickImageProvider
{
public:
    IconProvider();
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

} // namespace tarnwik
