#include "service/ServiceDatabase.h"

#include "service/Schema.h"
#include "service/SeedTables.h"

#include <sqlite3.h>

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

Database open(const QString &path, const Seed &seed, PasswordCost cost)
{
    try {
        return openDatabase(path, seed, cost);
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
