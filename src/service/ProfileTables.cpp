#include "service/ProfileTables.h"

#include "api/JSON.h"
#include "service/AddressPool.h"
#include "service/NodeTables.h"
#include "service/Secrets.h"

#include <QDateTime>

#include <algorithm>

namespace tarnwik::service {

namespace {

// The columns that profileOf() reads.
#define PROFILE_COLUMNS                                                                                                \
    "profiles.id, node_id, nodes.name, region, protocol, host_number, tunnel, profiles.enabled, last_handshake_at,"    \
    " rx_bytes, tx_bytes"
constexpr int columnBehindProfile = 11;

std::optional<QString> timeText(std::optional<qint64> milliseconds)
{
    if (!milliseconds)
        return std::nullopt;
    return QDateTime::fromMSecsSinceEpoch(*milliseconds, Qt::UTC).toString(Qt::ISODate);
}

/// Addresses are not stored: they follow from the host number, which is the same in both of the node's pools.
QString addressIn(const std::optional<QString> &pool, qint64 host)
{
    return pool ? AddressPool::fromString(*pool).value().address(host) : QString();
}

DeviceProfile profileOf(const Statement &row)
{
    const qint64 host = row.integer(5);
    const auto tunnel = decode<NodeTunnel>(row.text(6).toUtf8());
    return {.id = row.integer(0),
            .nodeId = row.integer(1),
            .nodeName = row.text(2),
            .region = row.text(3),
            .protocolName = row.text(4),
            .assignedIp = addressIn(tunnel.ipv4Pool, host),
            .assignedIpv6 = addressIn(tunnel.ipv6Pool, host),
            .enabled = row.boolean(7),
            .lastHandshakeAt = timeText(row.optionalInteger(8)),
            .rxBytes = row.integer(9),
            .txBytes = row.integer(10)};
}

qint64 lowestFreeHost(Database &database, qint64 nodeId)
{
    Statement row = database.prepare(
        "SELECT min(host) FROM (SELECT ?1 AS host UNION ALL SELECT host_number + 1 FROM profiles WHERE node_id = ?2)"
        " WHERE host NOT IN (SELECT host_number FROM profiles WHERE node_id = ?2)",
        AddressPool::firstHost, nodeId);
    row.step();
    return row.integer(0);
}

qint64 lastHost(const NodeTunnel &tunnel)
{
    const qint64 last = AddressPool::fromString(tunnel.ipv4Pool).value().lastHost();
    return tunnel.ipv6Pool ? std::min(last, AddressPool::fromString(*tunnel.ipv6Pool).value().lastHost()) : last;
}

} // namespace

QList<DeviceProfile> readProfiles(Database &database, qint64 deviceId)
{
    Statement row = database.prepare("SELECT " PROFILE_COLUMNS " FROM profiles JOIN nodes ON nodes.id = node_id"
                                     " WHERE device_id = ? ORDER BY profiles.id",
                                     deviceId);
    QList<DeviceProfile> profiles;
    while (row.step())
        profiles.append(profileOf(row));
    return profiles;
}

std::optional<StoredProfile> findProfile(Database &database, qint64 accountId, qint64 id)
{
    Statement row = database.prepare("SELECT " PROFILE_COLUMNS ", preshared_key FROM profiles"
                                     " JOIN nodes ON nodes.id = node_id JOIN devices ON devices.id = device_id"
                                     " WHERE account_id = ? AND profiles.id = ?",
                                     accountId, id);
    if (!row.step())
        return std::nullopt;
    return StoredProfile{profileOf(row), row.text(columnBehindProfile)};
}

std::optional<qint64> findProfileOwner(Database &database, qint64 accountId, qint64 id)
{
    Statement row = database.prepare("SELECT device_id FROM profiles JOIN devices ON devices.id = device_id"
                                     " WHERE account_id = ? AND profiles.id = ?",
                                     accountId, id);
    return row.step() ? std::optional(row.integer(0)) : std::nullopt;
}

std::optional<qint64> findProfileOnNode(Database &database, qint64 deviceId, qint64 nodeId)
{
    Statement row = database.prepare("SELECT id FROM profiles WHERE device_id = ? AND node_id = ?", deviceId, nodeId);
    return row.step() ? std::optional(row.integer(0)) : std::nullopt;
}

std::optional<qint64> insertProfile(Database &database, qint64 deviceId, const SeedNode &node, const QString &protocol,
                                    Moment now)
{
    const qint64 host = lowestFreeHost(database, node.node.id);
    if (host > lastHost(node.tunnel))
        return std::nullopt;
    database.run("INSERT INTO profiles (device_id, node_id, protocol, host_number, preshared_key, enabled,"
                 " counted_until) VALUES (?,?,?,?,?,0,?)",
                 deviceId, node.node.id, protocol, host,
                 node.tunnel.presharedKeys ? makePresharedKey() : QStringLiteral(""), toMilliseconds(now));
    return database.lastInsertId();
}

void activateProfile(Database &database, qint64 deviceId, qint64 profileId)
{
    database.run("UPDATE profiles SET enabled = (id = ?) WHERE device_id = ?", profileId, deviceId);
}

} // namespace tarnwik::service
