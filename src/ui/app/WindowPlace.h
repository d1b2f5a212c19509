#pragma once

#include <QList>
#include <QRect>
#include <QString>

#include <optional>

namespace tarnwik {

/// Where a window is, and how large, in points of the desktop and without the frame that the desktop puts around it.
struct WindowPlace
{
    /// The place while the window is not maximised.
    QRect geometry;
    bool isMaximized = false;

    bool operator==(const WindowPlace &) const = default;
};

/// The place of the main window, remembered from one run to the next in a file of its own.
class WindowPlaceFile
{
public:
    explicit WindowPlaceFile(QString path);

    /// The file in the user's state folder.
    static QString defaultPath();

    /// What was written last. Absent when there is nothing, or nothing that makes sense.
    std::optional<WindowPlace> read() const;

    /// Whether that worked. A failure costs the user nothing but the window's place, and is not worth a message.
    bool write(const WindowPlace &place) const;

private:
    QString m_path;
};

/// \a geometry as it can be used on \a screens, the first of which is the main one: no smaller than \a minimum, no
/// larger than the screen it is mostly on, and wholly on it. Without a screen, \a geometry itself.
QRect fittedToScreens(const QRect &geometry, const QList<QRect> &screens, QSize minimum);

} // namespace tarnwik
