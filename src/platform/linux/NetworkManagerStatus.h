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

/// The status of a saved tunnel whose active connection is in \a state. One that is activating after it \a wasActivated
/// is being brought back by its provider.
VPNStatus vpnStatus(NetworkManagerActiveState state, bool wasActivated);

} // namespace tarnwik
