#include "service/Usage.h"

#include "service/AccountTables.h"
#include "service/Quota.h"

#include <algorithm>

namespace tarnwik::service {

namespace {

/// Of what a profile carries, the share that its device receives: people read more than they write.
constexpr qint64 receivedPercent = 80;

/// A profile that carries something, and since when it has not been counted.
struct CarryingProfile
{
    qint64 id;
    Moment countedUntil;
};

QList<CarryingProfile> carryingProfiles(Database &database, qint64 accountId)
{
    Statement row = database.prepare("SELECT profiles.id, counted_until FROM profiles"
                                     " JOIN devices ON devices.id = device_id WHERE account_id = ?1"
                                     " AND devices.enabled AND profiles.enabled AND coalesce(tunnel_running, 1)"
                                     " AND EXISTS (SELECT 1 FROM sessions WHERE account_id = ?1)",
                                     accountId);
    QList<CarryingProfile> profiles;
    while (row.step())
        profiles.append({row.integer(0), Moment(std::chrono::milliseconds(row.integer(1)))});
    return profiles;
}

qint64 bytesPerSecond(Database &database)
{
    Statement row = database.prepare("SELECT value FROM settings WHERE name = 'usage_bytes_per_second'");
    row.step();
    return row.integer(0);
}

/// What \a rate bytes a second make of \a elapsed, but no more than \a most.
qint64 bytesIn(std::chrono::milliseconds elapsed, qint64 rate, qint64 most)
{
    const double bytes = double(rate) * double(elapsed.count()) / 1000;
    return bytes < double(most) ? qint64(bytes) : most;
}

void addBytes(Database &database, const CarryingProfile &profile, qint64 accountId, qint64 bytes, Moment now)
{
    const qint64 received = bytes / 100 * receivedPercent + bytes % 100 * receivedPercent / 100;
    database.run("UPDATE profiles SET rx_bytes = rx_bytes + ?, tx_bytes = tx_bytes + ?, last_handshake_at = ?"
                 " WHERE id = ?",
                 received, bytes - received, toMilliseconds(now), profile.id);
    database.run("UPDATE accounts SET used_bytes = used_bytes + ?1, cycle_used_bytes = cycle_used_bytes + ?1"
                 " WHERE id = ?2",
                 bytes, accountId);
}

} // namespace

void countUsage(Database &database, qint64 accountId, Moment now)
{
    const qint64 rate = bytesPerSecond(database);
    for (const CarryingProfile &profile : carryingProfiles(database, accountId)) {
        // Nothing left, or a clock that was set back: not a byte either way.
        const qint64 most = remainingBytes(readAccount(database, accountId));
        if (most > 0 && now > profile.countedUntil)
            addBytes(database, profile, accountId, bytesIn(now - profile.countedUntil, rate, most), now);
    }
    database.run(
        "UPDATE profiles SET counted_until = ? WHERE device_id IN (SELECT id FROM devices WHERE account_id = ?)",
        toMilliseconds(now), accountId);
}

bool setTunnelRunning(Database &database, qint64 profileId, bool isRunning, Moment now)
{
    Statement owner = database.prepare("SELECT account_id FROM profiles JOIN devices ON devices.id = device_id"
                                       " WHERE profiles.id = ?",
                                       profileId);
    if (!owner.step())
        return false;
    countUsage(database, owner.integer(0), now);
    database.run("UPDATE profiles SET tunnel_running = ? WHERE id = ?", isRunning, profileId);
    return true;
}

} // namespace tarnwik::service
