// Purchases, restores, updates, and what happens between them.

#include "SubscriptionStoreFixture.h"

namespace tarnwik::test {

namespace {

TEST_F(SubscriptionStoreTest, doesNotBuyWhatIsNotLoaded)
{
    EXPECT_EQ(run(m_store->purchase(monthly)), std::nullopt);
    EXPECT_EQ(m_store->errorMessage(), some("This App Store subscription is not available yet."));
    EXPECT_FALSE(m_store->purchaseInProgressProductID());
    EXPECT_TRUE(appStore().operations.isEmpty());
}

TEST_F(SubscriptionStoreTest, anUnavailablePlanLeavesTheStatusAlone)
{
    appStore().offered.removeLast();
    loadProducts();
    nextPurchaseIs(PurchaseOutcome::Pending);
    run(m_store->purchase(yearly));
    run(m_store->purchase(monthly));
    EXPECT_EQ(m_store->statusMessage(), some("Purchase is pending approval."));
    EXPECT_EQ(m_store->errorMessage(), some("This App Store subscription is not available yet."));
}

TEST_F(SubscriptionStoreTest, buysFinishesAndReadsEntitlementsInThatOrder)
{
    loadProducts();
    nextPurchaseSucceeds(monthlyID, "signed");
    EXPECT_EQ(run(m_store->purchase(monthly)), some("signed"));
    EXPECT_EQ(appStore().operations,
              QStringList({text("purchase tarnwik.sub.monthly"), text("finish 7"), text("entitlements")}));
    EXPECT_EQ(m_store->statusMessage(), some("Monthly subscription is active."));
    EXPECT_FALSE(m_store->errorMessage());
    EXPECT_TRUE(m_store->isActive(monthly));
    EXPECT_FALSE(m_store->purchaseInProgressProductID());
}

TEST_F(SubscriptionStoreTest, givesThePurchasesTransactionEvenIfAnotherIsTheLatest)
{
    loadProducts();
    nextPurchaseSucceeds(yearlyID, "bought");
    appStore().entitlements = {verified(yearlyID, "bought"), verified(monthlyID, "listed last")};
    EXPECT_EQ(run(m_store->purchase(yearly)), some("bought"));
    EXPECT_EQ(m_store->statusMessage(), some("Yearly subscription is active."));
    EXPECT_EQ(m_store->latestSignedTransactionJWS(), some("listed last"));
}

TEST_F(SubscriptionStoreTest, passesAnAccountTokenOnlyWhenThereIsOne)
{
    loadProducts();
    nextPurchaseIs(PurchaseOutcome::UserCancelled);
    const QUuid account = QUuid::createUuid();
    run(m_store->purchase(monthly));
    run(m_store->purchase(monthly, account));
    EXPECT_EQ(appStore().purchaseOptions, QList<PurchaseOptions>({PurchaseOptions{}, PurchaseOptions{account}}));
}

TEST_F(SubscriptionStoreTest, showsThePurchaseUnderWayAndClearsBothMessages)
{
    loadProducts();
    nextPurchaseIs(PurchaseOutcome::Pending);
    run(m_store->purchase(monthly));
    appStore().failures.insert(text("entitlements"), text("Broken."));
    run(m_store->refreshPurchasedProducts());
    ASSERT_TRUE(m_store->statusMessage() && m_store->errorMessage());

    appStore().held = {text("purchase")};
    Running<std::optional<QString>> purchase(m_store->purchase(yearly));
    EXPECT_EQ(m_store->purchaseInProgressProductID(), some(yearlyID));
    EXPECT_FALSE(m_store->statusMessage());
    EXPECT_FALSE(m_store->errorMessage());
    appStore().release();
    purchase.result();
    EXPECT_FALSE(m_store->purchaseInProgressProductID());
}

TEST_F(SubscriptionStoreTest, aCancelledPurchaseIsSilent)
{
    loadProducts();
    nextPurchaseIs(PurchaseOutcome::UserCancelled);
    EXPECT_EQ(run(m_store->purchase(monthly)), std::nullopt);
    EXPECT_FALSE(m_store->statusMessage());
    EXPECT_FALSE(m_store->errorMessage());
    EXPECT_FALSE(m_store->purchaseInProgressProductID());
    EXPECT_EQ(appStore().operations, QStringList{text("purchase tarnwik.sub.monthly")});
}

TEST_F(SubscriptionStoreTest, aCancellationThatIsThrownIsSilentToo)
{
    loadProducts();
    appStore().failures.insert(text("purchase"), text("cancelled"));
    EXPECT_EQ(run(m_store->purchase(monthly)), std::nullopt);
    EXPECT_FALSE(m_store->statusMessage());
    EXPECT_FALSE(m_store->errorMessage());
}

TEST_F(SubscriptionStoreTest, aPendingPurchaseIsAStatus)
{
    loadProducts();
    nextPurchaseIs(PurchaseOutcome::Pending);
    EXPECT_EQ(run(m_store->purchase(monthly)), std::nullopt);
    EXPECT_EQ(m_store->statusMessage(), some("Purchase is pending approval."));
    EXPECT_FALSE(m_store->errorMessage());
}

TEST_F(SubscriptionStoreTest, anUnknownOutcomeIsAStatus)
{
    loadProducts();
    nextPurchaseIs(PurchaseOutcome::Unknown);
    EXPECT_EQ(run(m_store->purchase(monthly)), std::nullopt);
    EXPECT_EQ(m_store->statusMessage(), some("The App Store returned an unknown purchase result."));
    EXPECT_FALSE(m_store->errorMessage());
}

TEST_F(SubscriptionStoreTest, aFailedPurchaseIsAnError)
{
    loadProducts();
    appStore().failures.insert(text("purchase"), text("Item Not Available"));
    EXPECT_EQ(run(m_store->purchase(monthly)), std::nullopt);
    EXPECT_EQ(m_store->errorMessage(), some("Item Not Available"));
    EXPECT_FALSE(m_store->statusMessage());
    EXPECT_FALSE(m_store->purchaseInProgressProductID());
}

TEST_F(SubscriptionStoreTest, anUnverifiedPurchaseIsAnErrorAndIsNotFinished)
{
    loadProducts();
    nextPurchaseIs(PurchaseOutcome::Success, unverified(monthlyID, "The signature is not valid."));
    EXPECT_EQ(run(m_store->purchase(monthly)), std::nullopt);
    EXPECT_EQ(m_store->errorMessage(), some("The signature is not valid."));
    EXPECT_FALSE(m_store->statusMessage());
    EXPECT_EQ(appStore().operations, QStringList{text("purchase tarnwik.sub.monthly")});
}

TEST_F(SubscriptionStoreTest, twoPurchasesAtOnceBothRun)
{
    loadProducts();
    nextPurchaseSucceeds(monthlyID, "one");
    appStore().held = {text("purchase")};
    Running<std::optional<QString>> first(m_store->purchase(monthly));
    nextPurchaseIs(PurchaseOutcome::Pending);
    Running<std::optional<QString>> second(m_store->purchase(yearly));
    EXPECT_EQ(m_store->purchaseInProgressProductID(), some(yearlyID));
    appStore().release();
    EXPECT_EQ(first.result(), some("one"));
    EXPECT_EQ(second.result(), std::nullopt);
    EXPECT_FALSE(m_store->purchaseInProgressProductID());
    EXPECT_EQ(m_store->statusMessage(), some("Monthly subscription is active.")) << "the one that ended last";
}

TEST_F(SubscriptionStoreTest, restoresWhatWasBought)
{
    appStore().entitlements = {verified(yearlyID, "old")};
    EXPECT_EQ(run(m_store->restorePurchases()), some("old"));
    EXPECT_EQ(appStore().operations, QStringList({text("sync"), text("entitlements")}));
    EXPECT_EQ(m_store->statusMessage(), some("Purchases restored."));
    EXPECT_FALSE(m_store->isRestoringPurchases());
}

TEST_F(SubscriptionStoreTest, aRestoreThatFindsNothingIsAStatus)
{
    VerificationResult revoked = verified(yearlyID, "revoked");
    revoked.transaction.revocationDate = QDateTime::currentDateTimeUtc();
    appStore().entitlements = {revoked};
    EXPECT_EQ(run(m_store->restorePurchases()), std::nullopt);
    EXPECT_EQ(m_store->statusMessage(), some("No active App Store subscription was found."));
    EXPECT_FALSE(m_store->errorMessage());
}

TEST_F(SubscriptionStoreTest, aRestoreShowsItselfAndClearsBothMessages)
{
    run(m_store->purchase(monthly));
    ASSERT_TRUE(m_store->errorMessage());
    appStore().held = {text("sync")};
    Running<std::optional<QString>> restore(m_store->restorePurchases());
    EXPECT_TRUE(m_store->isRestoringPurchases());
    EXPECT_FALSE(m_store->statusMessage());
    EXPECT_FALSE(m_store->errorMessage());
    appStore().release();
    restore.result();
    EXPECT_FALSE(m_store->isRestoringPurchases());
}

TEST_F(SubscriptionStoreTest, aFailedRestoreIsAnErrorAndACancelledOneSilent)
{
    appStore().entitlements = {verified(yearlyID, "old")};
    appStore().failures.insert(text("sync"), text("No network."));
    EXPECT_EQ(run(m_store->restorePurchases()), std::nullopt);
    EXPECT_EQ(m_store->errorMessage(), some("No network."));
    EXPECT_FALSE(m_store->isRestoringPurchases());

    appStore().failures.insert(text("sync"), text("cancelled"));
    EXPECT_EQ(run(m_store->restorePurchases()), std::nullopt);
    EXPECT_FALSE(m_store->errorMessage());
    EXPECT_FALSE(m_store->statusMessage());
    EXPECT_FALSE(m_store->isRestoringPurchases());
    EXPECT_EQ(appStore().operations, QStringList({text("sync"), text("sync")}));
}

TEST_F(SubscriptionStoreTest, aPurchaseStandsAndARestoreFailsWhenEntitlementsCannotBeRead)
{
    loadProducts();
    nextPurchaseSucceeds(monthlyID, "bought");
    appStore().failures.insert(text("entitlements"), text("The file is broken."));
    EXPECT_EQ(run(m_store->purchase(monthly)), some("bought"));
    EXPECT_EQ(m_store->statusMessage(), some("Monthly subscription is active."));
    EXPECT_EQ(m_store->errorMessage(), some("The file is broken."));

    EXPECT_EQ(run(m_store->restorePurchases()), std::nullopt);
    EXPECT_FALSE(m_store->statusMessage());
    EXPECT_EQ(m_store->errorMessage(), some("The file is broken."));
}

TEST_F(SubscriptionStoreTest, aRestoreDuringAPurchaseLeavesBothToTheirEnds)
{
    loadProducts();
    nextPurchaseSucceeds(monthlyID, "bought");
    appStore().held = {text("purchase")};
    Running<std::optional<QString>> purchase(m_store->purchase(monthly));
    EXPECT_EQ(run(m_store->restorePurchases()), some("bought"));
    EXPECT_EQ(m_store->statusMessage(), some("Purchases restored."));
    EXPECT_EQ(m_store->purchaseInProgressProductID(), some(monthlyID));
    appStore().release();
    EXPECT_EQ(purchase.result(), some("bought"));
    EXPECT_EQ(m_store->statusMessage(), some("Monthly subscription is active."));
}

TEST_F(SubscriptionStoreTest, startsOneListenerOnly)
{
    m_store->startObservingTransactions();
    m_store->startObservingTransactions();
    settleEvents();
    m_store->startObservingTransactions();
    settleEvents();
    EXPECT_EQ(appStore().operations, QStringList{text("updates")});
    EXPECT_EQ(appStore().listenerCount, 1);
}

TEST_F(SubscriptionStoreTest, anUpdateIsFinishedReadAndTold)
{
    m_store->startObservingTransactions();
    settleEvents();
    appStore().entitlements = {verified(monthlyID, "entitlement")};
    appStore().update(verified(monthlyID, "update", 42));
    settleEvents();
    EXPECT_EQ(appStore().operations, QStringList({text("updates"), text("finish 42"), text("entitlements")}));
    EXPECT_TRUE(m_store->isActive(monthly));
    EXPECT_EQ(m_store->latestSignedTransactionJWS(), some("update"));
    EXPECT_EQ(m_store->statusMessage(), some("App Store subscription updated."));
}

TEST_F(SubscriptionStoreTest, aRevocationThatArrivesEndsTheEntitlement)
{
    appStore().entitlements = {verified(monthlyID, "bought")};
    run(m_store->refreshPurchasedProducts());
    m_store->startObservingTransactions();
    appStore().entitlements.clear();
    VerificationResult revoked = verified(monthlyID, "revoked");
    revoked.transaction.revocationDate = QDateTime::currentDateTimeUtc();
    appStore().update(revoked);
    settleEvents();
    EXPECT_FALSE(m_store->hasActiveSubscription());
    EXPECT_EQ(m_store->latestSignedTransactionJWS(), some("revoked"));
}

TEST_F(SubscriptionStoreTest, anUnverifiedUpdateIsAnErrorAndNothingElse)
{
    m_store->startObservingTransactions();
    appStore().update(unverified(monthlyID, "The signature is not valid."));
    settleEvents();
    EXPECT_EQ(appStore().operations, QStringList{text("updates")});
    EXPECT_EQ(m_store->errorMessage(), some("The signature is not valid."));
    EXPECT_FALSE(m_store->statusMessage());
    EXPECT_FALSE(m_store->latestSignedTransactionJWS());
    // And the next one is dealt with.
    appStore().update(verified(monthlyID, "good"));
    settleEvents();
    EXPECT_EQ(m_store->latestSignedTransactionJWS(), some("good"));
    EXPECT_EQ(m_store->errorMessage(), some("The signature is not valid.")) << "messages stay until they are cleared";
}

TEST_F(SubscriptionStoreTest, anUpdateOfAnotherBuildsProductIsLeftAlone)
{
    m_store->startObservingTransactions();
    appStore().update(verified("tarnwik.sub.weekly", "stranger"));
    settleEvents();
    EXPECT_EQ(appStore().operations, QStringList{text("updates")});
    EXPECT_FALSE(m_store->statusMessage());
    EXPECT_FALSE(m_store->errorMessage());
    EXPECT_FALSE(m_store->latestSignedTransactionJWS());
}

TEST_F(SubscriptionStoreTest, anUpdateDuringARefreshHasTheLastWord)
{
    m_store->startObservingTransactions();
    settleEvents();
    appStore().entitlements = {verified(monthlyID, "listed")};
    appStore().held = {text("entitlements")};
    Running<> refresh(m_store->refreshPurchasedProducts());
    appStore().update(verified(yearlyID, "update"));
    settleEvents();
    EXPECT_FALSE(m_store->latestSignedTransactionJWS());
    appStore().release();
    refresh.result();
    settleEvents();
    EXPECT_EQ(m_store->latestSignedTransactionJWS(), some("update"));
}

TEST_F(SubscriptionStoreTest, aListenerThatFailsSaysSo)
{
    appStore().failures.insert(text("updates"), text("The store has gone."));
    m_store->startObservingTransactions();
    settleEvents();
    EXPECT_EQ(m_store->errorMessage(), some("The store has gone."));
    EXPECT_EQ(appStore().listenerCount, 0);
}

TEST_F(SubscriptionStoreTest, releasesAListenerThatWaits)
{
    m_store->startObservingTransactions();
    settleEvents();
    ASSERT_EQ(appStore().listenerCount, 1);
    m_store.reset();
    settleEvents();
    EXPECT_EQ(appStore().listenerCount, 0);
}

TEST_F(SubscriptionStoreTest, releasesAListenerThatDealsWithAnUpdate)
{
    appStore().held = {text("finish"), text("entitlements")};
    m_store->startObservingTransactions();
    appStore().update(verified(monthlyID, "one"));
    appStore().update(verified(monthlyID, "two"));
    settleEvents();
    m_store.reset();
    settleEvents();
    appStore().release();
    settleEvents();
    EXPECT_EQ(appStore().listenerCount, 0);
    EXPECT_EQ(appStore().operations, QStringList({text("updates"), text("finish 1")}));
}

TEST_F(SubscriptionStoreTest, aStoreThatIsGoneBeforeItsListenerBeganAsksNothing)
{
    m_store->startObservingTransactions();
    m_store.reset();
    settleEvents();
    EXPECT_TRUE(appStore().operations.isEmpty());
}

TEST_F(SubscriptionStoreTest, operationsOutliveTheStoreWithoutTouchingIt)
{
    loadProducts();
    nextPurchaseSucceeds(monthlyID, "one");
    appStore().held = {text("purchase"), text("products"), text("sync"), text("entitlements")};
    Running<std::optional<QString>> purchase(m_store->purchase(monthly));
    Running<std::optional<QString>> restore(m_store->restorePurchases());
    Running<> load(m_store->loadProducts());
    Running<> refresh(m_store->refreshPurchasedProducts());
    settleEvents();
    m_store.reset();
    appStore().release();
    EXPECT_EQ(purchase.result(), std::nullopt);
    EXPECT_EQ(restore.result(), std::nullopt);
    load.result();
    refresh.result();
}

TEST_F(SubscriptionStoreTest, aStoppedPurchaseAndAStoppedRestoreAreSilent)
{
    loadProducts();
    appStore().held = {text("purchase"), text("sync")};
    std::stop_source source;
    Running<std::optional<QString>> purchase(m_store->purchase(monthly, {}, source.get_token()));
    Running<std::optional<QString>> restore(m_store->restorePurchases(source.get_token()));
    settleEvents();
    source.request_stop();
    EXPECT_EQ(purchase.result(), std::nullopt);
    EXPECT_EQ(restore.result(), std::nullopt);
    EXPECT_FALSE(m_store->errorMessage());
    EXPECT_FALSE(m_store->statusMessage());
    EXPECT_FALSE(m_store->purchaseInProgressProductID());
    EXPECT_FALSE(m_store->isRestoringPurchases());
}

} // namespace
} // namespace tarnwik::test
