#include "tunnel/ProviderConfiguration.h"

#include "api/JSON.h"
#include "platform/ProviderConfigurationKeys.h"

#include <QStringDecoder>

namespace tarnwik {

namespace {

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
        {providerKeys::tunnelProfile, jsonText(profile)},
        {providerKeys::privateKeyReference, privateKeyReference},
        {providerKeys::keychainService, QStringLiteral("Tarnwik")},
        {providerKeys::metadataOnly, true},
    };
    if (keychainAccessGroup)
        configuration.insert(providerKeys::keychainAccessGroup, *keychainAccessGroup);
    return configuration;
}

std::optional<TunnelNode> nodeOfConfiguration(const QVariantMap &configuration)
{
    try {
        return decode<TunnelProfile>(configuration.value(providerKeys::tunnelProfile).toString().toUtf8()).node;
    } catch (const DecodingError &) {
        // Saved by another version, or by hand: the tunnel may work all the same.
        return std::nullopt;
    }
}

} // namespace tarnwik
