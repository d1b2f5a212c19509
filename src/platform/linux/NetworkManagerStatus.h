#pragma once

#include "platform/TunnelManager.h"

namespace tarnwik {

/// NMActiveConnectionState, numbered as the daemon numbers it.
enum class NetworkManagerActiveState : uint {
    Unknown = 0,
    Activating = 1,
    Activated = 2,
    Deactivating = 3,
    Deactivated = 4,
};

/// NMVpnServiceState, numbered as the daemon numbers it.
enum class NetworkManagerServiceState : uint {
    Unknown = 0,
    Init = 1,
    Shutdown = 2,
    Starting = 3,
    Started = 4,
    Stopping = 5,
    Stopped = 6,
};

/// Whether a VPN service in \a state is at work: starting, started or stopping.
bool isAtWork(NetworkManagerServiceState state);

/// The status of a saved tunnel whose active connection is in \a state. One that is activating after it \a wasActivated
/// is being brought back by its provider.
VPNStatus vpnStatus(NetworkManagerActiveState state, bool wasActivated);

} // namespace tarnwik
