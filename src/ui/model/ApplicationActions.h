#pragma once

#include "ui/model/RefreshAction.h"
#include "ui/model/VPNAction.h"

#include <memory>

namespace tarnwik {

class Desktop;

/// Everything that the user can have done, once for the menu bar, the tray and the window. What needs windows is asked
/// of the shell by signals. Lives on the main thread.
class ApplicationActions final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(tarnwik::Action *openDashboard READ openDashboard CONSTANT)
    Q_PROPERTY(tarnwik::VPNAction *vpn READ vpn CONSTANT)
    Q_PROPERTY(tarnwik::RefreshAction *refresh READ refresh CONSTANT)
    Q_PROPERTY(tarnwik::Action *settings READ settings CONSTANT)
    Q_PROPERTY(tarnwik::Action *signOut READ signOut CONSTANT)
    Q_PROPERTY(tarnwik::Action *quit READ quit CONSTANT)
    Q_PROPERTY(tarnwik::Action *settingsRefresh READ settingsRefresh CONSTANT)
    Q_PROPERTY(tarnwik::Action *settingsSignOut READ settingsSignOut CONSTANT)
    Q_PROPERTY(tarnwik::Action *emailSupport READ emailSupport CONSTANT)
    Q_PROPERTY(tarnwik::Action *manageBilling READ manageBilling CONSTANT)

public:
    /// \a model must outlive this object.
    ApplicationActions(AppModel *model, std::shared_ptr<Desktop> desktop);

    /// The main window, as the application menu names it and as the tray does.
    Action *openDashboard() { return &m_openDashboard; }
    Action *openTarnwik() { return &m_openTarnwik; }

    VPNAction *vpn() { return &m_vpn; }
    RefreshAction *refresh() { return &m_refresh; }
    Action *settings() { return &m_settings; }
    Action *signOut() { return &m_signOut; }
    Action *quit() { return &m_quit; }

    /// The Settings screen's own buttons, which it always offers: what may be done is left to the model there.
    Action *settingsRefresh() { return &m_settingsRefresh; }
    Action *settingsSignOut() { return &m_settingsSignOut; }

    /// A letter to the service's support.
    Action *emailSupport() { return &m_emailSupport; }

    /// The account's billing portal; enabled when it has one.
    Action *manageBilling() { return &m_manageBilling; }

Q_SIGNALS:
    void openMainWindowRequested();
    void settingsRequested();
    void quitRequested();

private:
    void updateSessionCommands();
    void updateBilling();
    void openBillingPortal();

    AppModel *m_model;
    std::shared_ptr<Desktop> m_desktop;
    Action m_openDashboard;
    Action m_openTarnwik;
    VPNAction m_vpn;
    RefreshAction m_refresh;
    Action m_settings;
    Action m_signOut;
    Action m_quit;
    Action m_settingsRefresh;
    Action m_settingsSignOut;
    Action m_emailSupport;
    Action m_manageBilling;
};

} // namespace tarnwik
