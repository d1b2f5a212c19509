#pragma once

#include "api/TunnelModels.h"
#include "service/ProfileTables.h"

namespace tarnwik::service {

/// What a device needs to bring up the tunnel of \a stored to \a node, but for its private key.
TunnelProfile makeTunnelProfile(const StoredProfile &stored, const SeedNode &node);

/// \a profile in the text form of wg-quick with the parameters of AmneziaWG, without a line for the private key.
QString configurationText(const TunnelProfile &profile);

} // namespace tarnwik::service
