#pragma once

#include "tunnel/VPNController.h"

#include <chrono>

namespace tarnwik::cli {

/// Whether a tunnel of this status has come up or gone down.
bool hasSettled(VPNStatus status);
bool isDown(VPNStatus status);

/// Waits until the status of \a tunnel is one that \a isReached accepts; whether it was within \a limit.
Task<bool> waitForTunnel(VPNController &tunnel, bool (*isReached)(VPNStatus), std::chrono::seconds limit,
                         std::stop_token token);

} // namespace tarnwik::cli
