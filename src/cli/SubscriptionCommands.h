#pragma once

#include "async/Task.h"
#include "cli/Options.h"

namespace tarnwik::cli {

struct Run;

// The commands about the App Store's plans. \a run is kept by the caller, who awaits them.

/// Prints the plans; without a session, too.
Task<ExitStatus> subscriptions(Run &run, std::stop_token token);

/// Buys the plan of the options, and takes the purchase to the service.
Task<ExitStatus> subscribe(Run &run, std::stop_token token);

/// Takes what was bought before to the service.
Task<ExitStatus> restorePurchases(Run &run, std::stop_token token);

} // namespace tarnwik::cli
