#pragma once

#include "platform/PlatformServices.h"

namespace tarnwik {

/// The platform of a Linux desktop: the user's settings folder, the Secret Service, NetworkManager. Making it asks
/// nothing of these yet.
PlatformServices linuxPlatform();

} // namespace tarnwik
