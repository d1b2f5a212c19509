#pragma once

#include "platform/PlatformServices.h"

namespace tarnwik {

/// The platform of macOS but for its desktop: the main bundle, its preferences, the keychain, NetworkExtension and the
/// App Store. Making it asks nothing of these yet.
PlatformServices macPlatform();

} // namespace tarnwik
