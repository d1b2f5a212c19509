#pragma once

#include "service/Operations.h"

namespace tarnwik::service {

/// Where a request leads.
struct Route
{
    /// Nothing for the sign-in, which is the one operation outside a session.
    ServiceResponse (*operation)(const SessionCall &);
    /// The number in the path; 0 where it has none.
    qint64 pathId;
};

/// Finds the operation for \a request. Throws ServiceError 404 `not_found` for a path that leads nowhere, 405
/// `method_not_allowed` for one that knows other methods only.
Route findRoute(const ServiceRequest &request);

} // namespace tarnwik::service
