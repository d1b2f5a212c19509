#include "service/DeviceTables.h"

#include "service/ProfileTables.h"

namespace tarnwik::service {

namespace {

// The columns that deviceOf() reads.
#define DEVICE_COLUMNS "id, name, platform, enabled, public_key, last_selected_node_id"

CustomerDevice deviceOf(Database &database, const Statement &row)
{
    return {.id = row.integer(0),
            .name = row.text(1),
            .platform = row.text(2),
            .enabled = row.boolean(3),
            .publicKey = row.text(4),
            .lastSelectedNodeId = row.optionalInteger(5),
            .profiles = readProfiles(database, row.integer(0))};
}

} // namespace

QList<CustomerDevice> readDevices(Database &database, qint64 accountId)
{
    Statement row =
        database.prepare("SELECT " DEVICE_COLUMNS " FROM devices WHERE account_id = ? ORDER BY id", accountId);
    QList<CustomerDevice> devices;
    while (row.step())
        devices.append(deviceOf(database, row));
    return devices;
}

std::optional<CustomerDevice> findDevice(Database &database, qint64 accountId, qint64 id)
{
    Statement row =
        database.prepare("SELECT " DEVICE_COLUMNS " FROM devices WHERE account_id = ? AND id = ?", accountId, id);
    return row.step() ? std::optional(deviceOf(database, row)) : std::nullopt;
}

bool isPublicKeyTaken(Database &database, const QString &publicKey)
{
    return database.prepare("SELECT 1 FROM devices WHERE public_key = ?", publicKey).step();
}

qint64 countDevices(Database &database, qint64 accountId)
{
    Statement row = database.prepare("SELECT count(*) FROM devices WHERE account_id = ?", accountId);
    row.step();
    return row.integer(0);
}

qint64 insertDevice(Database &database, qint64 accountId, const CreateDeviceRequest &request)
{
    database.run("INSERT INTO devices (account_id, name, platform, enabled, public_key) VALUES (?,?,?,1,?)", accountId,
                 request.name, request.platform, request.publicKey);
    return database.lastInsertId();
}

void selectNode(Database &database, qint64 deviceId, qint64 nodeId)
{
    database.run("UPDATE devices SET last_selected_node_id = ? WHERE id = ?", nodeId, deviceId);
}

} // namespace tarnwik::service
