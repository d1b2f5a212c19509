#include "platform/macos/storekit/StoreKitAppStore.h"

#include "async/Clock.h"
#include "async/Gate.h"
#include "platform/macos/storekit/StoreKitListener.h"
#include "platform/macos/storekit/StoreKitQuestion.h"
#include "platform/macos/storekit/StoreKitReplies.h"

#include <utility>
#include <vector>

namespace tarnwik {

namespace {

using Question = std::function<void(void *context, store_reply reply)>;

/// Waits for the next letter in \a mailbox, which came from any thread; goes on in this one.
Task<std::string> nextLetter(std::shared_ptr<StoreKitMailbox> mailbox, std::stop_token token)
{
    async::Gate gate;
    const StoreKitMailbox::Watch watch(*mailbox, [&gate] { gate.open(); });
    co_await gate.wait(std::move(token));
    co_return mailbox->take().value();
}

Task<std::string> reply(Question question, std::stop_token token)
{
    // A store that nobody waits for is not asked.
    co_await async::yield(token);
    const auto mailbox = std::make_shared<StoreKitMailbox>();
    askStoreKit(question, mailbox);
    co_return co_await nextLetter(mailbox, std::move(token));
}

class StoreKitAppStore final : public AppStore
{
public:
    Task<QList<StoreProduct>> products(QStringList productIDs, std::stop_token token) override;
    Task<PurchaseResult> purchase(StoreProduct product, PurchaseOptions options, std::stop_token token) override;
    AsyncGenerator<VerificationResult> transactionUpdates(std::stop_token token) override;
    AsyncGenerator<VerificationResult> currentEntitlements(std::stop_token token) override;
    Task<> finish(StoreTransaction transaction) override;
    Task<> sync(std::stop_token token) override;
};

Task<QList<StoreProduct>> StoreKitAppStore::products(QStringList productIDs, std::stop_token token)
{
    const Question question = [productIDs](void *context, store_reply receive) {
        std::vector<std::string> texts;
        std::vector<const char *> pointers;
        texts.reserve(productIDs.size());
        for (const QString &productID : productIDs)
            pointers.push_back(texts.emplace_back(productID.toStdString()).c_str());
        store_products(pointers.data(), pointers.size(), context, receive);
    };
    const std::string json = co_await reply(question, std::move(token));
    co_return readProducts(json);
}

Task<PurchaseResult> StoreKitAppStore::purchase(StoreProduct product, PurchaseOptions options, std::stop_token token)
{
    const Question question = [product, options](void *context, store_reply receive) {
        const std::string productID = product.id.toStdString();
        std::optional<std::string> account;
        if (options.appAccountToken)
            account = options.appAccountToken->toString(QUuid::WithoutBraces).toStdString();
        store_purchase(productID.c_str(), account ? account->c_str() : nullptr, context, receive);
    };
    const std::string json = co_await reply(question, std::move(token));
    co_return readPurchase(json, product.id);
}

AsyncGenerator<VerificationResult> StoreKitAppStore::transactionUpdates(std::stop_token token)
{
    co_await async::yield(token);
    const auto mailbox = std::make_shared<StoreKitMailbox>();
    const StoreKitListener listener(mailbox, token);
    for (;;) {
        const std::string json = co_await nextLetter(mailbox, token);
        // A listener that was stopped leaves what it did not get to the next one: it was not finished.
        async::throwIfStopped(token);
        VerificationResult result = readUpdate(json);
        co_yield result;
    }
}

AsyncGenerator<VerificationResult> StoreKitAppStore::currentEntitlements(std::stop_token token)
{
    const std::string json = co_await reply(&store_entitlements, token);
    const QList<VerificationResult> entitlements = readEntitlements(json);
    for (VerificationResult result : entitlements) {
        co_yield result;
        async::throwIfStopped(token);
    }
}

Task<> StoreKitAppStore::finish(StoreTransaction transaction)
{
    // Asked at once: the program may end as soon as it has called this.
    const auto mailbox = std::make_shared<StoreKitMailbox>();
    askStoreKit([id = transaction.id](void *context, store_reply receive) { store_finish(id, context, receive); },
                mailbox);
    // Whatever the reply says: a transaction that was not finished comes again at the next start.
    co_await nextLetter(mailbox, {});
}

Task<> StoreKitAppStore::sync(std::stop_token token)
{
    const std::string json = co_await reply(&store_sync, std::move(token));
    readCompletion(json);
}

} // namespace

std::shared_ptr<AppStore> storeKitAppStore()
{
    return std::make_shared<StoreKitAppStore>();
}

} // namespace tarnwik
