#pragma once

#include "platform/KeychainServices.h"

#include <QString>

#include <optional>

namespace tarnwik {

/// Why an active connection ended: NMActiveConnectionStateReason, numbered as the daemon numbers it, and a value of our
/// own.
enum class NetworkManagerEndReason : uint {
    Unknown = 0,
    None = 1,
    UserDisconnected = 2,
    DeviceDisconnected = 3,
    ServiceStopped = 4,
    IPConfigInvalid = 5,
    ConnectTimeout = 6,
    ServiceStartTimeout = 7,
    ServiceStartFailed = 8,
    NoSecrets = 9,
    LoginFailed = 10,
    ConnectionRemoved = 11,
    DependencyFailed = 12,
    /// Not the daemon's: the daemon itself went away, and the tunnel with it.
    DaemonStopped = 0x10000,
};

/// The sentence that tells a person why the tunnel went down; nothing when somebody asked for it.
///
/// \a keychainStatus is what the keychain answered when it did not give the private key to our secret agent.
std::optional<QString> sentence(NetworkManagerEndReason reason, std::optional<OSStatus> keychainStatus);

} // namespace tarnwik
