#pragma once

#include "store/AppStoreSubscriptionStore.h"
#include "support/EventLoop.h"
#include "support/TestPlatform.h"

#include <gtest/gtest.h>

namespace tarnwik::test {

/// A subscription store over an app store of the test's own.
class SubscriptionStoreTest : public testing::Test
{
protected:
    static constexpr char monthlyID[] = "tarnwik.sub.monthly";
    static constexpr char yearlyID[] = "tarnwik.sub.yearly";
    static constexpr auto monthly = AppStoreSubscriptionPlan::monthly;
    static constexpr auto yearly = AppStoreSubscriptionPlan::yearly;

    SubscriptionStoreTest() { appStore().offered = {{text(yearlyID), text("€119")}, {text(monthlyID), text("€15")}}; }

    static QString text(const char *utf8) { return QString::fromUtf8(utf8); }
    static std::optional<QString> some(const char *utf8) { return text(utf8); }

    FakeAppStore &appStore() { return *m_platform.appStore; }

    /// The products are loaded and nothing was asked since.
    void loadProducts()
    {
        run(m_store->loadProducts());
        appStore().operations.clear();
    }

    void nextPurchaseIs(PurchaseOutcome outcome, const std::optional<VerificationResult> &verification = {})
    {
        appStore().nextPurchase.outcome = outcome;
        appStore().nextPurchase.verification = verification;
    }

    /// The user buys \a productID, and is entitled to it from then on.
    void nextPurchaseSucceeds(const char *productID, const char *jws)
    {
        nextPurchaseIs(PurchaseOutcome::Success, verified(productID, jws, 7));
        appStore().entitlements = {verified(productID, jws, 7)};
    }

    QSet<QString> purchased() const { return m_store->purchasedProductIDs(); }

    TestPlatform m_platform;
    std::unique_ptr<AppStoreSubscriptionStore> m_store = std::make_unique<AppStoreSubscriptionStore>();
};

} // namespace tarnwik::test
