#include "ui/model/SubscriptionsFacade.h"

#include "async/Detach.h"
#include "ui/model/OptionalVariant.h"

#include <utility>

namespace tarnwik {

SubscriptionsFacade::SubscriptionsFacade(AppModel *model, AppStoreSubscriptionStore *store)
    : m_model(model)
    , m_store(store)
    , m_plans(store)
{
    using Store = AppStoreSubscriptionStore;
    QObject::connect(store, &Store::purchasedProductIDsChanged, this,
                     [this] { m_hasActiveSubscription = m_store->hasActiveSubscription(); });
    QObject::connect(store, &Store::isRestoringPurchasesChanged, this,
                     &SubscriptionsFacade::isRestoringPurchasesChanged);
    QObject::connect(store, &Store::statusMessageChanged, this, &SubscriptionsFacade::statusMessageChanged);
    QObject::connect(store, &Store::errorMessageChanged, this, &SubscriptionsFacade::errorMessageChanged);
    m_hasActiveSubscription = store->hasActiveSubscription();
}

QVariant SubscriptionsFacade::statusMessage() const
{
    return optionalVariant(m_store->statusMessage());
}

QVariant SubscriptionsFacade::errorMessage() const
{
    return optionalVariant(m_store->errorMessage());
}

void SubscriptionsFacade::purchase(int planIndex)
{
    const auto &plans = AppStoreSubscriptionPlan::allCases;
    if (planIndex >= 0 && planIndex < static_cast<int>(plans.size()))
        async::detach(finish(SubscriptionFlow(m_model, m_store).purchase(plans[static_cast<size_t>(planIndex)])));
}

void SubscriptionsFacade::restorePurchases()
{
    async::detach(finish(SubscriptionFlow(m_model, m_store).restorePurchases()));
}

Task<> SubscriptionsFacade::finish(Task<SubscriptionFlowResult> flow)
{
    // What the store had to say stands in its messages. What the service had to say is shown nowhere: the account on
    // the screen tells how things are.
    co_await std::move(flow);
}

} // namespace tarnwik
