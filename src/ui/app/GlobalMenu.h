#pragma once

#include "platform/gui/SystemDesktop.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QMenu>
#include <QObject>

#include <memory>

class QMenuBar;
class QWindow;

namespace tarnwik {

class ApplicationActions;

/// Fills \a menu with the items of the application menu. Settings and Quit have their keys, and where there is always a
/// menu bar their place, in the menu that the system makes for the program itself.
void fillApplicationMenu(QMenu *menu, ApplicationActions *actions, DesktopMenuBar menuBar);

/// The application menu for desktops that show the menus of all programs in one bar. It is made once such a desktop
/// has answered, or at once where every desktop has such a bar; elsewhere it costs nothing but a question. Lives on the
/// main thread.
class GlobalMenu final : public QObject
{
    Q_OBJECT

public:
    /// \a window is the one that the menu belongs to where a menu bar shows that of one window; it and \a actions must outlive this object.
    GlobalMenu(QDBusConnection bus, DesktopMenuBar menuBar, QWindow *window, ApplicationActions *actions);
    ~GlobalMenu() override;

private:
    void ask(QDBusConnection bus);
    void make();
    void attach();

    const DesktopMenuBar m_desktopMenuBar;
    QWindow *const m_window;
    ApplicationActions *const m_actions;
    QDBusServiceWatcher m_watcher;
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QMenuBar> m_menuBar;
};

} // namespace tarnwik
