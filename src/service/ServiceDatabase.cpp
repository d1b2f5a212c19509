#include "service/ServiceDatabase.h"

#include "service/Schema.h"
#include "service/SeedTables.h"

#include <QDeadlineTimer>

#include <sqlite3.h>

#include <chrono>
#include <thread>

namespace tarnwik::service {

namespace {

/// Opens \a path as this service's database.
Database openDatabase(const QString &path, const Seed &seed, PasswordCost cost)
{
    Database database(path);
    // Before anything is written, and the journal's mode is: the file may not be ours.
    checkOwner(database);
    // One process writes while others read, and a commit does not wait for the disk.
    database.runScript("PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL");
    database.transaction([&] {
        // Another process may have been first between the check and here.
        if (isEmpty(database)) {
            createTables(database);
            insertSeed(database, seed, cost);
        } else {
            upgradeTables(database);
        }
    });
    return database;
}

QString reason(const DatabaseError &error)
{
    if (error.code() == SQLITE_NOTADB || error.code() == SQLITE_CORRUPT)
        return QStringLiteral("it is damaged or no database at all");
    return error.localizedDescription();
}

/// The same, again and again while another process opens it too: SQLite does not wait before it changes the journal's
/// mode, but fails at once where another one is about to do the same.
Database openBesideOthers(const QString &path, const Seed &seed, PasswordCost cost)
{
    constexpr std::chrono::seconds patience(10);
    constexpr std::chrono::milliseconds pause(10);
    for (const QDeadlineTimer deadline(patience);; std::this_thread::sleep_for(pause)) {
        try {
            return openDatabase(path, seed, cost);
        } catch (const DatabaseError &error) {
            if (error.code() != SQLITE_BUSY || deadline.hasExpired())
                throw;
        }
    }
}

Database open(const QString &path, const Seed &seed, PasswordCost cost)
{
    try {
        return openBesideOthers(path, seed, cost);
    } catch (const DatabaseError &error) {
        throw ServiceDatabaseError(QStringLiteral("The database %1 cannot be opened: %2.").arg(path, reason(error)));
    } catch (const ForeignDatabaseError &error) {
        throw ServiceDatabaseError(
            QStringLiteral("The database %1 cannot be opened: %2.").arg(path, error.localizedDescription()));
    }
}

} // namespace

ServiceDatabase::ServiceDatabase(const QString &path, const Seed &seed, PasswordCost cost)
    : m_database(open(path, seed, cost))
{
}

} // namespace tarnwik::service
