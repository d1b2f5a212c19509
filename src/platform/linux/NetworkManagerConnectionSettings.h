#pragma once

#include "platform/TunnelManager.h"

#include <QMap>
#include <QMetaType>

#include <optional>

namespace tarnwik {

/// A saved connection as the daemon gives and takes it: settings by name, each a map of properties.
using NetworkManagerConnectionSettings = QMap<QString, QVariantMap>;
/// The type of vpn.data and vpn.secrets.
using NetworkManagerStringMap = QMap<QString, QString>;

/// The fields of a TunnelConfiguration.
struct NetworkManagerTunnelFields
{
    std::optional<QString> localizedDescription;
    std::optional<TunnelProviderProtocol> protocolConfiguration;
    bool isEnabled = false;

    bool operator==(const NetworkManagerTunnelFields &) const = default;
};

/// Makes the two types known to QtDBus. Call it before anything is read or written; again is fine.
void registerNetworkManagerTypes();

bool isVPN(const NetworkManagerConnectionSettings &settings);
QString connectionUUID(const NetworkManagerConnectionSettings &settings);
QString vpnServiceType(const NetworkManagerConnectionSettings &settings);
NetworkManagerStringMap vpnData(const NetworkManagerConnectionSettings &settings);

/// The tunnel that \a settings describe, whoever saved them.
NetworkManagerTunnelFields tunnelFields(const NetworkManagerConnectionSettings &settings);

/// \a settings with the tunnel's fields written into them, visible to \a userName alone. What else stands in them, such
/// as a timeout that an administrator has set, stays. The fields must have a protocol.
///
/// The daemon keeps no item named "service-type" or "persistent", and moves "user-name" elsewhere: a provider
/// configuration with such a key does not come back whole.
NetworkManagerConnectionSettings withTunnelFields(NetworkManagerConnectionSettings settings, const QString &uuid,
                                                  const NetworkManagerTunnelFields &fields, const QString &userName);

} // namespace tarnwik

Q_DECLARE_METATYPE(tarnwik::NetworkManagerConnectionSettings)
Q_DECLARE_METATYPE(tarnwik::NetworkManagerStringMap)
