#include "store/AppStoreSubscriptionStore.h"

#include "async/Clock.h"
#include "async/Detach.h"
#include "async/OwnerGuard.h"
#include "platform/PlatformServices.h"

#include <QScopeGuard>

#include <algorithm>
#include <utility>

namespace tarnwik {

namespace {

QStringList productIDsOfPlans()
{
    QStringList identifiers;
    for (const AppStoreSubscriptionPlan plan : AppStoreSubscriptionPlan::allCases)
        identifiers << plan.productID();
    return identifiers;
}

} // namespace

AppStoreSubscriptionStore::AppStoreSubscriptionStore()
    : m_appStore(PlatformServices::current().appStore)
{
}

AppStoreSubscriptionStore::~AppStoreSubscriptionStore()
{
    if (m_transactionUpdatesTask)
        m_transactionUpdatesTask->request_stop();
}

const QSet<QString> &AppStoreSubscriptionStore::productIDs()
{
    static const QStringList identifiers = productIDsOfPlans();
    static const QSet<QString> set(identifiers.begin(), identifiers.end());
    return set;
}

bool AppStoreSubscriptionStore::hasActiveSubscription() const
{
    return m_purchasedProductIDs.value().intersects(productIDs());
}

bool AppStoreSubscriptionStore::isActive(AppStoreSubscriptionPlan plan) const
{
    return m_purchasedProductIDs.value().contains(plan.productID());
}

std::optional<StoreProduct> AppStoreSubscriptionStore::product(AppStoreSubscriptionPlan plan) const
{
    for (const StoreProduct &product : m_products.value()) {
        if (product.id == plan.productID())
            return product;
    }
    return std::nullopt;
}

AppStoreSubscriptionStore::VerifiedStoreKitTransaction
AppStoreSubscriptionStore::verifiedTransaction(const VerificationResult &result)
{
    if (result.verificationError)
        throw StoreError(*result.verificationError);
    return {result.transaction, result.jwsRepresentation};
}

qsizetype AppStoreSubscriptionStore::productOrder(const QString &productID)
{
    const auto &plans = AppStoreSubscriptionPlan::allCases;
    const auto plan = std::find_if(plans.begin(), plans.end(), [&](AppStoreSubscriptionPlan candidate) {
        return candidate.productID() == productID;
    });
    return plan - plans.begin();
}

void AppStoreSubscriptionStore::startObservingTransactions()
{
    if (m_transactionUpdatesTask)
        return;
    m_transactionUpdatesTask.emplace();
    async::detach(observeTransactions(this, m_appStore, m_transactionUpdatesTask->get_token()),
                  [store = QPointer(this)](const std::exception_ptr &failure) {
                      if (store)
                          store->m_errorMessage = localizedDescription(failure);
                  });
}

Task<> AppStoreSubscriptionStore::observeTransactions(QPointer<AppStoreSubscriptionStore> store,
                                                      std::shared_ptr<AppStore> appStore, std::stop_token token)
{
    co_await async::yield(token);
    auto updates = appStore->transactionUpdates(token);
    for (auto update = co_await updates.begin(); update != updates.end(); co_await ++update) {
        if (!store)
            co_return;
        co_await store->handleTransactionUpdate(*update);
    }
}

Task<> AppStoreSubscriptionStore::handleTransactionUpdate(VerificationResult result)
{
    const async::OwnerGuard guard(this);
    if (result.verificationError) {
        m_errorMessage = result.verificationError->localizedDescription();
        co_return;
    }
    const VerifiedStoreKitTransaction verified = verifiedTransaction(result);
    // What another build of the program sold is that build's to deal with.
    if (!productIDs().contains(verified.transaction.productID))
        co_return;
    co_await m_appStore->finish(verified.transaction);
    if (!guard.isAlive())
        co_return;
    co_await refreshPurchasedProducts();
    if (!guard.isAlive())
        co_return;
    m_latestSignedTransactionJWS = verified.signedTransactionJWS;
    m_statusMessage = QStringLiteral("App Store subscription updated.");
}

Task<> AppStoreSubscriptionStore::loadProductsIfNeeded(std::stop_token token)
{
    if (!m_hasLoadedProducts)
        co_await loadProducts(std::move(token));
}

Task<> AppStoreSubscriptionStore::loadProducts(std::stop_token token)
{
    const async::OwnerGuard guard(this);
    m_isLoadingProducts = true;
    m_errorMessage = std::nullopt;
    const auto atTheEnd = qScopeGuard([&] {
        if (guard.isAlive())
            m_isLoadingProducts = false;
    });
    const auto appStore = m_appStore;
    try {
        QList<StoreProduct> products = co_await appStore->products(productIDsOfPlans(), std::move(token));
        guard.check();
        std::sort(products.begin(), products.end(), [](const StoreProduct &left, const StoreProduct &right) {
            return productOrder(left.id) < productOrder(right.id);
        });
        m_products = products;
        m_hasLoadedProducts = true;
        if (products.isEmpty())
            m_errorMessage = QStringLiteral("App Store subscriptions are not available yet.");
    } catch (const async::Cancelled &) {
        // Nobody waits for the products any more.
    } catch (const std::exception &error) {
        if (guard.isAlive())
            m_errorMessage = localizedDescription(error);
    }
}

Task<> AppStoreSubscriptionStore::refreshPurchasedProducts(std::stop_token token)
{
    const async::OwnerGuard guard(this);
    try {
        co_await readEntitlements(std::move(token));
    } catch (const async::Cancelled &) {
        // Half a list would be a wrong one.
    } catch (const std::exception &error) {
        if (guard.isAlive())
            m_errorMessage = localizedDescription(error);
    }
}

Task<> AppStoreSubscriptionStore::readEntitlements(std::stop_token token)
{
    const async::OwnerGuard guard(this);
    QSet<QString> purchased;
    std::optional<QString> latest;
    const auto appStore = m_appStore;
    auto entitlements = appStore->currentEntitlements(token);
    for (auto entitlement = co_await entitlements.begin(); entitlement != entitlements.end(); co_await ++entitlement) {
        const VerificationResult &result = *entitlement;
        if (result.verificationError || !productIDs().contains(result.transaction.productID)
            || result.transaction.revocationDate)
            continue;
        purchased.insert(result.transaction.productID);
        latest = result.jwsRepresentation;
    }
    guard.check();
    // A platform may end a stopped sequence early as if it were complete.
    async::throwIfStopped(token);
    m_purchasedProductIDs = purchased;
    m_latestSignedTransactionJWS = latest;
}

Task<std::optional<QString>> AppStoreSubscriptionStore::purchase(AppStoreSubscriptionPlan plan,
                                                                 std::optional<QUuid> appAccountToken,
                                                                 std::stop_token token)
{
    const async::OwnerGuard guard(this);
    const std::optional<StoreProduct> wanted = product(plan);
    if (!wanted) {
        m_errorMessage = QStringLiteral("This App Store subscription is not available yet.");
        co_return std::nullopt;
    }
    m_purchaseInProgressProductID = wanted->id;
    m_statusMessage = std::nullopt;
    m_errorMessage = std::nullopt;
    const auto atTheEnd = qScopeGuard([&] {
        if (guard.isAlive())
            m_purchaseInProgressProductID = std::nullopt;
    });
    PurchaseOptions options;
    options.appAccountToken = appAccountToken;
    try {
        co_return co_await performPurchase(plan, *wanted, options, std::move(token));
    } catch (const async::Cancelled &) {
        // The user knows.
    } catch (const std::exception &error) {
        if (guard.isAlive())
            m_errorMessage = localizedDescription(error);
    }
    co_return std::nullopt;
}

Task<std::optional<QString>> AppStoreSubscriptionStore::performPurchase(AppStoreSubscriptionPlan plan,
                                                                        StoreProduct product, PurchaseOptions options,
                                                                        std::stop_token token)
{
    const async::OwnerGuard guard(this);
    const auto appStore = m_appStore;
    const PurchaseResult result = co_await appStore->purchase(std::move(product), options, token);
    guard.check();
    switch (result.outcome) {
    case PurchaseOutcome::Success: {
        const VerifiedStoreKitTransaction verified = verifiedTransaction(result.verification.value());
        co_await appStore->finish(verified.transaction);
        guard.check();
        co_await refreshPurchasedProducts(std::move(token));
        guard.check();
        m_statusMessage = plan.title() + QStringLiteral(" subscription is active.");
        co_return verified.signedTransactionJWS;
    }
    case PurchaseOutcome::Pending:
        m_statusMessage = QStringLiteral("Purchase is pending approval.");
        break;
    case PurchaseOutcome::UserCancelled:
        break;
    case PurchaseOutcome::Unknown:
        m_statusMessage = QStringLiteral("The App Store returned an unknown purchase result.");
        break;
    }
    co_return std::nullopt;
}

Task<std::optional<QString>> AppStoreSubscriptionStore::restorePurchases(std::stop_token token)
{
    const async::OwnerGuard guard(this);
    m_isRestoringPurchases = true;
    m_statusMessage = std::nullopt;
    m_errorMessage = std::nullopt;
    const auto atTheEnd = qScopeGuard([&] {
        if (guard.isAlive())
            m_isRestoringPurchases = false;
    });
    const auto appStore = m_appStore;
    try {
        co_await appStore->sync(token);
        guard.check();
        co_await readEntitlements(std::move(token));
        guard.check();
        m_statusMessage = hasActiveSubscription() ? QStringLiteral("Purchases restored.")
                                                  : QStringLiteral("No active App Store subscription was found.");
        co_return latestSignedTransactionJWS();
    } catch (const async::Cancelled &) {
        // The user knows.
    } catch (const std::exception &error) {
        if (guard.isAlive())
            m_errorMessage = localizedDescription(error);
    }
    co_return std::nullopt;
}

} // namespace tarnwik
