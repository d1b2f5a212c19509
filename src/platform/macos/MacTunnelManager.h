#pragma once

#include "platform/TunnelManager.h"
#include "platform/macos/MacTunnelSession.h"

namespace tarnwik {

/// The tunnel manager over NetworkExtension: a tunnel configuration is a tunnel provider manager of the system.
class MacTunnelManager final : public TunnelManager
{
    Q_OBJECT

public:
    explicit MacTunnelManager(std::shared_ptr<mac::NetworkExtension> networkExtension);

    Task<std::optional<Configurations>> loadAllFromPreferences() override;
    std::shared_ptr<TunnelConfiguration> create() override;

private:
    std::shared_ptr<MacTunnelSession> m_session;
};

} // namespace tarnwik
