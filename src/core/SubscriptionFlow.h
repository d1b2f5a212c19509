#pragma once

#include "core/AppModel.h"
#include "store/AppStoreSubscriptionStore.h"

#include <QPointer>

#include <exception>
#include <optional>

namespace tarnwik {

/// What came of a purchase or a restore on its way to the service. What the store had to say stands in its messages.
struct SubscriptionFlowResult
{
    /// What the store yielded; absent when nothing was bought or found, and then the service was not asked.
    std::optional<QString> signedTransactionJWS;
    /// Why the service did not take the transaction.
    std::exception_ptr syncFailure;
    /// Why the account could not be fetched afterwards.
    std::exception_ptr refreshFailure;
};

/// A purchase from the store through the service to the account on the screen. Model and store may end meanwhile: the
/// flow ends with them. Lives on the main thread.
class SubscriptionFlow
{
public:
    SubscriptionFlow(AppModel *model, AppStoreSubscriptionStore *store)
        : m_model(model)
        , m_store(store)
    {
    }

    /// Buys \a plan, posts the transaction to the service and fetches the account, even if the service did not take
    /// it. Never throws.
    Task<SubscriptionFlowResult> purchase(AppStoreSubscriptionPlan plan, std::stop_token token = {}) const;

    /// The same with what was bought before.
    Task<SubscriptionFlowResult> restorePurchases(std::stop_token token = {}) const;

private:
    QPointer<AppModel> m_model;
    QPointer<AppStoreSubscriptionStore> m_store;
};

} // namespace tarnwik
