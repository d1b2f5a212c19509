#include "tunnel/VPNController.h"

#include "async/Abandonable.h"
#include "async/OwnerGuard.h"
#include "platform/PlatformServices.h"
#include "tunnel/ProviderConfiguration.h"

#include <algorithm>
#include <utility>

namespace tarnwik {

VPNController::VPNController(QString providerBundleIdentifier, std::optional<QString> keychainAccessGroup)
    : m_providerBundleIdentifier(std::move(providerBundleIdentifier))
    , m_keychainAccessGroup(std::move(keychainAccessGroup))
    , m_tunnelManager(PlatformServices::current().tunnelManager)
{
    // Queued: the status is read on a later turn of the loop, when whoever told of the change has finished with it.
    QObject::connect(m_tunnelManager.get(), &TunnelManager::statusDidChange, this, &VPNController::takeStatus,
                     Qt::QueuedConnection);
}

QString VPNController::statusLabel() const
{
    switch (status()) {
    case VPNStatus::Invalid:
        return QStringLiteral("Not configured");
    case VPNStatus::Disconnected:
        return QStringLiteral("Disconnected");
    case VPNStatus::Connecting:
    case VPNStatus::Reasserting:
        return QStringLiteral("Connecting");
    case VPNStatus::Connected:
        return QStringLiteral("Connected");
    case VPNStatus::Disconnecting:
        return QStringLiteral("Disconnecting");
    }
    return QStringLiteral("Unknown");
}

VPNActionState VPNController::actionState() const
{
    switch (status()) {
    case VPNStatus::Invalid:
    case VPNStatus::Disconnected:
        return VPNActionState::CanConnect;
    case VPNStatus::Connected:
        return VPNActionState::CanDisconnect;
    case VPNStatus::Connecting:
    case VPNStatus::Reasserting:
    case VPNStatus::Disconnecting:
        break;
    }
    return VPNActionState::InTransition;
}

std::optional<TunnelNode> VPNController::configuredNode() const
{
    if (!hasManager() || !m_manager.value()->protocolConfiguration)
        return std::nullopt;
    return nodeOfConfiguration(m_manager.value()->protocolConfiguration->providerConfiguration);
}

std::optional<QString> VPNController::lastDisconnectError() const
{
    return hasManager() ? m_manager.value()->lastDisconnectError() : std::nullopt;
}

Task<> VPNController::connect(TunnelProfile profile, QString privateKeyReference, std::stop_token token)
{
    const async::OwnerGuard guard(this);
    const Manager manager = co_await loadOrCreateManager(token);
    guard.check();
    manager->protocolConfiguration = tunnelProtocol(profile, privateKeyReference);
    manager->localizedDescription = m_tunnelDescription;
    manager->isEnabled = true;
    co_await async::abandonable(manager->saveToPreferences(), token, manager);
    guard.check();
    co_await async::abandonable(manager->loadFromPreferences(), token, manager);
    guard.check();
    co_await async::abandonable(manager->startVPNTunnel(), token, manager);
    guard.check();
    takeStatus();
}

Task<> VPNController::disconnect(std::stop_token token)
{
    const async::OwnerGuard guard(this);
    const Manager manager = co_await loadOrCreateManager(token);
    co_await async::abandonable(manager->stopVPNTunnel(), token, manager);
    guard.check();
    takeStatus();
}

Task<> VPNController::refreshStatus(std::stop_token token)
{
    const async::OwnerGuard guard(this);
    bool isKnown = true;
    try {
        co_await loadOrCreateManager(token);
    } catch (const async::Cancelled &) {
        co_return;
    } catch (...) {
        // A system that cannot list its tunnels has none configured, as far as the user is concerned.
        isKnown = false;
    }
    if (!guard.isAlive())
        co_return;
    if (isKnown)
        takeStatus();
    else
        m_status = VPNStatus::Invalid;
}

Task<VPNController::Manager> VPNController::loadOrCreateManager(std::stop_token token)
{
    if (hasManager())
        co_return m_manager.value();
    const async::OwnerGuard guard(this);
    const auto tunnels = m_tunnelManager;
    const auto saved = co_await async::abandonable(tunnels->loadAllFromPreferences(), token, tunnels);
    guard.check();
    // Another operation may have found or made it while this one waited: there is one for the controller's lifetime.
    if (hasManager())
        co_return m_manager.value();

    const auto configurations = saved.value_or(TunnelManager::Configurations());
    const auto own = std::find_if(configurations.begin(), configurations.end(), [this](const Manager &manager) {
        return manager->localizedDescription == m_tunnelDescription;
    });
    m_manager = own != configurations.end() ? *own : tunnels->create();
    takeStatus();
    co_return m_manager.value();
}

TunnelProviderProtocol VPNController::tunnelProtocol(const TunnelProfile &profile,
                                                     const QString &privateKeyReference) const
{
    return {.providerBundleIdentifier = m_providerBundleIdentifier,
            .serverAddress = profile.peer.endpoint,
            .disconnectOnSleep = false,
            .providerConfiguration = providerConfiguration(profile, privateKeyReference, m_keychainAccessGroup)};
}

void VPNController::takeStatus()
{
    if (hasManager())
        m_status = m_manager.value()->status();
}

} // namespace tarnwik
