#pragma once

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tarnwik {

/// How well a colour can be told from the one behind it, as the Web Content Accessibility Guidelines count it.
class Contrast : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// What is seen where \a top, which may be translucent, lies over the opaque \a bottom.
    Q_INVOKABLE static QColor over(const QColor &top, const QColor &bottom);

    /// The contrast of \a foreground, which may be translucent, on the opaque \a background: 1 (none) to 21.
    Q_INVOKABLE static double ratio(const QColor &foreground, const QColor &background);

    /// The opaque \a color itself where its contrast on \a background is \a atLeast; else the nearest colour towards
    /// black or white, whichever is farther from the background, that reaches it, or that end itself if none does.
    Q_INVOKABLE static QColor readable(const QColor &color, const QColor &background, double atLeast);
};

} // namespace tarnwik
