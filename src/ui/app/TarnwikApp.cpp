#include "ui/app/TarnwikApp.h"

#include "platform/PlatformServices.h"
#include "platform/gui/SystemDesktop.h"
#include "ui/app/AccessibilityFactory.h"
#include "ui/app/GlobalMenu.h"
#include "ui/app/TarnwikMenuBarLabel.h"
#include "ui/app/TarnwikMenuBarView.h"
#include "ui/app/TrayHost.h"
#include "ui/app/WindowPlaceKeeper.h"
#include "ui/screens/ScreensModule.h"

#include <QGuiApplication>
#include <QIcon>
#include <QQmlComponent>
#include <QQuickWindow>
#include <QScreen>
#include <QTimer>
#include <QtQml/qqmlextensionplugin.h>

#include <algorithm>
#include <chrono>
#include <utility>

Q_IMPORT_QML_PLUGIN(Tarnwik_ShellPlugin)

namespace tarnwik {

namespace {

QUrl component(const QString &name)
{
    return QStringLiteral("qrc:/qt/qml/Tarnwik/%1.qml").arg(name);
}

/// Puts \a window over the middle of \a other, on the same screen, where the desktop lets programs do so.
void placeOver(QWindow *window, const QWindow &other)
{
    QRect place(QPoint(), window->size());
    place.moveCenter(other.geometry().center());
    const QRect room = other.screen()->availableGeometry();
    window->setPosition(std::max(room.left(), std::min(place.left(), room.right() - place.width())),
                        std::max(room.top(), std::min(place.top(), room.bottom() - place.height())));
}

QVariant object(QObject *object)
{
    return QVariant::fromValue(object);
}

} // namespace

TarnwikApp::TarnwikApp(WindowPlaceFile windowPlace)
    : m_desktop(PlatformServices::current().desktop)
    , m_appModelFacade(&m_appModel)
    , m_vpnControllerFacade(m_appModel.vpnController())
    , m_subscriptionsFacade(&m_appModel, &m_appStoreSubscriptions)
    , m_actions(&m_appModel, m_desktop)
    , m_tasks(&m_appModel, &m_appStoreSubscriptions)
    , m_portalSettings(QDBusConnection::sessionBus(), &m_appearance)
    , m_mainWindow(&m_engine, component(QStringLiteral("MainWindow")),
                   {{QStringLiteral("appModel"), object(&m_appModelFacade)},
                    {QStringLiteral("vpnController"), object(&m_vpnControllerFacade)},
                    {QStringLiteral("appStoreSubscriptions"), object(&m_subscriptionsFacade)},
                    {QStringLiteral("actions"), object(&m_actions)},
                    {QStringLiteral("tasks"), object(&m_tasks)}})
    , m_settingsWindow(&m_engine, component(QStringLiteral("SettingsWindow")),
                       {{QStringLiteral("appModel"), object(&m_appModelFacade)},
                        {QStringLiteral("actions"), object(&m_actions)},
                        {QStringLiteral("tasks"), object(&m_tasks)}})
{
    addScreensModule(m_engine);
    QObject::connect(&m_actions, &ApplicationActions::openMainWindowRequested, this, &TarnwikApp::openMainWindow);
    QObject::connect(&m_actions, &ApplicationActions::settingsRequested, this, &TarnwikApp::openSettings);
    QObject::connect(&m_actions, &ApplicationActions::quitRequested, this, [this] { m_desktop->terminate(); });
    QObject::connect(&m_mainWindow, &WindowScene::closed, this, &TarnwikApp::endIfNothingIsLeft);
    QObject::connect(&m_settingsWindow, &WindowScene::closed, this, &TarnwikApp::endIfNothingIsLeft);
    new WindowPlaceKeeper(std::move(windowPlace), m_mainWindow.window());
}

TarnwikApp::~TarnwikApp() = default;

void TarnwikApp::applicationDidFinishLaunching()
{
    // A minimised window, or one on another desktop, has no picture to wait for.
    constexpr std::chrono::seconds longestWait(1);
    m_portalSettings.takeWhatHasCome();
    followAppearance();
    // Before the window is shown: a screen reader asks about each control as soon as it is, and Qt keeps the answer.
    installAccessibilityFactory();
    auto *timer = new QTimer(this);
    timer->setSingleShot(true);
    timer->callOnTimeout(this, [this, timer] {
        timer->deleteLater();
        afterFirstPicture();
    });
    timer->start(longestWait);
    QObject::connect(
        m_mainWindow.window(), &QQuickWindow::frameSwapped, timer, [timer] { timer->start(0); },
        Qt::SingleShotConnection);
    openMainWindow();
}

void TarnwikApp::openMainWindow()
{
    m_mainWindow.open();
    m_desktop->setRegularActivationPolicy();
    m_desktop->activateIgnoringOtherApps();
}

void TarnwikApp::openSettings()
{
    if (m_mainWindow.isOpen() && !m_settingsWindow.isOpen())
        placeOver(m_settingsWindow.window(), *m_mainWindow.window());
    m_settingsWindow.open();
}

void TarnwikApp::followAppearance()
{
    QQmlComponent description(&m_engine, component(QStringLiteral("Shell/AppearanceFollower")));
    auto *follower = description.createWithInitialProperties({{QStringLiteral("appearance"), object(&m_appearance)}});
    if (!follower)
        qFatal("%s", qUtf8Printable(description.errorString()));
    follower->setParent(&m_engine);
}

void TarnwikApp::afterFirstPicture()
{
    QGuiApplication::setWindowIcon(
        QIcon::fromTheme(QGuiApplication::desktopFileName(), QIcon(QStringLiteral(":/tarnwik/TarnwikIcon.svg"))));
    // The menu-bar view appears, whether or not the desktop has a place for it yet.
    m_tasks.begin(AppearanceTasks::Environment);
    m_tasks.begin(AppearanceTasks::MenuBar);
    m_globalMenu = std::make_unique<GlobalMenu>(QDBusConnection::sessionBus(), desktopMenuBar(), m_mainWindow.window(),
                                                &m_actions);
    m_trayHost = std::make_unique<TrayHost>(QDBusConnection::sessionBus(), desktopMenuBar());
    QObject::connect(m_trayHost.get(), &TrayHost::isPresentChanged, this, &TarnwikApp::updateMenuBarExtra);
    // Whoever closed the window before the desktop has answered is dealt with then.
    QObject::connect(m_trayHost.get(), &TrayHost::isPresentChanged, this, &TarnwikApp::endIfNothingIsLeft,
                     Qt::SingleShotConnection);
    updateMenuBarExtra();
    endIfNothingIsLeft();
}

void TarnwikApp::updateMenuBarExtra()
{
    // Made once: when the desktop's tray goes and comes back, Qt takes the icon there itself.
    if (!m_trayHost->isPresent().value_or(false) || m_menuBarLabel)
        return;
    m_menuBarView =
        std::make_unique<TarnwikMenuBarView>(&m_appModelFacade, &m_vpnControllerFacade, &m_actions, &m_tasks);
    m_menuBarLabel = std::make_unique<TarnwikMenuBarLabel>(m_menuBarView.get(), &m_appearance);
    // The bar that is always there opens the menu, and tells of that too; of others, those that tell leave it to us.
    if (desktopMenuBar() == DesktopMenuBar::Optional)
        QObject::connect(m_menuBarLabel.get(), &TarnwikMenuBarLabel::pressed, this, &TarnwikApp::openMainWindow);
}

void TarnwikApp::endIfNothingIsLeft()
{
    const bool hasNoTray = m_trayHost && !m_trayHost->isPresent().value_or(true);
    if (hasNoTray && !m_mainWindow.isOpen() && !m_settingsWindow.isOpen())
        m_desktop->terminate();
}

} // namespace tarnwik
