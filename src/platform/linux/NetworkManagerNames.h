#pragma once

#include <QLatin1StringView>
#include <QString>

/// NetworkManager's names on the system bus, as its D-Bus API reference gives them, and the bus's own.
namespace tarnwik::networkmanager {

inline const QString serviceName = QStringLiteral("org.freedesktop.NetworkManager");

inline const QString busService = QStringLiteral("org.freedesktop.DBus");
inline const QString busPath = QStringLiteral("/org/freedesktop/DBus");

inline const QString managerPath = QStringLiteral("/org/freedesktop/NetworkManager");
inline const QString settingsPath = QStringLiteral("/org/freedesktop/NetworkManager/Settings");
inline const QString agentManagerPath = QStringLiteral("/org/freedesktop/NetworkManager/AgentManager");
/// Where NetworkManager expects every secret agent, on the agent's own bus connection.
inline const QString secretAgentPath = QStringLiteral("/org/freedesktop/NetworkManager/SecretAgent");
/// Where every VPN service has its object, on a bus connection of its own.
inline const QString vpnPluginPath = QStringLiteral("/org/freedesktop/NetworkManager/VPN/Plugin");

inline const QString managerInterface = QStringLiteral("org.freedesktop.NetworkManager");
inline const QString settingsInterface = QStringLiteral("org.freedesktop.NetworkManager.Settings");
inline const QString connectionInterface = QStringLiteral("org.freedesktop.NetworkManager.Settings.Connection");
inline const QString activeInterface = QStringLiteral("org.freedesktop.NetworkManager.Connection.Active");
inline const QString agentManagerInterface = QStringLiteral("org.freedesktop.NetworkManager.AgentManager");
inline const QString secretAgentInterface = QStringLiteral("org.freedesktop.NetworkManager.SecretAgent");
inline const QString vpnPluginInterface = QStringLiteral("org.freedesktop.NetworkManager.VPN.Plugin");
inline const QString busInterface = QStringLiteral("org.freedesktop.DBus");
inline const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

/// The errors that calls are answered with.
namespace errors {

inline constexpr QLatin1StringView serviceUnknown("org.freedesktop.DBus.Error.ServiceUnknown");
inline constexpr QLatin1StringView nameHasNoOwner("org.freedesktop.DBus.Error.NameHasNoOwner");
inline constexpr QLatin1StringView disconnected("org.freedesktop.DBus.Error.Disconnected");
inline constexpr QLatin1StringView noReply("org.freedesktop.DBus.Error.NoReply");
inline constexpr QLatin1StringView timeout("org.freedesktop.DBus.Error.Timeout");
inline constexpr QLatin1StringView timedOut("org.freedesktop.DBus.Error.TimedOut");
inline constexpr QLatin1StringView unknownMethod("org.freedesktop.DBus.Error.UnknownMethod");
inline constexpr QLatin1StringView unknownObject("org.freedesktop.DBus.Error.UnknownObject");
inline constexpr QLatin1StringView unknownInterface("org.freedesktop.DBus.Error.UnknownInterface");
inline constexpr QLatin1StringView accessDenied("org.freedesktop.DBus.Error.AccessDenied");

inline constexpr QLatin1StringView permissionDenied("org.freedesktop.NetworkManager.PermissionDenied");
inline constexpr QLatin1StringView unknownConnection("org.freedesktop.NetworkManager.UnknownConnection");
inline constexpr QLatin1StringView connectionAlreadyActive("org.freedesktop.NetworkManager.ConnectionAlreadyActive");
inline constexpr QLatin1StringView connectionNotAvailable("org.freedesktop.NetworkManager.ConnectionNotAvailable");
inline constexpr QLatin1StringView settingsPermissionDenied("org.freedesktop.NetworkManager.Settings.PermissionDenied");
inline constexpr QLatin1StringView invalidConnection("org.freedesktop.NetworkManager.Settings.InvalidConnection");
inline constexpr QLatin1StringView
    agentManagerPermissionDenied("org.freedesktop.NetworkManager.AgentManager.PermissionDenied");

// Those that the secret agent answers with.
inline constexpr QLatin1StringView agentNoSecrets("org.freedesktop.NetworkManager.SecretAgent.NoSecrets");
inline constexpr QLatin1StringView agentUserCanceled("org.freedesktop.NetworkManager.SecretAgent.UserCanceled");
inline constexpr QLatin1StringView agentPermissionDenied("org.freedesktop.NetworkManager.SecretAgent.PermissionDenied");

} // namespace errors

/// The vpn.data item, less NetworkManager's "-flags" suffix, and the vpn.secrets item that the private key travels as.
inline const QString privateKeyItem = QStringLiteral("client_private_key");

} // namespace tarnwik::networkmanager
