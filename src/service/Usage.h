#pragma once

#include "service/Database.h"
#include "service/Time.h"

namespace tarnwik::service {

/// Adds what the account's active profiles are taken to have carried since the last count, up to \a now. Nothing is
/// carried while the account has no session, its quota is used up, or a tunnel is known to be down. Called before anything
/// that shows usage or changes what grows.
void countUsage(Database &database, qint64 accountId, Moment now);

/// Tells whether the profile's tunnel runs, from \a now on; before the first such word it is taken to run. False when
/// there is no such profile.
bool setTunnelRunning(Database &database, qint64 profileId, bool isRunning, Moment now);

} // namespace tarnwik::service
