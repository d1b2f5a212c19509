#pragma once

#include "platform/TunnelManager.h"
#include "platform/macos/MacTunnelSession.h"

#include <memory>
#include <optional>

namespace tarnwik {

/// A tunnel configuration that is a tunnel provider manager of the system.
///
/// Nothing waits for the system's status: what start and stop do to it, and why the tunnel went down, comes later, each
/// with its own statusDidChange.
class MacTunnelConfiguration final : public TunnelConfiguration,
                                     public std::enable_shared_from_this<MacTunnelConfiguration>
{
public:
    MacTunnelConfiguration(std::shared_ptr<MacTunnelSession> session,
                           std::shared_ptr<mac::TunnelProviderManager> manager);

    Task<> saveToPreferences() override;
    Task<> loadFromPreferences() override;
    Task<> startVPNTunnel() override;
    Task<> stopVPNTunnel() override;

    /// As the system tells it.
    VPNStatus status() const override;

    std::optional<QString> lastDisconnectError() const override { return m_lastDisconnectError; }

private:
    void takeFields();
    void followStatus();
    void beginAnew();
    static Task<> fetchLastDisconnectError(std::shared_ptr<mac::TunnelProviderManager> manager,
                                           std::weak_ptr<MacTunnelConfiguration> asker, unsigned starts);
    void takeLastDisconnectError(const std::optional<mac::PlatformError> &error);

    std::shared_ptr<MacTunnelSession> m_session;
    std::shared_ptr<mac::TunnelProviderManager> m_manager;
    std::optional<QString> m_lastDisconnectError;
    /// Whether the tunnel was started, or seen to run, or on its way up or down: its end is still to come.
    bool m_isUp = false;
    /// Whether the tunnel's end, when it comes, is our own doing.
    bool m_isStopWanted = false;
    /// Counts the tunnel's starts: a reason that was asked for before the latest is an old one.
    unsigned m_starts = 0;
    /// What this object is connected by: the connections end with it.
    QObject m_context;
};

} // namespace tarnwik
