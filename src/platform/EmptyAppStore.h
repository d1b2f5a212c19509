#pragma once

#include "platform/AppStore.h"

#include <memory>

namespace tarnwik {

/// The app store of a platform that has none: nothing to buy, nothing bought.
std::shared_ptr<AppStore> emptyAppStore();

} // namespace tarnwik
