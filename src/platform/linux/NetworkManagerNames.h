#pragma once

#include <QString>

/// NetworkManager's names on the system bus, as its D-Bus API reference gives them.
namespace tarnwik::networkmanager {

inline const QString serviceName = QStringLiteral("org.freedesktop.NetworkManager");

inline const QString managerPath = QStringLiteral("/org/freedesktop/NetworkManager");
inline const QString settingsPath = QStringLiteral("/org/freedesktop/NetworkManager/Settings");
inline const QString agentManagerPath = QStringLiteral("/org/freedesktop/NetworkManager/AgentManager");
/// Where NetworkManager expects every secret agent, on the agent's own bus connection.
inline const QString secretAgentPath = QStringLiteral("/org/freedesktop/NetworkManager/SecretAgent");

inline const QString managerInterface = QStringLiteral("org.freedesktop.NetworkManager");
inline const QString settingsInterface = QStringLiteral("org.freedesktop.NetworkManager.Settings");
inline const QString connectionInterface = QStringLiteral("org.freedesktop.NetworkManager.Settings.Connection");
inline const QString activeInterface = QStringLiteral("org.freedesktop.NetworkManager.Connection.Active");
inline const QString agentManagerInterface = QStringLiteral("org.freedesktop.NetworkManager.AgentManager");
inline const QString secretAgentInterface = QStringLiteral("org.freedesktop.NetworkManager.SecretAgent");

/// The vpn.data item, less NetworkManager's "-flags" suffix, and the vpn.secrets item that the private key travels as.
inline const QString privateKeyItem = QStringLiteral("client_private_key");

} // namespace tarnwik::networkmanager
