#pragma once

#include "platform/macos/storekit/StoreKitMailbox.h"

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace tarnwik {

/// Leaves every transaction that the store reports in a mailbox, from its construction until its stop token is pulled or
/// it ends, whichever is first. Free of Qt.
///
/// Nothing is left in the box after either has returned. The token must not be pulled by whoever watches the box, from
/// within its call.
class StoreKitListener
{
public:
    StoreKitListener(std::shared_ptr<StoreKitMailbox> mailbox, std::stop_token token);
    ~StoreKitListener();

    StoreKitListener(const StoreKitListener &) = delete;
    StoreKitListener &operator=(const StoreKitListener &) = delete;

private:
    void stop();

    std::shared_ptr<StoreKitMailbox> m_mailbox;
    /// What the bridge knows the listener by, while it listens.
    void *m_handle = nullptr;
    std::optional<std::stop_callback<std::function<void()>>> m_stopCallback;
};

} // namespace tarnwik
