#include "platform/linux/NetworkManagerPrivateKey.h"

#include "platform/ProviderConfigurationKeys.h"

#include <QStringDecoder>

#include <sodium.h>

namespace tarnwik {

namespace {

QVariantMap query(const NetworkManagerStringMap &vpnData)
{
    QVariantMap query{
        {kSecClass, kSecClassGenericPassword},
        {kSecAttrService, vpnData.value(providerKeys::keychainService)},
        {kSecAttrAccount, vpnData.value(providerKeys::privateKeyReference)},
        {kSecReturnData, true},
        {kSecMatchLimit, kSecMatchLimitOne},
    };
    const auto accessGroup = vpnData.find(providerKeys::keychainAccessGroup);
    if (accessGroup != vpnData.end())
        query.insert(kSecAttrAccessGroup, *accessGroup);
    return query;
}

} // namespace

NetworkManagerPrivateKey::~NetworkManagerPrivateKey()
{
    sodium_memzero(m_text.data(), static_cast<std::size_t>(m_text.size()) * sizeof(QChar));
}

OSStatus NetworkManagerPrivateKey::read(KeychainServices &keychain, const NetworkManagerStringMap &vpnData)
{
    QVariant result;
    const auto status = keychain.SecItemCopyMatching(query(vpnData), &result);
    if (status != errSecSuccess)
        return status;

    auto bytes = result.toByteArray();
    result.clear();
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    m_text = decoder(bytes);
    sodium_memzero(bytes.data(), static_cast<std::size_t>(bytes.size()));
    return m_text.isEmpty() || decoder.hasError() ? errSecDecode : errSecSuccess;
}

} // namespace tarnwik
