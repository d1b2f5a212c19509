#pragma once

#include "api/NodeModels.h"
#include "service/Database.h"
#include "service/SeedRecords.h"

namespace tarnwik::service {

/// All nodes in the order of the seed.
QList<ExitNode> readNodes(Database &database);

/// The node of \a id with its tunnels, if there is one.
std::optional<SeedNode> findNode(Database &database, qint64 id);

} // namespace tarnwik::service
