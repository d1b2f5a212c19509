#include "ui/app/GlobalMenu.h"

#include "ui/app/MenuItem.h"
#include "ui/model/ApplicationActions.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QMenuBar>
#include <QWindow>
#include <qpa/qplatformmenu.h>

namespace tarnwik {

namespace {

const QString registrar = QStringLiteral("com.canonical.AppMenu.Registrar");

} // namespace

void fillApplicationMenu(QMenu *menu, ApplicationActions *actions, DesktopMenuBar menuBar)
{
    const auto add = [menu](Action *action) { return addMenuItem(menu, action, MenuItemKeys::Shown); };
    add(actions->openDashboard());
    menu->addSeparator();
    add(actions->vpn());
    menu->addSeparator();
    add(actions->refresh());
    // By its title alone Qt would take it for the system's own item, and away from here.
    add(actions->settings())->setMenuRole(QAction::NoRole);
    menu->addSeparator();
    add(actions->signOut());
    if (menuBar == DesktopMenuBar::Always) {
        QAction *preferences = addMenuItem(menu, actions->settings(), MenuItemKeys::Hidden);
        preferences->setMenuRole(QAction::PreferencesRole);
        preferences->setShortcut(QKeySequence(QKeySequence::Preferences));
    } else {
        // Without a menu of the system's and without a tray there would be no other Quit to be seen.
        menu->addSeparator();
    }
    add(actions->quit())->setMenuRole(QAction::QuitRole);
}

GlobalMenu::GlobalMenu(QDBusConnection bus, DesktopMenuBar menuBar, QWindow *window, ApplicationActions *actions)
    : m_desktopMenuBar(menuBar)
    , m_window(window)
    , m_actions(actions)
    , m_watcher(registrar, bus, QDBusServiceWatcher::WatchForRegistration)
{
    if (menuBar == DesktopMenuBar::Always) {
        make();
        return;
    }
    QObject::connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &GlobalMenu::make);
    ask(std::move(bus));
}

GlobalMenu::~GlobalMenu() = default;

void GlobalMenu::ask(QDBusConnection bus)
{
    const QString name = QStringLiteral("org.freedesktop.DBus");
    auto question = QDBusMessage::createMethodCall(name, QStringLiteral("/"), name, QStringLiteral("NameHasOwner"));
    question << registrar;
    const auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *finished) {
        finished->deleteLater();
        const QDBusPendingReply<bool> reply = *finished;
        if (!reply.isError() && reply.value())
            make();
    });
}

void GlobalMenu::make()
{
    // Not before there is a registrar: Qt asks for it a single time.
    if (!m_menuBar) {
        m_menu = std::make_unique<QMenu>(QStringLiteral("Tarnwik"));
        fillApplicationMenu(m_menu.get(), m_actions, m_desktopMenuBar);
        m_menuBar = std::make_unique<QMenuBar>();
        m_menuBar->addMenu(m_menu.get());
        // A menu bar of no window is that of all of them, and of none.
        if (m_desktopMenuBar == DesktopMenuBar::Always)
            return;
        QObject::connect(m_window, &QWindow::visibleChanged, this, &GlobalMenu::attach);
    }
    attach();
}

void GlobalMenu::attach()
{
    QPlatformMenuBar *bar = m_menuBar->platformMenuBar();
    if (!bar)
        return;
    // Anew each time that the window is shown: it is another one to the desktop then.
    bar->handleReparent(nullptr);
    if (m_window->isVisible())
        bar->handleReparent(m_window);
}

} // namespace tarnwik
