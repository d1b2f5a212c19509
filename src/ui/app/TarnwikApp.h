#pragma once

#include "core/AppModel.h"
#include "platform/Desktop.h"
#include "store/AppStoreSubscriptionStore.h"
#include "ui/app/Appearance.h"
#include "ui/app/PortalSettings.h"
#include "ui/app/WindowScene.h"
#include "ui/model/AppModelFacade.h"
#include "ui/model/AppearanceTasks.h"
#include "ui/model/ApplicationActions.h"
#include "ui/model/SubscriptionsFacade.h"
#include "ui/model/VPNControllerFacade.h"

#include <QQmlEngine>

#include <memory>

namespace tarnwik {

class GlobalMenu;
class TarnwikMenuBarLabel;
class TarnwikMenuBarView;
class TrayHost;
class WindowPlaceFile;

/// The program: the two models, made once, and what is shown of them: the main window, the settings in a window of
/// their own, and the icon with its menu in the desktop's tray.
///
/// Closing the last window ends the program where the desktop has no tray, since nothing would be left to see of it.
class TarnwikApp final : public QObject
{
    Q_OBJECT

public:
    /// Uses the platform of PlatformServices::current(), which must outlive this object.
    explicit TarnwikApp(WindowPlaceFile windowPlace);
    ~TarnwikApp() override;

    /// What follows the launch: the main window, then everything that is not needed for its first picture.
    void applicationDidFinishLaunching();

    /// Shows the main window and brings the program to the front.
    void openMainWindow();

private:
    void openSettings();
    void followAppearance();
    void afterFirstPicture();
    void updateMenuBarExtra();
    void endIfNothingIsLeft();

    const std::shared_ptr<Desktop> m_desktop;
    AppModel m_appModel;
    AppStoreSubscriptionStore m_appStoreSubscriptions;
    AppModelFacade m_appModelFacade;
    VPNControllerFacade m_vpnControllerFacade;
    SubscriptionsFacade m_subscriptionsFacade;
    ApplicationActions m_actions;
    AppearanceTasks m_tasks;
    Appearance m_appearance;
    PortalSettings m_portalSettings;
    QQmlEngine m_engine;
    WindowScene m_mainWindow;
    WindowScene m_settingsWindow;
    std::unique_ptr<GlobalMenu> m_globalMenu;
    std::unique_ptr<TrayHost> m_trayHost;
    std::unique_ptr<TarnwikMenuBarView> m_menuBarView;
    std::unique_ptr<TarnwikMenuBarLabel> m_menuBarLabel;
};

} // namespace tarnwik
