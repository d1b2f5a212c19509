#pragma once

#include "platform/KeychainServices.h"

#include <chrono>
#include <memory>

namespace tarnwik {

class SecretServiceRefusal;

/// The keychain of a Linux desktop: the Secret Service of the user's session (org.freedesktop.secrets).
///
/// New items go into the default keyring; items of all keyrings are found. Status codes beside those of the port:
/// errSecInteractionNotAllowed, the keyring is locked and there is nobody to ask, or no answer came in time;
/// errSecUserCanceled, the person closed the question; errSecNotAvailable, no Secret Service or no session bus;
/// errSecParam, a malformed query; errSecDecode, the service sent what is no secret; errSecIO, any other failure.
///
/// Of one call it keeps nothing for the next but, for a short while, that the person did not unlock the keyring: what
/// takes several calls asks once. So a service that comes, goes or restarts is no matter. While a call blocks, no event
/// of the calling thread is handled. Calls may come from several threads at once.
class SecretServiceKeychain final : public KeychainServices
{
public:
    /// \a limit is how long a call may take in all, the person's thinking included. Once a question to unlock a keyring
    /// was closed, or not answered in time, calls that would need to put it again fail at once with the same status
    /// for as long as \a refusalMemory; a keyring that has been unlocked meanwhile is used all the same.
    explicit SecretServiceKeychain(std::chrono::milliseconds limit = std::chrono::seconds(60),
                                   std::chrono::milliseconds refusalMemory = std::chrono::seconds(5));

    OSStatus SecItemAdd(const QVariantMap &attributes) override;
    OSStatus SecItemCopyMatching(const QVariantMap &attributes, QVariant *result) override;
    OSStatus SecItemDelete(const QVariantMap &attributes) override;

private:
    std::chrono::milliseconds m_limit;
    std::shared_ptr<SecretServiceRefusal> m_refusal;
};

} // namespace tarnwik
