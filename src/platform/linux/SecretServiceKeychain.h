#pragma once

#include "platform/KeychainServices.h"

#include <chrono>

namespace tarnwik {

/// The keychain of a Linux desktop: the Secret Service of the user's session (org.freedesktop.secrets).
///
/// New items go into the default keyring; items of all keyrings are found. Status codes beside those of the port:
/// errSecInteractionNotAllowed, the keyring is locked and there is nobody to ask, or no answer came in time;
/// errSecUserCanceled, the person closed the question; errSecNotAvailable, no Secret Service or no session bus;
/// errSecParam, a malformed query; errSecDecode, the service sent what is no secret; errSecIO, any other failure.
///
/// Keeps nothing between the calls, so a service that comes, goes or restarts is no matter. While a call blocks, no
/// event of the calling thread is handled.
class SecretServiceKeychain final : public KeychainServices
{
public:
    /// \a limit is how long a call may take in all, the person's thinking included.
    explicit SecretServiceKeychain(std::chrono::milliseconds limit = std::chrono::seconds(60));

    OSStatus SecItemAdd(const QVariantMap &attributes) override;
    OSStatus SecItemCopyMatching(const QVariantMap &attributes, QVariant *result) override;
    OSStatus SecItemDelete(const QVariantMap &attributes) override;

private:
    std::chrono::milliseconds m_limit;
};

} // namespace tarnwik
