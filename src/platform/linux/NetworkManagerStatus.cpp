#include "platform/linux/NetworkManagerStatus.h"

namespace tarnwik {

VPNStatus vpnStatus(NetworkManagerActiveState state, bool wasActivated)
{
    switch (state) {
    case NetworkManagerActiveState::Activating:
        return wasActivated ? VPNStatus::Reasserting : VPNStatus::Connecting;
    case NetworkManagerActiveState::Activated:
        return VPNStatus::Connected;
    case NetworkManagerActiveState::Deactivating:
        return VPNStatus::Disconnecting;
    case NetworkManagerActiveState::Unknown:
    case NetworkManagerActiveState::Deactivated:
        break;
    }
    return VPNStatus::Disconnected;
}

bool isAtWork(NetworkManagerServiceState state)
{
    return state == NetworkManagerServiceState::Starting || state == NetworkManagerServiceState::Started
        || state == NetworkManagerServiceState::Stopping;
}

} // namespace tarnwik
