#include "platform/macos/MacKeychain.h"

#include "platform/macos/MacKeychainDictionary.h"

#include <sodium.h>

namespace tarnwik {

namespace {

using Operation = KeychainQuery::Operation;

// Overwrites a copy of a secret that is needed no more.
void wipe(std::string &secret)
{
    sodium_memzero(secret.data(), secret.size());
}

} // namespace

OSStatus MacKeychain::SecItemAdd(const QVariantMap &attributes)
{
    auto dictionary = keychainDictionary(attributes, Operation::Add);
    if (!dictionary)
        return errSecParam;
    const OSStatus status = mac::keychainAdd(*dictionary);
    wipe(std::get<mac::KeychainData>(dictionary->at(mac::KeychainAttribute::ValueData)).bytes);
    return status;
}

OSStatus MacKeychain::SecItemCopyMatching(const QVariantMap &query, QVariant *result)
{
    const auto dictionary = keychainDictionary(query, Operation::CopyMatching);
    if (!dictionary)
        return errSecParam;
    mac::KeychainMatch match = mac::keychainCopyMatching(*dictionary);
    if (match.data) {
        if (result)
            *result = QByteArray::fromStdString(*match.data);
        wipe(*match.data);
    }
    return match.status;
}

OSStatus MacKeychain::SecItemDelete(const QVariantMap &query)
{
    const auto dictionary = keychainDictionary(query, Operation::Delete);
    return dictionary ? mac::keychainDelete(*dictionary) : errSecParam;
}

} // namespace tarnwik
