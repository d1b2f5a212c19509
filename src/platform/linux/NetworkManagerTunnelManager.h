#pragma once

#include "platform/TunnelManager.h"

#include <QDBusConnection>

#include <chrono>
#include <memory>

namespace tarnwik {

class KeychainServices;
class NetworkManagerSession;

/// The name that the user of this process logs in with.
QString currentUserName();

/// How long a start waits for the tunnel that it replaces to end. An end takes well under a second, or a few where the
/// administrator's scripts run at it; beyond this, a person who waits is better told.
inline constexpr std::chrono::milliseconds tunnelEndLimit = std::chrono::seconds(15);

/// The tunnel manager over NetworkManager: a saved connection of type "vpn" is a tunnel configuration, and the program
/// that carries its packets is a NetworkManager VPN service.
///
/// The constructor subscribes to the daemon's signals and asks it nothing. The program joins the daemon's secret agents
/// when it first starts a tunnel, and reads the private key from \a keychain when the daemon asks for it; that blocks
/// the main thread while the person unlocks the keychain. One bus connection serves one manager. An ordinary user needs
/// no privilege beyond what the desktop grants for VPN connections of one's own.
class NetworkManagerTunnelManager final : public TunnelManager
{
    Q_OBJECT

public:
    explicit NetworkManagerTunnelManager(std::shared_ptr<KeychainServices> keychain,
                                         QString userName = currentUserName(),
                                         const QDBusConnection &bus = QDBusConnection::systemBus(),
                                         std::chrono::milliseconds endLimit = tunnelEndLimit);
    ~NetworkManagerTunnelManager() override;

    /// The user's saved VPN connections, in the daemon's order. Those that the user may not read are left out.
    Task<std::optional<Configurations>> loadAllFromPreferences() override;

    std::shared_ptr<TunnelConfiguration> create() override;

private:
    std::shared_ptr<NetworkManagerSession> m_session;
};

} // namespace tarnwik
