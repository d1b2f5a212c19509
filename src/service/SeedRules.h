#pragma once

#include "service/SeedRecords.h"

namespace tarnwik::service {

/// Checks what the form of a seed does not show: ranges, addresses, keys, and that nothing appears twice. Throws
/// SeedError, which names the first offending place.
void checkSeed(const Seed &seed);

} // namespace tarnwik::service
