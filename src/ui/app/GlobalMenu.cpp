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

GlobalMenu::GlobalMenu(QDBusConnection bus, DesktopMenuBar menuBar, QWindow *window, ApplicationActions *actions)
    : m_window(window)
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
        addItems();
        m_menuBar = std::make_unique<QMenuBar>();
        m_menuBar->addMenu(m_menu.get());
        QObject::connect(m_window, &QWindow::visibleChanged, this, &GlobalMenu::attach);
    }
    attach();
}

void GlobalMenu::addItems()
{
    const auto add = [this](Action *action) { addMenuItem(m_menu.get(), action, MenuItemKeys::Shown); };
    add(m_actions->openDashboard());
    m_menu->addSeparator();
    add(m_actions->vpn());
    m_menu->addSeparator();
    add(m_actions->refresh());
    add(m_actions->settings());
    m_menu->addSeparator();
    add(m_actions->signOut());
    m_menu->addSeparator();
    add(m_actions->quit());
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
