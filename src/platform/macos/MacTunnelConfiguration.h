#pragma once

#include "platform/TunnelManager.h"
#include "platform/macos/MacTunnelSession.h"

#include <chrono>
#include <memory>
#include <optional>

namespace tarnwik {

/// How long an operation waits for the system to say what became of it. The system takes milliseconds.
inline constexpr std::chrono::milliseconds tunnelSettlingLimit = std::chrono::seconds(1);

/// A tunnel configuration that is a tunnel provider manager of the system.
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

    /// As the system tells it. A tunnel that went down by itself counts as going down until the system has told why.
    VPNStatus status() const override;

    std::optional<QString> lastDisconnectError() const override { return m_lastDisconnectError; }

private:
    void takeFields();
    VPNStatus systemStatus() const;
    void followStatus();
    Task<> waitForStatus(bool isDownWanted);
    static Task<> fetchLastDisconnectError(std::shared_ptr<MacTunnelConfiguration> self);

    std::shared_ptr<MacTunnelSession> m_session;
    std::shared_ptr<mac::TunnelProviderManager> m_manager;
    std::optional<QString> m_lastDisconnectError;
    /// Whether the tunnel was seen to run, or on its way up or down.
    bool m_isUp = false;
    /// Whether the tunnel's end, when it comes, is our own doing.
    bool m_isStopWanted = false;
    /// Whether the system has been asked why the tunnel went down.
    bool m_isReasonAwaited = false;
    /// What this object is connected by: the connections end with it.
    QObject m_context;
};

} // namespace tarnwik
