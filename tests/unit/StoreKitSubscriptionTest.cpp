// The program's subscriptions over the platform's App Store: whole ways, from the question to the messages.

#include "StoreKitFixture.h"
#include "store/AppStoreSubscriptionStore.h"
#include "support/TestPlatform.h"

#include <optional>

namespace tarnwik::test {

namespace {

class StoreKitSubscription : public StoreKitTest
{
protected:
    static constexpr auto monthly = AppStoreSubscriptionPlan::monthly;

    StoreKitSubscription()
    {
        m_bridge.answer("products", R"({"products":[{"id":"tarnwik.sub.yearly","displayPrice":"€119"},
                                                    {"id":"tarnwik.sub.monthly","displayPrice":"€15"}]})");
        m_bridge.answer("purchase", bought, ReplyWay::Delayed);
        m_bridge.answer("entitlements", entitled);
        PlatformServices services = PlatformServices::current();
        services.appStore = m_store;
        m_scope.emplace(services);
        m_subscriptions = std::make_unique<AppStoreSubscriptionStore>();
    }

    TestPlatform m_platform;
    std::optional<ScopedPlatform> m_scope;
    std::unique_ptr<AppStoreSubscriptionStore> m_subscriptions;
};

TEST_F(StoreKitSubscription, isLoadedBoughtFinishedAndActive)
{
    const QUuid account(QStringLiteral("{6f9619ff-8b86-d011-b42d-00cf4fc964ff}"));
    run(m_subscriptions->loadProducts());
    EXPECT_EQ(m_subscriptions->product(monthly)->displayPrice, QStringLiteral("€15"));
    EXPECT_EQ(run(m_subscriptions->purchase(monthly, account)), QStringLiteral("signed"));
    EXPECT_TRUE(m_subscriptions->isActive(monthly));
    EXPECT_FALSE(m_subscriptions->isActive(AppStoreSubscriptionPlan::yearly)) << "its signature is not good";
    EXPECT_EQ(m_subscriptions->statusMessage(), QStringLiteral("Monthly subscription is active."));
    EXPECT_FALSE(m_subscriptions->errorMessage());
    EXPECT_EQ(m_bridge.calls(),
              calls({"products tarnwik.sub.monthly tarnwik.sub.yearly",
                     "purchase tarnwik.sub.monthly 6f9619ff-8b86-d011-b42d-00cf4fc964ff", "finish 7", "entitlements"}));
}

TEST_F(StoreKitSubscription, isSilentWhenTheUserCancels)
{
    run(m_subscriptions->loadProducts());
    for (const char *reply :
         {R"({"outcome":"cancelled"})",
          R"({"error":{"type":"StoreKitError","case":"userCancelled","message":"Request Cancelled"}})"}) {
        m_bridge.answer("purchase", reply);
        m_bridge.answer("sync", reply);
        EXPECT_EQ(run(m_subscriptions->purchase(monthly)), std::nullopt);
        EXPECT_FALSE(m_subscriptions->statusMessage());
        EXPECT_FALSE(m_subscriptions->errorMessage());
        EXPECT_FALSE(m_subscriptions->purchaseInProgressProductID());
    }
    EXPECT_EQ(run(m_subscriptions->restorePurchases()), std::nullopt);
    EXPECT_FALSE(m_subscriptions->errorMessage());
    EXPECT_FALSE(m_subscriptions->isRestoringPurchases());
}

TEST_F(StoreKitSubscription, isRestored)
{
    EXPECT_EQ(run(m_subscriptions->restorePurchases()), QStringLiteral("signed"));
    EXPECT_EQ(m_subscriptions->statusMessage(), QStringLiteral("Purchases restored."));
    EXPECT_EQ(m_bridge.calls(), calls({"sync", "entitlements"}));
}

TEST_F(StoreKitSubscription, followsUpdatesUntilItsEnd)
{
    m_subscriptions->startObservingTransactions();
    ASSERT_TRUE(spinUntil([&] { return m_bridge.listenerCount() == 1; }));
    std::thread([&] { m_bridge.report(transaction(42)); }).join();
    ASSERT_TRUE(spinUntil([&] { return m_subscriptions->statusMessage().has_value(); }));
    EXPECT_EQ(m_subscriptions->statusMessage(), QStringLiteral("App Store subscription updated."));
    EXPECT_TRUE(m_subscriptions->isActive(monthly));
    EXPECT_EQ(m_bridge.calls(), calls({"updates", "finish 42", "entitlements"}));
    m_subscriptions.reset();
    EXPECT_EQ(m_bridge.listenerCount(), 0U) << "with its owner, not later";
    settleEvents();
}

TEST_F(StoreKitSubscription, endsWhileTheStoreStillOwesReplies)
{
    run(m_subscriptions->loadProducts());
    m_bridge.answer("purchase", bought, ReplyWay::Held);
    m_bridge.answer("finish", "{}", ReplyWay::Held);
    m_subscriptions->startObservingTransactions();
    Running<std::optional<QString>> purchase(m_subscriptions->purchase(monthly));
    ASSERT_TRUE(spinUntil([&] { return m_bridge.listenerCount() == 1; }));
    m_bridge.report(transaction(42));
    ASSERT_TRUE(spinUntil([&] { return m_bridge.calls().size() == 4; }));
    m_subscriptions.reset();
    m_bridge.release();
    EXPECT_EQ(purchase.result(), std::nullopt);
    settleEvents();
    EXPECT_EQ(m_bridge.listenerCount(), 0U);
}

} // namespace
} // namespace tarnwik::test
