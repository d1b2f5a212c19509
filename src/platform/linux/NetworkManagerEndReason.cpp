#include "platform/linux/NetworkManagerEndReason.h"

namespace tarnwik {

namespace {

QString noSecretsSentence(std::optional<OSStatus> keychainStatus)
{
    if (!keychainStatus)
        return QStringLiteral("The VPN service did not get the private key that it needs.");
    if (*keychainStatus == errSecItemNotFound)
        return QStringLiteral("The private key is not in the keychain (status %1).").arg(*keychainStatus);
    return QStringLiteral("The private key could not be read from the keychain (status %1).").arg(*keychainStatus);
}

} // namespace

std::optional<QString> sentence(NetworkManagerEndReason reason, std::optional<OSStatus> keychainStatus)
{
    switch (reason) {
    case NetworkManagerEndReason::None:
    case NetworkManagerEndReason::UserDisconnected:
        return std::nullopt;
    case NetworkManagerEndReason::DeviceDisconnected:
        return QStringLiteral("The network that the VPN ran over was disconnected.");
    case NetworkManagerEndReason::ServiceStopped:
        return QStringLiteral("The VPN service stopped unexpectedly.");
    case NetworkManagerEndReason::IPConfigInvalid:
        return QStringLiteral("The VPN service gave an invalid network configuration.");
    case NetworkManagerEndReason::ConnectTimeout:
        return QStringLiteral("The VPN connection was not established in time.");
    case NetworkManagerEndReason::ServiceStartTimeout:
        return QStringLiteral("The VPN service did not start in time.");
    case NetworkManagerEndReason::ServiceStartFailed:
        return QStringLiteral("The VPN service failed to start.");
    case NetworkManagerEndReason::NoSecrets:
        return noSecretsSentence(keychainStatus);
    case NetworkManagerEndReason::LoginFailed:
        return QStringLiteral("The VPN server refused the login.");
    case NetworkManagerEndReason::ConnectionRemoved:
        return QStringLiteral("The VPN connection was deleted from the system's network settings.");
    case NetworkManagerEndReason::DependencyFailed:
        return QStringLiteral("The network that the VPN runs over failed.");
    case NetworkManagerEndReason::DaemonStopped:
        return QStringLiteral("NetworkManager stopped.");
    case NetworkManagerEndReason::Unknown:
        break;
    }
    return QStringLiteral("The VPN service could not establish the connection.");
}

} // namespace tarnwik
