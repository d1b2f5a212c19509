#pragma once

#include "platform/TunnelManager.h"
#include "platform/macos/native/NetworkExtension.h"

namespace tarnwik {

/// The status that the system numbers \a number. One that is not known yet keeps its number.
VPNStatus vpnStatus(long number);

/// Whether a tunnel of \a status neither runs nor is about to.
bool isDown(VPNStatus status);

/// The error for what the system said of itself: in its own words, or where it has none, by domain and code, if any.
TunnelError tunnelError(const mac::PlatformError &error);

mac::TunnelProtocolFields nativeProtocol(const TunnelProviderProtocol &protocol);
TunnelProviderProtocol tunnelProtocol(const mac::TunnelProtocolFields &fields);

} // namespace tarnwik
