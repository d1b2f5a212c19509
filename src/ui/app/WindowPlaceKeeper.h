#pragma once

#include "ui/app/WindowPlace.h"

#include <QObject>
#include <QTimer>

class QWindow;

namespace tarnwik {

/// Gives a window the place that it had in the run before, and remembers where the user puts it: shortly after each
/// change, so that even a program that is killed comes back where it was, and when the window or the program ends.
class WindowPlaceKeeper : public QObject
{
    Q_OBJECT

public:
    /// \a window, which becomes this object's parent, is not shown yet.
    WindowPlaceKeeper(WindowPlaceFile file, QWindow *window);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void restore();
    void take();
    void save();

    const WindowPlaceFile m_file;
    QWindow *const m_window;
    QTimer m_settled;
    std::optional<WindowPlace> m_place;
    std::optional<WindowPlace> m_written;
};

} // namespace tarnwik
