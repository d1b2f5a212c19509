#include "support/TestPlatform.h"

namespace tarnwik::test {

std::optional<QString> MemoryUserDefaults::string(const QString &key) const
{
    const auto found = strings.find(key);
    return found == strings.end() ? std::nullopt : std::optional(*found);
}

void MemoryUserDefaults::write(const QString &what)
{
    if (!isWritable)
        throw UserDefaultsError(QStringLiteral("The settings cannot be written."));
    writes << what;
}

void MemoryUserDefaults::setString(const QString &value, const QString &key)
{
    write(QStringLiteral("set ") + key);
    strings.insert(key, value);
}

void MemoryUserDefaults::removeObject(const QString &key)
{
    write(QStringLiteral("remove ") + key);
    strings.remove(key);
}

OSStatus MemoryKeychain::record(const QString &operation, const QVariantMap &attributes)
{
    calls.append({operation, attributes});
    return failures.value(operation, errSecSuccess);
}

OSStatus MemoryKeychain::SecItemAdd(const QVariantMap &attributes)
{
    if (const OSStatus status = record(QStringLiteral("add"), attributes))
        return status;
    const QString account = attributes.value(kSecAttrAccount).toString();
    if (items.contains(account))
        return errSecDuplicateItem;
    items.insert(account, attributes.value(kSecValueData).toByteArray());
    return errSecSuccess;
}

OSStatus MemoryKeychain::SecItemCopyMatching(const QVariantMap &query, QVariant *result)
{
    if (const OSStatus status = record(QStringLiteral("read"), query))
        return status;
    const auto found = items.find(query.value(kSecAttrAccount).toString());
    if (found == items.end())
        return errSecItemNotFound;
    *result = *found;
    return errSecSuccess;
}

OSStatus MemoryKeychain::SecItemDelete(const QVariantMap &query)
{
    if (const OSStatus status = record(QStringLiteral("delete"), query))
        return status;
    return items.remove(query.value(kSecAttrAccount).toString()) ? errSecSuccess : errSecItemNotFound;
}

TestPlatform::TestPlatform()
    : m_scope(services())
{
}

PlatformServices TestPlatform::services() const
{
    PlatformServices services;
    services.informationDictionary = informationDictionary;
    services.userDefaults = userDefaults;
    services.httpSession = httpSession;
    services.keychain = keychain;
    services.tunnelManager = tunnelManager;
    services.appStore = appStore;
    services.desktop = desktop;
    services.clock = clock;
    return services;
}

} // namespace tarnwik::test
