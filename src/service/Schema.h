#pragma once

#include "service/Database.h"

namespace tarnwik::service {

/// The database is sound, but not one that this version of the service can use. The text completes a sentence.
class ForeignDatabaseError final : public LocalizedError
{
    using LocalizedError::LocalizedError;
};

/// Makes sure that \a database is empty or this service's own, undamaged, and of this version or an older one. Only
/// reads. Throws ForeignDatabaseError or DatabaseError.
void checkOwner(Database &database);

/// Whether \a database holds nothing yet.
bool isEmpty(Database &database);

/// Makes the tables in an empty database.
void createTables(Database &database);

/// Brings the tables of an older version up to this one, and keeps all that is in them. What is up to date stays as it
/// is. To be called within a transaction: half an upgrade would be none.
void upgradeTables(Database &database);

} // namespace tarnwik::service
