#pragma once

#include "api/NodeModels.h"
#include "service/Database.h"
#include "service/SeedRecords.h"
#include "service/Time.h"

namespace tarnwik::service {

/// A device's profile with what only its owner's tunnel may know.
struct StoredProfile
{
    DeviceProfile profile;
    QString presharedKey;
};

/// A device's profiles in the order of their creation.
QList<DeviceProfile> readProfiles(Database &database, qint64 deviceId);

/// The account's profile of \a id, if it has one of it.
std::optional<StoredProfile> findProfile(Database &database, qint64 accountId, qint64 id);

/// The number of the device that the account's profile of \a id belongs to, if it has one of it.
std::optional<qint64> findProfileOwner(Database &database, qint64 accountId, qint64 id);

/// The number of the device's profile on a node, if it has one there.
std::optional<qint64> findProfileOnNode(Database &database, qint64 deviceId, qint64 nodeId);

/// Gives the device a profile on \a node with the lowest free addresses of its pools; the profile's number, or nothing
/// when the pools are used up.
std::optional<qint64> insertProfile(Database &database, qint64 deviceId, const SeedNode &node, const QString &protocol,
                                    Moment now);

/// Makes the profile the active one among those of its device.
void activateProfile(Database &database, qint64 deviceId, qint64 profileId);

} // namespace tarnwik::service
