#pragma once

#include "platform/macos/storekit/StoreKitBridge.h"
#include "platform/macos/storekit/StoreKitMailbox.h"

#include <functional>
#include <memory>

namespace tarnwik {

/// Calls \a question with the last two arguments of a function of the bridge that asks the store something. The reply is
/// left in \a mailbox, which lives until then. Free of Qt.
void askStoreKit(const std::function<void(void *context, store_reply reply)> &question,
                 std::shared_ptr<StoreKitMailbox> mailbox);

} // namespace tarnwik
