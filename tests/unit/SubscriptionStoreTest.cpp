// Products, entitlements and messages.

#include "SubscriptionStoreFixture.h"

#include <QSignalSpy>

namespace tarnwik::test {

namespace {

TEST_F(SubscriptionStoreTest, startsEmptyAndAsksNothing)
{
    EXPECT_TRUE(m_store->products().isEmpty());
    EXPECT_TRUE(purchased().isEmpty());
    EXPECT_FALSE(m_store->isLoadingProducts());
    EXPECT_FALSE(m_store->isRestoringPurchases());
    EXPECT_FALSE(m_store->purchaseInProgressProductID());
    EXPECT_FALSE(m_store->statusMessage());
    EXPECT_FALSE(m_store->errorMessage());
    EXPECT_FALSE(m_store->latestSignedTransactionJWS());
    EXPECT_FALSE(m_store->hasActiveSubscription());
    settleEvents();
    EXPECT_TRUE(appStore().operations.isEmpty());
}

TEST_F(SubscriptionStoreTest, knowsTheProductsOfAllPlans)
{
    EXPECT_EQ(AppStoreSubscriptionStore::productIDs(), QSet<QString>({text(monthlyID), text(yearlyID)}));
}

TEST_F(SubscriptionStoreTest, asksForTheProductsInPlanOrder)
{
    run(m_store->loadProducts());
    EXPECT_EQ(appStore().operations, QStringList{text("products tarnwik.sub.monthly tarnwik.sub.yearly")});
}

TEST_F(SubscriptionStoreTest, keepsTheProductsInPlanOrderAndStrangersLast)
{
    appStore().offered.prepend({text("another.product"), text("€1")});
    run(m_store->loadProducts());
    ASSERT_EQ(m_store->products().size(), 3);
    EXPECT_EQ(m_store->products()[0].id, text(monthlyID));
    EXPECT_EQ(m_store->products()[1].id, text(yearlyID));
    EXPECT_EQ(m_store->products()[2].id, text("another.product"));
}

TEST_F(SubscriptionStoreTest, findsAPlansProduct)
{
    EXPECT_FALSE(m_store->product(monthly));
    appStore().offered = {{text(yearlyID), text("first")}, {text(yearlyID), text("second")}};
    run(m_store->loadProducts());
    EXPECT_FALSE(m_store->product(monthly));
    EXPECT_EQ(m_store->product(yearly)->displayPrice, text("first"));
}

TEST_F(SubscriptionStoreTest, showsThatItLoads)
{
    appStore().held = {text("products")};
    Running<> loading(m_store->loadProducts());
    settleEvents();
    EXPECT_TRUE(m_store->isLoadingProducts());
    appStore().release();
    loading.result();
    EXPECT_FALSE(m_store->isLoadingProducts());
}

TEST_F(SubscriptionStoreTest, loadingClearsTheErrorButNotTheStatus)
{
    run(m_store->purchase(monthly));
    ASSERT_TRUE(m_store->errorMessage());
    appStore().held = {text("products")};
    Running<> loading(m_store->loadProducts());
    EXPECT_FALSE(m_store->errorMessage());
    appStore().release();
    loading.result();

    nextPurchaseIs(PurchaseOutcome::Pending);
    run(m_store->purchase(monthly));
    run(m_store->loadProducts());
    EXPECT_EQ(m_store->statusMessage(), some("Purchase is pending approval."));
}

TEST_F(SubscriptionStoreTest, loadsOnlyOnceWhenThatSucceeded)
{
    run(m_store->loadProductsIfNeeded());
    run(m_store->loadProductsIfNeeded());
    EXPECT_EQ(appStore().operations.size(), 1);
}

TEST_F(SubscriptionStoreTest, saysThatThereIsNothingToBuyAndDoesNotAskAgain)
{
    appStore().offered.clear();
    run(m_store->loadProductsIfNeeded());
    EXPECT_TRUE(m_store->products().isEmpty());
    EXPECT_EQ(m_store->errorMessage(), some("App Store subscriptions are not available yet."));
    run(m_store->loadProductsIfNeeded());
    EXPECT_EQ(appStore().operations.size(), 1);
    // But it asks when it is told to.
    run(m_store->loadProducts());
    EXPECT_EQ(appStore().operations.size(), 2);
}

TEST_F(SubscriptionStoreTest, twoLoadsAtOnceBothAsk)
{
    appStore().held = {text("products")};
    Running<> first(m_store->loadProductsIfNeeded());
    Running<> second(m_store->loadProductsIfNeeded());
    settleEvents();
    EXPECT_EQ(appStore().operations.size(), 2);
    appStore().release();
    first.result();
    second.result();
    EXPECT_EQ(m_store->products().size(), 2);
    EXPECT_FALSE(m_store->isLoadingProducts());
}

TEST_F(SubscriptionStoreTest, aFailedLoadKeepsWhatWasThereAndIsTriedAgain)
{
    appStore().failures.insert(text("products"), text("The store is closed."));
    run(m_store->loadProductsIfNeeded());
    EXPECT_EQ(m_store->errorMessage(), some("The store is closed."));
    EXPECT_FALSE(m_store->isLoadingProducts());

    appStore().failures.clear();
    run(m_store->loadProductsIfNeeded());
    EXPECT_EQ(m_store->products().size(), 2);
    EXPECT_FALSE(m_store->errorMessage());

    appStore().failures.insert(text("products"), text("The store is closed."));
    run(m_store->loadProducts());
    EXPECT_EQ(m_store->products().size(), 2);
    run(m_store->loadProductsIfNeeded());
    EXPECT_EQ(m_store->errorMessage(), some("The store is closed.")) << "was not asked again";
}

TEST_F(SubscriptionStoreTest, aStoppedLoadIsSilent)
{
    appStore().held = {text("products")};
    std::stop_source source;
    Running<> loading(m_store->loadProducts(source.get_token()));
    settleEvents();
    source.request_stop();
    loading.result();
    EXPECT_FALSE(m_store->errorMessage());
    EXPECT_FALSE(m_store->isLoadingProducts());
    appStore().release();
    run(m_store->loadProductsIfNeeded());
    EXPECT_EQ(m_store->products().size(), 2);
}

TEST_F(SubscriptionStoreTest, takesTheLastOfTheEntitlementsAsTheLatest)
{
    appStore().entitlements = {verified(yearlyID, "first"), verified(monthlyID, "last")};
    run(m_store->refreshPurchasedProducts());
    EXPECT_EQ(purchased(), QSet<QString>({text(monthlyID), text(yearlyID)}));
    EXPECT_EQ(m_store->latestSignedTransactionJWS(), some("last"));
    EXPECT_TRUE(m_store->hasActiveSubscription());
    EXPECT_TRUE(m_store->isActive(monthly));
    EXPECT_TRUE(m_store->isActive(yearly));
}

TEST_F(SubscriptionStoreTest, leavesOutWhatIsUnverifiedUnknownOrRevoked)
{
    VerificationResult revoked = verified(yearlyID, "revoked");
    revoked.transaction.revocationDate = QDateTime::currentDateTimeUtc();
    appStore().entitlements = {unverified(monthlyID, "Forged."), verified("another.product", "stranger"), revoked};
    run(m_store->refreshPurchasedProducts());
    EXPECT_TRUE(purchased().isEmpty());
    EXPECT_FALSE(m_store->latestSignedTransactionJWS());
    EXPECT_FALSE(m_store->hasActiveSubscription());
    EXPECT_FALSE(m_store->errorMessage());
}

TEST_F(SubscriptionStoreTest, readsEntitlementsWholeEveryTime)
{
    appStore().entitlements = {verified(monthlyID, "one")};
    run(m_store->refreshPurchasedProducts());
    appStore().entitlements = {verified(yearlyID, "two")};
    run(m_store->refreshPurchasedProducts());
    EXPECT_EQ(purchased(), QSet<QString>{text(yearlyID)});
    EXPECT_FALSE(m_store->isActive(monthly));
    appStore().entitlements.clear();
    run(m_store->refreshPurchasedProducts());
    EXPECT_TRUE(purchased().isEmpty());
    EXPECT_FALSE(m_store->latestSignedTransactionJWS());
}

TEST_F(SubscriptionStoreTest, aStoppedRefreshChangesNothing)
{
    appStore().entitlements = {verified(monthlyID, "one")};
    run(m_store->refreshPurchasedProducts());
    appStore().entitlements = {verified(yearlyID, "two"), verified(yearlyID, "three")};
    appStore().held = {text("entitlements")};
    // However the store below it ends the sequence.
    for (const bool endsWhenStopped : {false, true}) {
        appStore().endsEntitlementsWhenStopped = endsWhenStopped;
        std::stop_source source;
        Running<> refresh(m_store->refreshPurchasedProducts(source.get_token()));
        settleEvents();
        source.request_stop();
        refresh.result();
        EXPECT_EQ(purchased(), QSet<QString>{text(monthlyID)});
        EXPECT_EQ(m_store->latestSignedTransactionJWS(), some("one"));
        EXPECT_FALSE(m_store->errorMessage());
    }
}

TEST_F(SubscriptionStoreTest, aRefreshThatCannotReadSaysSoAndChangesNothing)
{
    appStore().entitlements = {verified(monthlyID, "one")};
    run(m_store->refreshPurchasedProducts());
    appStore().failures.insert(text("entitlements"), text("The file is broken."));
    run(m_store->refreshPurchasedProducts());
    EXPECT_EQ(m_store->errorMessage(), some("The file is broken."));
    EXPECT_TRUE(m_store->isActive(monthly));
}

TEST_F(SubscriptionStoreTest, notifiesOnlyOfChanges)
{
    QSignalSpy products(m_store.get(), &AppStoreSubscriptionStore::productsChanged);
    QSignalSpy loading(m_store.get(), &AppStoreSubscriptionStore::isLoadingProductsChanged);
    QSignalSpy purchases(m_store.get(), &AppStoreSubscriptionStore::purchasedProductIDsChanged);
    QSignalSpy errors(m_store.get(), &AppStoreSubscriptionStore::errorMessageChanged);
    run(m_store->loadProducts());
    run(m_store->loadProducts());
    run(m_store->refreshPurchasedProducts());
    EXPECT_EQ(products.count(), 1);
    EXPECT_EQ(loading.count(), 4);
    EXPECT_EQ(purchases.count(), 0);
    EXPECT_EQ(errors.count(), 0);
}

} // namespace
} // namespace tarnwik::test
