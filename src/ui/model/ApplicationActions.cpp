#include "ui/model/ApplicationActions.h"

#include "async/Detach.h"
#include "platform/Desktop.h"
#include "platform/OutgoingLink.h"
#include "ui/model/EnablingRules.h"
#include "ui/model/Presentation.h"

#include <utility>

namespace tarnwik {

namespace {

std::optional<QString> billingPortalURL(const AppModel &model)
{
    const std::optional<Account> account = model.account();
    return account ? presentation::billingPortalURL(*account) : std::nullopt;
}

/// An address that is written in this program: one that is not sound is a mistake of ours, and ends it.
QString ownLink(const QString &address)
{
    if (!outgoingLink(address))
        qFatal("“%s” is no link.", qUtf8Printable(address));
    return address;
}

const QString supportURL = QStringLiteral("mailto:support@tarnwik.example");
const QString openDashboardShortcut = QStringLiteral("Ctrl+0");
const QString quitShortcut = QStringLiteral("Ctrl+Q");
const QString signOutTitle = QStringLiteral("Sign Out");
const QString signOutSymbol = QStringLiteral("rectangle.portrait.and.arrow.right");

} // namespace

ApplicationActions::ApplicationActions(AppModel *model, std::shared_ptr<Desktop> desktop)
    : m_model(model)
    , m_desktop(std::move(desktop))
    , m_openDashboard({.title = QStringLiteral("Open Dashboard"), .symbol = {}, .shortcut = openDashboardShortcut},
                      [this] { Q_EMIT openMainWindowRequested(); })
    , m_openTarnwik({.title = QStringLiteral("Open Tarnwik"), .symbol = {}, .shortcut = {}},
                    [this] { Q_EMIT openMainWindowRequested(); })
    , m_vpn(model)
    , m_refresh(model)
    , m_settings({.title = QStringLiteral("Settings"), .symbol = QStringLiteral("gearshape"), .shortcut = {}},
                 [this] { Q_EMIT settingsRequested(); })
    , m_signOut({.title = signOutTitle, .symbol = signOutSymbol, .shortcut = {}, .isEnabled = false},
                [model] { async::detach(model->signOut()); })
    , m_quit({.title = QStringLiteral("Quit"), .symbol = {}, .shortcut = quitShortcut},
             [this] { Q_EMIT quitRequested(); })
    , m_settingsRefresh({.title = m_refresh.title(), .symbol = m_refresh.symbol(), .shortcut = {}},
                        [model] { async::detach(model->refreshFromUI()); })
    , m_settingsSignOut({.title = signOutTitle, .symbol = signOutSymbol, .shortcut = {}},
                        [model] { async::detach(model->signOut()); })
    , m_emailSupport({.title = QStringLiteral("Email support"), .symbol = {}, .shortcut = {}},
                     [this, url = ownLink(supportURL)] { m_desktop->openURL(url); })
    , m_manageBilling({.title = QStringLiteral("Manage billing"),
                       .symbol = QStringLiteral("creditcard"),
                       .shortcut = {},
                       .isEnabled = false},
                      [this] { openBillingPortal(); })
{
    QObject::connect(model, &AppModel::authTokenChanged, this, &ApplicationActions::updateSessionCommands);
    QObject::connect(model, &AppModel::isLoadingChanged, this, &ApplicationActions::updateSessionCommands);
    QObject::connect(model, &AppModel::accountChanged, this, &ApplicationActions::updateBilling);
    updateSessionCommands();
    updateBilling();
}

void ApplicationActions::updateSessionCommands()
{
    const bool isEnabled = enabling::isSessionCommandEnabled(ModelState::of(*m_model));
    m_refresh.setEnabled(isEnabled);
    m_signOut.setEnabled(isEnabled);
}

void ApplicationActions::updateBilling()
{
    m_manageBilling.setEnabled(billingPortalURL(*m_model).has_value());
}

void ApplicationActions::openBillingPortal()
{
    if (const std::optional<QString> url = billingPortalURL(*m_model))
        m_desktop->openURL(*url);
}

} // namespace tarnwik
