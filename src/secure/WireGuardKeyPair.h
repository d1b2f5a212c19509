#pragma once

#include <QString>

namespace tarnwik {

/// A device's tunnel keys: X25519, each 32 raw bytes as standard base64 with padding, 44 characters.
struct WireGuardKeyPair
{
    QString privateKey;
    QString publicKey;

    bool operator==(const WireGuardKeyPair &) const = default;
};

} // namespace tarnwik
