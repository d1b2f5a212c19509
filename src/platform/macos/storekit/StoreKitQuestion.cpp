#include "platform/macos/storekit/StoreKitQuestion.h"

#include <utility>

namespace tarnwik {

namespace {

using Share = std::shared_ptr<StoreKitMailbox>;

extern "C" void receiveReply(void *context, const char *json)
{
    // There is one reply to each question, so the share that waits for it ends with it.
    const std::unique_ptr<Share> mailbox(static_cast<Share *>(context));
    (*mailbox)->put(json);
}

} // namespace

void askStoreKit(const std::function<void(void *context, store_reply reply)> &question, Share mailbox)
{
    question(std::make_unique<Share>(std::move(mailbox)).release(), &receiveReply);
}

} // namespace tarnwik
