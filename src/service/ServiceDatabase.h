#pragma once

#include "service/Database.h"
#include "service/Secrets.h"
#include "service/SeedRecords.h"

#include <mutex>

namespace tarnwik::service {

/// The database cannot serve: it cannot be opened, is damaged, or is not this service's.
class ServiceDatabaseError final : public LocalizedError
{
    using LocalizedError::LocalizedError;
};

/// The service's data. Safe to use from any thread, and by several processes on one file.
class ServiceDatabase
{
public:
    /// Opens the file at \a path, or a database in memory for ":memory:". An empty one gets the tables and \a seed; one
    /// with data keeps it, whatever the seed says, and one of an older version is brought up to this one. A file that
    /// holds anything else is left as it is. Throws ServiceDatabaseError.
    ServiceDatabase(const QString &path, const Seed &seed, PasswordCost cost);

    /// Runs \a work, which takes the Database, in a transaction of its own, which is undone if it throws.
    template<typename Work>
    auto run(Work work)
    {
        const std::lock_guard lock(m_mutex);
        return m_database.transaction([&] { return work(m_database); });
    }

private:
    std::mutex m_mutex;
    Database m_database;
};

} // namespace tarnwik::service
