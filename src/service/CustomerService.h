#pragma once

#include "service/Operations.h"
#include "service/ServiceDatabase.h"

namespace tarnwik::service {

struct CustomerServiceOptions
{
    /// A file, or ":memory:".
    QString databasePath = QStringLiteral(":memory:");
    /// What an empty database starts with.
    Seed seed;
    PasswordCost passwordCost = PasswordCost::Interactive;
    TimeSource now = systemTime;
    /// Whose signature under App Store transactions is good. Without it none is.
    StoreRootSource storeRoot = nullptr;
};

/// The customer REST API without the network: a request goes in, its answer comes out. Everything it knows is in its
/// database, so that several processes can serve from one file. Safe to use from any thread.
class CustomerService
{
public:
    /// Throws ServiceDatabaseError.
    explicit CustomerService(const CustomerServiceOptions &options);

    /// Answers \a request. Never throws: what goes wrong inside is written to the log, and answered with 500.
    ServiceResponse handle(const ServiceRequest &request) noexcept;

    /// Tells whether the tunnel of the profile of this number, the `id` of its tunnel profile, runs. From then on its
    /// usage grows only while it does; before, it grows whenever the profile is its device's active one. For whoever
    /// runs the tunnels; customers have no such request. False when there is no such profile. Throws DatabaseError.
    bool setTunnelRunning(qint64 profileId, bool isRunning);

private:
    using Operation = ServiceResponse (*)(const SessionCall &);

    ServiceResponse answer(const ServiceRequest &request);
    ServiceResponse signIn(const ServiceRequest &request);
    ServiceResponse inSession(const ServiceRequest &request, Operation operation, qint64 pathId);

    ServiceDatabase m_database;
    TimeSource m_now;
    StoreRootSource m_storeRoot;
};

} // namespace tarnwik::service
