#import "platform/macos/native/NativeTunnelProviderManager.h"

#import "platform/macos/native/FoundationValues.h"

namespace tarnwik::mac {

namespace {

// The numbers that the adapter above passes through.
static_assert(NEVPNStatusInvalid == 0 && NEVPNStatusDisconnected == 1 && NEVPNStatusConnecting == 2
              && NEVPNStatusConnected == 3 && NEVPNStatusReasserting == 4 && NEVPNStatusDisconnecting == 5);

using Configuration = NSMutableDictionary<NSString *, id>;

NETunnelProviderProtocol *_Nonnull protocolFrom(const TunnelProtocolFields &fields)
{
    Configuration *const configuration = [Configuration new];
    for (const auto &[key, value] : fields.providerConfiguration)
        configuration[textFromUTF8(key)] = objectFromValue(value);

    NETunnelProviderProtocol *const protocol = [NETunnelProviderProtocol new];
    protocol.providerBundleIdentifier = textFromUTF8(fields.providerBundleIdentifier);
    protocol.serverAddress = textFromUTF8(fields.serverAddress);
    protocol.disconnectOnSleep = fields.disconnectOnSleep;
    protocol.providerConfiguration = configuration;
    return protocol;
}

TunnelProtocolFields fieldsFrom(NETunnelProviderProtocol *_Nonnull protocol)
{
    TunnelProtocolFields fields;
    fields.providerBundleIdentifier = utf8FromText(protocol.providerBundleIdentifier).value_or(std::string());
    fields.serverAddress = utf8FromText(protocol.serverAddress).value_or(std::string());
    fields.disconnectOnSleep = protocol.disconnectOnSleep;
    NSDictionary<NSString *, id> *const configuration = protocol.providerConfiguration;
    for (NSString *key in configuration) {
        const auto name = utf8FromText(key);
        const PropertyValue value = valueFromObject(configuration[key]);
        if (name && !std::holds_alternative<std::monostate>(value))
            fields.providerConfiguration.emplace(*name, value);
    }
    return fields;
}

} // namespace

NativeTunnelProviderManager::NativeTunnelProviderManager(NETunnelProviderManager *_Nonnull manager)
    : m_manager(manager)
{
}

TunnelManagerFields NativeTunnelProviderManager::fields() const
{
    @autoreleasepool {
        TunnelManagerFields fields;
        fields.localizedDescription = utf8FromText(m_manager.localizedDescription);
        NEVPNProtocol *const protocol = m_manager.protocolConfiguration;
        if ([protocol isKindOfClass:[NETunnelProviderProtocol class]])
            fields.protocolConfiguration = fieldsFrom(static_cast<NETunnelProviderProtocol *>(protocol));
        fields.isEnabled = m_manager.enabled;
        return fields;
    }
}

void NativeTunnelProviderManager::setFields(const TunnelManagerFields &fields)
{
    @autoreleasepool {
        if (fields.protocolConfiguration)
            m_manager.protocolConfiguration = protocolFrom(*fields.protocolConfiguration);
        if (fields.localizedDescription)
            m_manager.localizedDescription = textFromUTF8(fields.localizedDescription);
        m_manager.enabled = fields.isEnabled;
    }
}

void NativeTunnelProviderManager::saveToPreferences(Completion completion)
{
    [m_manager
        saveToPreferencesWithCompletionHandler:^(NSError *_Nullable error) { completion(platformError(error)); }];
}

void NativeTunnelProviderManager::loadFromPreferences(Completion completion)
{
    [m_manager
        loadFromPreferencesWithCompletionHandler:^(NSError *_Nullable error) { completion(platformError(error)); }];
}

std::optional<PlatformError> NativeTunnelProviderManager::startVPNTunnel()
{
    @autoreleasepool {
        NSError *error = nil;
        if ([m_manager.connection startVPNTunnelAndReturnError:&error])
            return std::nullopt;
        // The answer is what counts; a refusal without a reason is still one.
        return platformError(error).value_or(PlatformError());
    }
}

void NativeTunnelProviderManager::stopVPNTunnel()
{
    [m_manager.connection stopVPNTunnel];
}

long NativeTunnelProviderManager::status() const
{
    return m_manager.connection.status;
}

void NativeTunnelProviderManager::fetchLastDisconnectError(Completion completion)
{
    [m_manager.connection fetchLastDisconnectErrorWithCompletionHandler:^(NSError *_Nullable error) {
        completion(platformError(error));
    }];
}

} // namespace tarnwik::mac
