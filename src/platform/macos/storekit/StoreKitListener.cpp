#include "platform/macos/storekit/StoreKitListener.h"

#include "platform/macos/storekit/StoreKitBridge.h"

#include <utility>

namespace tarnwik {

namespace {

extern "C" void receiveEvent(void *context, const char *json)
{
    // No share is needed: the bridge reports nothing any more once the listener, which has one, is at its end.
    static_cast<StoreKitMailbox *>(context)->put(json);
}

} // namespace

StoreKitListener::StoreKitListener(std::shared_ptr<StoreKitMailbox> mailbox, std::stop_token token)
    : m_mailbox(std::move(mailbox))
    , m_handle(store_updates_start(m_mailbox.get(), &receiveEvent))
{
    // Registering the callback runs it at once when the token was pulled already.
    m_stopCallback.emplace(std::move(token), [this] { stop(); });
}

StoreKitListener::~StoreKitListener()
{
    // Waits for a stop that is under way on another thread, so that one of the two does it.
    m_stopCallback.reset();
    stop();
}

void StoreKitListener::stop()
{
    if (void *handle = std::exchange(m_handle, nullptr))
        store_updates_stop(handle);
}

} // namespace tarnwik
