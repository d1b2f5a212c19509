#include "core/SubscriptionFlow.h"

#include <utility>

namespace tarnwik {

namespace {

/// Waits for \a task; \a failure is what it threw, if it did.
Task<> settle(Task<> task, std::exception_ptr *failure)
{
    try {
        co_await task;
    } catch (...) {
        *failure = std::current_exception();
    }
}

/// What comes of a flow whose store has gone.
Task<SubscriptionFlowResult> nothing()
{
    co_return SubscriptionFlowResult();
}

/// Takes what the store yields to the service.
Task<SubscriptionFlowResult> passOn(Task<std::optional<QString>> yielded, QPointer<AppModel> model,
                                    std::stop_token token)
{
    SubscriptionFlowResult result;
    result.signedTransactionJWS = co_await std::move(yielded);
    if (result.signedTransactionJWS && model)
        co_await settle(model->syncAppleTransaction(*result.signedTransactionJWS, token), &result.syncFailure);
    if (result.signedTransactionJWS && model)
        co_await settle(model->refreshAccount(token), &result.refreshFailure);
    co_return result;
}

} // namespace

Task<SubscriptionFlowResult> SubscriptionFlow::purchase(AppStoreSubscriptionPlan plan, std::stop_token token) const
{
    if (!m_store)
        return nothing();
    return passOn(m_store->purchase(plan, std::nullopt, token), m_model, token);
}

Task<SubscriptionFlowResult> SubscriptionFlow::restorePurchases(std::stop_token token) const
{
    if (!m_store)
        return nothing();
    return passOn(m_store->restorePurchases(token), m_model, token);
}

} // namespace tarnwik
