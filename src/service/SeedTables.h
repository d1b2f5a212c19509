#pragma once

#include "service/Database.h"
#include "service/Secrets.h"
#include "service/SeedRecords.h"

namespace tarnwik::service {

/// Puts \a seed, which has been checked, into the empty tables of \a database. Passwords are hashed at \a cost.
void insertSeed(Database &database, const Seed &seed, PasswordCost cost);

} // namespace tarnwik::service
