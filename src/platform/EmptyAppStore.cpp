#include "platform/EmptyAppStore.h"

#include "async/Gate.h"

namespace tarnwik {

namespace {

class EmptyAppStore final : public AppStore
{
public:
    Task<QList<StoreProduct>> products(QStringList, std::stop_token token) override
    {
        async::throwIfStopped(token);
        co_return {};
    }

    Task<PurchaseResult> purchase(StoreProduct, PurchaseOptions, std::stop_token) override
    {
        // There was no product to ask for.
        throw StoreError(QStringLiteral("There is no app store on this computer."));
        co_return {};
    }

    AsyncGenerator<VerificationResult> transactionUpdates(std::stop_token token) override
    {
        async::Gate neverOpened;
        co_await neverOpened.wait(std::move(token));
    }

    AsyncGenerator<VerificationResult> currentEntitlements(std::stop_token token) override
    {
        async::throwIfStopped(token);
        co_return;
    }

    Task<> finish(StoreTransaction) override { co_return; }

    Task<> sync(std::stop_token token) override
    {
        async::throwIfStopped(token);
        co_return;
    }
};

} // namespace

std::shared_ptr<AppStore> emptyAppStore()
{
    return std::make_shared<EmptyAppStore>();
}

} // namespace tarnwik
