#pragma once

#include "api/NodeModels.h"
#include "api/Requests.h"
#include "service/Database.h"

namespace tarnwik::service {

/// The account's devices in the order of their creation, each with its profiles.
QList<CustomerDevice> readDevices(Database &database, qint64 accountId);

/// The account's device of \a id, if it has one of it.
std::optional<CustomerDevice> findDevice(Database &database, qint64 accountId, qint64 id);

/// Whether any account's device has \a publicKey.
bool isPublicKeyTaken(Database &database, const QString &publicKey);

/// How many devices the account has.
qint64 countDevices(Database &database, qint64 accountId);

/// Adds a device to the account; its number.
qint64 insertDevice(Database &database, qint64 accountId, const CreateDeviceRequest &request);

/// Remembers which node was last chosen for a device.
void selectNode(Database &database, qint64 deviceId, qint64 nodeId);

} // namespace tarnwik::service
