#pragma once

#include "tunnel/VPNController.h"

#include <chrono>

namespace tarnwik::cli {

/// Whether a tunnel of this status has come up or gone down.
bool hasSettled(VPNStatus status);
bool isDown(VPNStatus status);

/// How long a system may take to tell what it knows already.
inline constexpr std::chrono::seconds systemDelay(1);

/// Waits until the status of \a tunnel is one that \a isReached accepts; whether it was within \a limit.
Task<bool> waitForTunnel(VPNController &tunnel, bool (*isReached)(VPNStatus), std::chrono::seconds limit,
                         std::stop_token token);

/// Waits until \a tunnel, which was just started, is under way or has failed: the status of some systems follows a start
/// a moment later.
Task<> waitForStart(VPNController &tunnel, std::stop_token token);

/// Waits until it is known why \a tunnel went down: some systems tell that it did first. They need not tell why.
Task<> waitForReason(VPNController &tunnel, std::stop_token token);

} // namespace tarnwik::cli
