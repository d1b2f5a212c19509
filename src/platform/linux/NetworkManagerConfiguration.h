#pragma once

#include "platform/TunnelManager.h"
#include "platform/linux/NetworkManagerConnectionSettings.h"
#include "platform/linux/NetworkManagerSession.h"
#include "platform/linux/NetworkManagerTurns.h"

#include <memory>

namespace tarnwik {

/// A tunnel configuration that is, once saved, a connection of type "vpn" in NetworkManager.
///
/// Its operations run one after the other: a stop that comes during a start stops what was started.
class NetworkManagerConfiguration final : public TunnelConfiguration,
                                          public std::enable_shared_from_this<NetworkManagerConfiguration>
{
public:
    /// A configuration that is not saved yet.
    explicit NetworkManagerConfiguration(std::shared_ptr<NetworkManagerSession> session);

    /// The configuration saved as \a settings, whose path the session knows.
    NetworkManagerConfiguration(std::shared_ptr<NetworkManagerSession> session,
                                const NetworkManagerConnectionSettings &settings);

    Task<> saveToPreferences() override;
    Task<> loadFromPreferences() override;
    Task<> startVPNTunnel() override;
    Task<> stopVPNTunnel() override;
    VPNStatus status() const override;
    std::optional<QString> lastDisconnectError() const override;

private:
    NetworkManagerTunnelFields fields() const;
    void setFields(const NetworkManagerTunnelFields &fields);
    QString providerBundleIdentifier() const;

    Task<> save(NetworkManagerTunnelFields fields);
    Task<> add(NetworkManagerTunnelFields fields);
    Task<> update(QString path, NetworkManagerTunnelFields fields);
    Task<> load();
    Task<> start();
    Task<> activate(QString path);
    Task<> deactivate(QString activePath);
    Task<QString> savedPath();

    std::shared_ptr<NetworkManagerSession> m_session;
    NetworkManagerTurns m_turns;
    std::optional<QString> m_uuid; // absent until saved
    /// Whether the settings were changed since the tunnel was last started: if it runs, it runs with the old ones.
    bool m_isChanged = false;
};

} // namespace tarnwik
