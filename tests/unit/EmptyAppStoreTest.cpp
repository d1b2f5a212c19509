#include "SubscriptionStoreFixture.h"

#include "platform/EmptyAppStore.h"

namespace tarnwik::test {

namespace {

class EmptyAppStoreTest : public testing::Test
{
protected:
    static PlatformServices services()
    {
        PlatformServices services;
        services.appStore = emptyAppStore();
        return services;
    }

    ScopedPlatform m_platform{services()};
    AppStoreSubscriptionStore m_store;
};

TEST_F(EmptyAppStoreTest, hasNothingToSell)
{
    run(m_store.loadProductsIfNeeded());
    EXPECT_EQ(m_store.errorMessage(), QStringLiteral("App Store subscriptions are not available yet."));
    EXPECT_EQ(run(m_store.purchase(AppStoreSubscriptionPlan::monthly)), std::nullopt);
    EXPECT_EQ(m_store.errorMessage(), QStringLiteral("This App Store subscription is not available yet."));
}

TEST_F(EmptyAppStoreTest, hasNothingToRestore)
{
    EXPECT_EQ(run(m_store.restorePurchases()), std::nullopt);
    EXPECT_EQ(m_store.statusMessage(), QStringLiteral("No active App Store subscription was found."));
    EXPECT_FALSE(m_store.errorMessage());
}

TEST_F(EmptyAppStoreTest, tellsNothingToWhoHasStopped)
{
    std::stop_source source;
    source.request_stop();
    run(m_store.loadProductsIfNeeded(source.get_token()));
    EXPECT_FALSE(m_store.errorMessage());
    EXPECT_EQ(run(m_store.restorePurchases(source.get_token())), std::nullopt);
    EXPECT_FALSE(m_store.statusMessage());
    EXPECT_FALSE(m_store.errorMessage());
}

TEST_F(EmptyAppStoreTest, keepsAListenerWaitingUntilTheStoreEnds)
{
    auto store = std::make_unique<AppStoreSubscriptionStore>();
    store->startObservingTransactions();
    settleEvents();
    EXPECT_FALSE(store->errorMessage());
    store.reset();
    settleEvents();
}

TEST_F(EmptyAppStoreTest, refusesAPurchaseWithASentence)
{
    try {
        run(PlatformServices::current().appStore->purchase({}, {}, {}));
        FAIL();
    } catch (const StoreError &error) {
        EXPECT_EQ(error.localizedDescription(), QStringLiteral("There is no app store on this computer."));
    }
}

} // namespace
} // namespace tarnwik::test
