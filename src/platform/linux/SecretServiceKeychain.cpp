#include "platform/linux/SecretServiceKeychain.h"

#include "platform/linux/SecretServiceAttributes.h"
#include "platform/linux/SecretServiceError.h"
#include "platform/linux/SecretServiceRefusal.h"
#include "platform/linux/SecretServiceSession.h"

#include <algorithm>

namespace tarnwik {

SecretServiceKeychain::SecretServiceKeychain(std::chrono::milliseconds limit, std::chrono::milliseconds refusalMemory)
    : m_limit(limit)
    , m_refusal(std::make_shared<SecretServiceRefusal>(refusalMemory))
{
}

OSStatus SecretServiceKeychain::SecItemAdd(const QVariantMap &attributes)
try {
    const auto query = KeychainQuery::fromAttributes(attributes, KeychainQuery::Operation::Add);
    if (!query) {
        return errSecParam;
    }
    SecretServiceSession session(m_limit, *m_refusal);
    // First of all, since a locked keyring does not tell the groups of its items.
    session.openDefaultCollection();
    const auto itemAttributes = attributesOfQuery(*query);
    const auto items = session.search(itemAttributes.get());
    if (std::any_of(items.begin(), items.end(), [&](const auto &item) { return isOfGroup(item.get(), *query); })) {
        return errSecDuplicateItem;
    }
    session.create(itemAttributes.get(), query->data);
    return errSecSuccess;
} catch (const SecretServiceError &error) {
    return error.status();
}

OSStatus SecretServiceKeychain::SecItemCopyMatching(const QVariantMap &attributes, QVariant *result)
try {
    const auto query = KeychainQuery::fromAttributes(attributes, KeychainQuery::Operation::CopyMatching);
    if (!query) {
        return errSecParam;
    }
    SecretServiceSession session(m_limit, *m_refusal);
    const auto items = session.search(attributesOfQuery(*query).get());
    if (items.empty()) {
        return errSecItemNotFound;
    }
    if (query->isDataWanted && result != nullptr) {
        session.unlock(items.front().get());
        *result = session.dataOf(items.front().get());
    }
    return errSecSuccess;
} catch (const SecretServiceError &error) {
    return error.status();
}

OSStatus SecretServiceKeychain::SecItemDelete(const QVariantMap &attributes)
try {
    const auto query = KeychainQuery::fromAttributes(attributes, KeychainQuery::Operation::Delete);
    if (!query) {
        return errSecParam;
    }
    SecretServiceSession session(m_limit, *m_refusal);
    const auto items = session.search(attributesOfQuery(*query).get());
    for (const auto &item : items) {
        session.unlock(item.get());
        session.remove(item.get());
    }
    return items.empty() ? errSecItemNotFound : errSecSuccess;
} catch (const SecretServiceError &error) {
    return error.status();
}

} // namespace tarnwik
