#include "platform/linux/NetworkManagerConnectionSettings.h"

#include "platform/linux/NetworkManagerNames.h"

#include <QDBusArgument>
#include <QDBusMetaType>

namespace tarnwik {

namespace {

// The sections of a saved connection.
const QString connectionSection = QStringLiteral("connection");
const QString vpnSection = QStringLiteral("vpn");
const QString serviceTypeKey = QStringLiteral("service-type");
const QString dataKey = QStringLiteral("data");

// The items of vpn.data that are the adapter's own: what the daemon has no place for.
const QString serverAddressItem = QStringLiteral("tarnwik_server_address");
const QString enabledItem = QStringLiteral("tarnwik_enabled");
const QString disconnectOnSleepItem = QStringLiteral("tarnwik_disconnect_on_sleep");
/// The names of the items that are booleans, with commas between: in vpn.data everything is text.
const QString booleansItem = QStringLiteral("tarnwik_booleans");
/// Says that the private key is kept by the user's secret agent. Without it the daemon would write the key, in clear
/// text, into a file.
const QString privateKeyFlagsItem = QString(networkmanager::privateKeyItem + QStringLiteral("-flags"));
const QString agentOwned = QStringLiteral("1");

QString text(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

bool boolean(const QString &text)
{
    return text == QLatin1StringView("true");
}

NetworkManagerStringMap dataItems(const NetworkManagerTunnelFields &fields)
{
    NetworkManagerStringMap items;
    QStringList booleans;
    const auto &configuration = fields.protocolConfiguration->providerConfiguration;
    for (auto item = configuration.begin(); item != configuration.end(); ++item) {
        const auto isBoolean = item->metaType() == QMetaType::fromType<bool>();
        items.insert(item.key(), isBoolean ? text(item->toBool()) : item->toString());
        if (isBoolean)
            booleans.append(item.key());
    }
    items.insert(serverAddressItem, fields.protocolConfiguration->serverAddress);
    items.insert(enabledItem, text(fields.isEnabled));
    items.insert(disconnectOnSleepItem, text(fields.protocolConfiguration->disconnectOnSleep));
    items.insert(booleansItem, booleans.join(u','));
    items.insert(privateKeyFlagsItem, agentOwned);
    return items;
}

} // namespace

void registerNetworkManagerTypes()
{
    qDBusRegisterMetaType<NetworkManagerConnectionSettings>();
    qDBusRegisterMetaType<NetworkManagerStringMap>();
}

bool isVPN(const NetworkManagerConnectionSettings &settings)
{
    return settings.value(connectionSection).value(QStringLiteral("type")).toString() == vpnSection;
}

QString connectionUUID(const NetworkManagerConnectionSettings &settings)
{
    return settings.value(connectionSection).value(QStringLiteral("uuid")).toString();
}

QString vpnServiceType(const NetworkManagerConnectionSettings &settings)
{
    return settings.value(vpnSection).value(serviceTypeKey).toString();
}

NetworkManagerStringMap vpnData(const NetworkManagerConnectionSettings &settings)
{
    return qdbus_cast<NetworkManagerStringMap>(settings.value(vpnSection).value(dataKey));
}

NetworkManagerTunnelFields tunnelFields(const NetworkManagerConnectionSettings &settings)
{
    auto items = vpnData(settings);
    TunnelProviderProtocol protocol;
    protocol.providerBundleIdentifier = vpnServiceType(settings);
    protocol.serverAddress = items.take(serverAddressItem);
    protocol.disconnectOnSleep = boolean(items.take(disconnectOnSleepItem));

    NetworkManagerTunnelFields fields;
    fields.localizedDescription = settings.value(connectionSection).value(QStringLiteral("id")).toString();
    // To the daemon every connection is enabled: so is one that somebody else saved.
    fields.isEnabled = !items.contains(enabledItem) || boolean(items.value(enabledItem));
    items.remove(enabledItem);
    items.remove(privateKeyFlagsItem);
    const auto booleans = items.take(booleansItem).split(u',');
    for (auto item = items.cbegin(); item != items.cend(); ++item) {
        const auto value = booleans.contains(item.key()) ? QVariant(boolean(*item)) : QVariant(*item);
        protocol.providerConfiguration.insert(item.key(), value);
    }
    fields.protocolConfiguration = protocol;
    return fields;
}

NetworkManagerConnectionSettings withTunnelFields(NetworkManagerConnectionSettings settings, const QString &uuid,
                                                  const NetworkManagerTunnelFields &fields, const QString &userName)
{
    auto &connection = settings[connectionSection];
    connection[QStringLiteral("type")] = vpnSection;
    connection[QStringLiteral("uuid")] = uuid;
    connection[QStringLiteral("id")] = fields.localizedDescription.value_or(QString());
    connection[QStringLiteral("autoconnect")] = false;
    // Without this every user of the computer could read the settings.
    connection[QStringLiteral("permissions")] = QStringList(QStringLiteral("user:%1:").arg(userName));

    auto &vpn = settings[vpnSection];
    vpn[serviceTypeKey] = fields.protocolConfiguration->providerBundleIdentifier;
    vpn[dataKey] = QVariant::fromValue(dataItems(fields));

    for (const auto &section : {QStringLiteral("ipv4"), QStringLiteral("ipv6")})
        settings[section][QStringLiteral("method")] = QStringLiteral("auto");
    return settings;
}

} // namespace tarnwik
