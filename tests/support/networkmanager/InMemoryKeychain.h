#pragma once

#include "platform/KeychainServices.h"

#include <QHash>

namespace tarnwik::test {

/// A keychain of this process's own, for what does not depend on how the real one stores things.
class InMemoryKeychain final : public KeychainServices
{
public:
    /// What look-ups answer instead of looking, unless it is success.
    OSStatus refusal = errSecSuccess;
    /// How often a look-up was made, and with what.
    int lookUps = 0;
    QVariantMap lastQuery;

    void put(const QString &service, const QString &account, const QByteArray &data)
    {
        m_items.insert({service, account}, data);
    }

    OSStatus SecItemAdd(const QVariantMap &attributes) override
    {
        put(attributes.value(kSecAttrService).toString(), attributes.value(kSecAttrAccount).toString(),
            attributes.value(kSecValueData).toByteArray());
        return errSecSuccess;
    }

    OSStatus SecItemCopyMatching(const QVariantMap &query, QVariant *result) override
    {
        ++lookUps;
        lastQuery = query;
        if (refusal != errSecSuccess)
            return refusal;
        const auto item = m_items.find(key(query));
        if (item == m_items.end())
            return errSecItemNotFound;
        // A copy of its own: whoever asked may wipe it.
        *result = QByteArray(item->constData(), item->size());
        return errSecSuccess;
    }

    OSStatus SecItemDelete(const QVariantMap &query) override
    {
        return m_items.remove(key(query)) ? errSecSuccess : errSecItemNotFound;
    }

private:
    using Key = std::pair<QString, QString>;

    static Key key(const QVariantMap &query)
    {
        return {query.value(kSecAttrService).toString(), query.value(kSecAttrAccount).toString()};
    }

    QHash<Key, QByteArray> m_items;
};

} // namespace tarnwik::test
