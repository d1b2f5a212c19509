#include "platform/macos/MacTunnelValues.h"

#include "platform/macos/MacPropertyValue.h"

namespace tarnwik {

VPNStatus vpnStatus(long number)
{
    return static_cast<VPNStatus>(number);
}

bool isDown(VPNStatus status)
{
    return status == VPNStatus::Invalid || status == VPNStatus::Disconnected;
}

TunnelError tunnelError(const mac::PlatformError &error)
{
    if (!error.localizedDescription.empty())
        return TunnelError(QString::fromStdString(error.localizedDescription));
    // A refusal without an error.
    if (error.domain.empty())
        return TunnelError(QStringLiteral("The operation couldn’t be completed."));
    return TunnelError(QStringLiteral("The operation couldn’t be completed. (%1 error %2.)")
                           .arg(QString::fromStdString(error.domain), QString::number(error.code)));
}

mac::TunnelProtocolFields nativeProtocol(const TunnelProviderProtocol &protocol)
{
    mac::TunnelProtocolFields fields;
    fields.providerBundleIdentifier = protocol.providerBundleIdentifier.toStdString();
    fields.serverAddress = protocol.serverAddress.toStdString();
    fields.disconnectOnSleep = protocol.disconnectOnSleep;
    for (const auto &[key, value] : protocol.providerConfiguration.asKeyValueRange())
        fields.providerConfiguration.emplace(key.toStdString(), propertyValueFromVariant(value));
    return fields;
}

TunnelProviderProtocol tunnelProtocol(const mac::TunnelProtocolFields &fields)
{
    TunnelProviderProtocol protocol;
    protocol.providerBundleIdentifier = QString::fromStdString(fields.providerBundleIdentifier);
    protocol.serverAddress = QString::fromStdString(fields.serverAddress);
    protocol.disconnectOnSleep = fields.disconnectOnSleep;
    for (const auto &[key, value] : fields.providerConfiguration)
        protocol.providerConfiguration.insert(QString::fromStdString(key), variantFromPropertyValue(value));
    return protocol;
}

} // namespace tarnwik
