#pragma once

#include "secure/WireGuardKeyPair.h"

namespace tarnwik {

class WireGuardKeyGenerator
{
public:
    WireGuardKeyGenerator() = delete;

    /// A new key pair from the system's secure random source. Never fails; any thread.
    static WireGuardKeyPair generate();
};

} // namespace tarnwik
