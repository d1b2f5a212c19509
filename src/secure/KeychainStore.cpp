#include "secure/KeychainStore.h"

#include "platform/PlatformServices.h"

#include <QStringDecoder>

#include <sodium.h>

#include <memory>

namespace tarnwik {

namespace {

// Overwrites a secret that nobody else holds any more.
void wipe(QByteArray &secret)
{
    sodium_memzero(secret.data(), static_cast<size_t>(secret.size()));
}

// The text that \a bytes encode, or nothing: unlike QString::fromUtf8, this replaces no error by a character, and
// keeps a byte order mark as the character that it is.
std::optional<QString> textFromUTF8(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decoder(bytes);
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

std::shared_ptr<KeychainServices> keychain()
{
    return PlatformServices::current().keychain;
}

} // namespace

KeychainError::KeychainError(OSStatus status)
    : LocalizedError(QStringLiteral("Keychain operation failed with status %1.").arg(status))
    , m_status(status)
{
}

KeychainStore::KeychainStore(const QString &service, const std::optional<QString> &accessGroup)
    : m_service(service)
    , m_accessGroup(accessGroup)
{
}

void KeychainStore::save(const QString &value, const QString &account) const
{
    QByteArray bytes = value.toUtf8();
    QVariantMap query = baseQuery(account);
    // Whatever keeps the old item from being deleted, adding the new one tells whether it matters.
    keychain()->SecItemDelete(query);

    query.insert(kSecValueData, bytes);
    query.insert(kSecAttrAccessible, kSecAttrAccessibleAfterFirstUnlockThisDeviceOnly);
    const OSStatus status = keychain()->SecItemAdd(query);
    query.clear();
    wipe(bytes);
    if (status != errSecSuccess) {
        throw KeychainError(status);
    }
}

QString KeychainStore::read(const QString &account) const
{
    QVariantMap query = baseQuery(account);
    query.insert(kSecReturnData, true);
    query.insert(kSecMatchLimit, kSecMatchLimitOne);
    QVariant result;
    const OSStatus status = keychain()->SecItemCopyMatching(query, &result);
    if (status != errSecSuccess || result.metaType() != QMetaType::fromType<QByteArray>()) {
        throw KeychainError(status);
    }

    QByteArray bytes = result.toByteArray();
    result.clear();
    const std::optional<QString> text = textFromUTF8(bytes);
    wipe(bytes);
    if (!text) {
        throw KeychainError(status);
    }
    return *text;
}

void KeychainStore::delete_(const QString &account) const
{
    keychain()->SecItemDelete(baseQuery(account));
}

QVariantMap KeychainStore::baseQuery(const QString &account) const
{
    QVariantMap query{
        {kSecClass, kSecClassGenericPassword},
        {kSecAttrService, m_service},
        {kSecAttrAccount, account},
    };
    if (m_accessGroup) {
        query.insert(kSecAttrAccessGroup, *m_accessGroup);
    }
    return query;
}

} // namespace tarnwik
