#include "tunnel/ProviderConfiguration.h"

#include "api/JSON.h"

#include <QStringDecoder>

namespace tarnwik {

namespace {

const QString profileKey = QStringLiteral("tunnel_profile_json");

/// The profile as text. What cannot be read back as text would be no JSON to the provider either: it gets an empty
/// object then, which it can tell from a profile.
QString jsonText(const TunnelProfile &profile)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(encode(profile));
    return decoder.hasError() ? QStringLiteral("{}") : text;
}

} // namespace

QVariantMap providerConfiguration(const TunnelProfile &profile, const QString &privateKeyReference,
                                  const std::optional<QString> &keychainAccessGroup)
{
    QVariantMap configuration{
        {profileKey, jsonText(profile)},
        {QStringLiteral("client_private_key_ref"), privateKeyReference},
        {QStringLiteral("keychain_service"), QStringLiteral("Tarnwik")},
        {QStringLiteral("metadata_only"), true},
    };
    if (keychainAccessGroup)
        configuration.insert(QStringLiteral("keychain_access_group"), *keychainAccessGroup);
    return configuration;
}

std::optional<TunnelNode> nodeOfConfiguration(const QVariantMap &configuration)
{
    try {
        return decode<TunnelProfile>(configuration.value(profileKey).toString().toUtf8()).node;
    } catch (const DecodingError &) {
        // Saved by another version, or by hand: the tunnel may work all the same.
        return std::nullopt;
    }
}

} // namespace tarnwik
