#pragma once

#include "platform/AppStore.h"

#include <memory>

namespace tarnwik {

/// The platform's own App Store, over the functions of StoreKitBridge.h.
///
/// A pulled stop token ends the wait, not what the store was asked: a purchase that the user completes after that comes
/// as an update at the next start, since nobody finished it. A purchase that the user cancels is told by its result, or
/// by async::Cancelled where the platform throws it. Each listener hears what comes while it listens, and nothing more
/// from the moment its token is pulled.
std::shared_ptr<AppStore> storeKitAppStore();

} // namespace tarnwik
