#include "ui/model/SubscriptionsFacade.h"
#include "UIModelFixture.h"

#include <QAbstractItemModelTester>

namespace tarnwik::test {

namespace {

constexpr int monthlyRow = 0;
constexpr int yearlyRow = 1;

class SubscriptionsFacadeTest : public UIModelTest
{
protected:
    SubscriptionsFacadeTest()
    {
        m_answers.insert(m_postTransaction, {200, sampleJSON<SubscriptionResponse>()});
        appStore().offered = {{text("tarnwik.sub.monthly"), text("€15")}, {text("tarnwik.sub.yearly"), text("€120")}};
        m_facade = std::make_unique<SubscriptionsFacade>(&model(), &m_store);
    }

    FakeAppStore &appStore() { return *m_platform.appStore; }

    QVariant value(int row, PlanListModel::Role role) const
    {
        return m_facade->plans()->data(m_facade->plans()->index(row), role);
    }
    bool isUnavailable(int row) const { return value(row, PlanListModel::IsUnavailableRole).toBool(); }
    bool isPurchasing(int row) const { return value(row, PlanListModel::IsPurchasingRole).toBool(); }
    bool isActive(int row) const { return value(row, PlanListModel::IsActiveRole).toBool(); }
    QString priceLine(int row) const { return value(row, PlanListModel::PriceLineRole).toString(); }

    void userBuys(const char *productID)
    {
        appStore().nextPurchase.outcome = PurchaseOutcome::Success;
        appStore().nextPurchase.verification = verified(productID, "signed.trans.action");
        appStore().entitlements = {verified(productID, "signed.trans.action")};
    }

    const QString m_postTransaction = text("POST /api/customer/v1/subscription/apple/transactions");
    AppStoreSubscriptionStore m_store;
    std::unique_ptr<SubscriptionsFacade> m_facade;
};

} // namespace

TEST_F(SubscriptionsFacadeTest, hasARowForEachPlanInItsOrder)
{
    const QAbstractItemModelTester tester(m_facade->plans(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(m_facade->plans()->property("count"), 2);
    EXPECT_EQ(value(monthlyRow, PlanListModel::TitleRole), text("Monthly"));
    EXPECT_EQ(value(yearlyRow, PlanListModel::TitleRole), text("Yearly"));
    const QHash<int, QByteArray> names = m_facade->plans()->roleNames();
    EXPECT_EQ(QSet<QByteArray>(names.begin(), names.end()),
              QSet<QByteArray>({"title", "priceLine", "isActive", "isPurchasing", "isUnavailable"}));
}

TEST_F(SubscriptionsFacadeTest, showsTheFallbackPriceUntilTheProductIsLoaded)
{
    EXPECT_EQ(priceLine(monthlyRow), text("$14.99/month"));
    EXPECT_EQ(priceLine(yearlyRow), text("$119.00/year · $9.99/month"));
    run(m_store.loadProducts());
    EXPECT_EQ(priceLine(monthlyRow), text("€15/month"));
    EXPECT_EQ(priceLine(yearlyRow), text("€120/year · $9.99/month"));
}

TEST_F(SubscriptionsFacadeTest, callsNoPlanUnavailableWhileProductsAreLoading)
{
    EXPECT_TRUE(isUnavailable(monthlyRow));
    appStore().held = {text("products")};
    Running loading(m_store.loadProducts());
    EXPECT_TRUE(m_store.isLoadingProducts());
    EXPECT_FALSE(isUnavailable(monthlyRow));
    EXPECT_FALSE(isUnavailable(yearlyRow));
    appStore().offered.removeLast();
    appStore().release();
    loading.result();
    EXPECT_FALSE(isUnavailable(monthlyRow));
    EXPECT_TRUE(isUnavailable(yearlyRow)) << "the store does not know it";
}

TEST_F(SubscriptionsFacadeTest, callsPlansUnavailableWhenTheLoadingFailed)
{
    appStore().failures.insert(text("products"), text("No connection to the store."));
    const QSignalSpy errors(m_facade.get(), &SubscriptionsFacade::errorMessageChanged);
    run(m_store.loadProducts());
    EXPECT_TRUE(isUnavailable(monthlyRow));
    EXPECT_TRUE(isUnavailable(yearlyRow));
    EXPECT_EQ(m_facade->errorMessage(), text("No connection to the store."));
    EXPECT_EQ(errors.count(), 1);
    EXPECT_FALSE(m_facade->statusMessage().isValid());
}

TEST_F(SubscriptionsFacadeTest, marksTheRowThatIsBeingBoughtAlone)
{
    run(m_store.loadProducts());
    EXPECT_FALSE(isPurchasing(monthlyRow));
    appStore().held = {text("purchase")};
    userBuys("tarnwik.sub.yearly");
    const QSignalSpy changes(m_facade->plans(), &QAbstractItemModel::dataChanged);
    m_facade->purchase(yearlyRow);
    EXPECT_TRUE(isPurchasing(yearlyRow)) << "at once: it must not be bought twice";
    EXPECT_FALSE(isPurchasing(monthlyRow));
    ASSERT_EQ(changes.count(), 1);
    EXPECT_EQ(changes.first().first().toModelIndex().row(), yearlyRow);
    appStore().release();
    ASSERT_TRUE(spinUntil([&] { return !isPurchasing(yearlyRow); }));
    EXPECT_TRUE(isActive(yearlyRow));
    EXPECT_FALSE(isActive(monthlyRow));
}

TEST_F(SubscriptionsFacadeTest, takesAPurchaseThroughTheServiceToTheAccount)
{
    run(m_store.loadProducts());
    userBuys("tarnwik.sub.monthly");
    const QSignalSpy active(m_facade.get(), &SubscriptionsFacade::hasActiveSubscriptionChanged);
    m_facade->purchase(monthlyRow);
    ASSERT_TRUE(spinUntil([&] { return requests().contains(m_getAccount); }));
    settleEvents();
    EXPECT_EQ(requests(), QStringList({m_postTransaction, m_getAccount}));
    EXPECT_TRUE(m_facade->hasActiveSubscription());
    EXPECT_EQ(active.count(), 1);
    EXPECT_EQ(m_facade->statusMessage(), text("Monthly subscription is active."));
    EXPECT_TRUE(model().account());
}

TEST_F(SubscriptionsFacadeTest, showsNowhereWhatTheServiceSaysToAPurchase)
{
    run(m_store.loadProducts());
    userBuys("tarnwik.sub.monthly");
    m_answers[m_postTransaction] = {422, R"({"error":"invalid_transaction"})"};
    m_answers[m_getAccount] = {500, {}};
    m_facade->purchase(monthlyRow);
    ASSERT_TRUE(spinUntil([&] { return requests().contains(m_getAccount); }));
    settleEvents();
    EXPECT_FALSE(m_facade->errorMessage().isValid());
    EXPECT_FALSE(model().errorMessage());
}

TEST_F(SubscriptionsFacadeTest, asksTheServiceNothingWhenTheUserDidNotBuy)
{
    run(m_store.loadProducts());
    appStore().nextPurchase.outcome = PurchaseOutcome::Pending;
    m_facade->purchase(monthlyRow);
    ASSERT_TRUE(spinUntil([&] { return m_facade->statusMessage().isValid(); }));
    settleEvents();
    EXPECT_EQ(m_facade->statusMessage(), text("Purchase is pending approval."));
    EXPECT_TRUE(requests().isEmpty());
    EXPECT_FALSE(m_facade->hasActiveSubscription());
}

TEST_F(SubscriptionsFacadeTest, ignoresAPlanThatIsNotThere)
{
    run(m_store.loadProducts());
    appStore().operations.clear();
    m_facade->purchase(-1);
    m_facade->purchase(2);
    settleEvents();
    EXPECT_TRUE(appStore().operations.isEmpty());
}

TEST_F(SubscriptionsFacadeTest, restoresPurchases)
{
    userBuys("tarnwik.sub.yearly");
    const QSignalSpy progress(m_facade.get(), &SubscriptionsFacade::isRestoringPurchasesChanged);
    m_facade->restorePurchases();
    EXPECT_TRUE(m_facade->isRestoringPurchases());
    ASSERT_TRUE(spinUntil([&] { return requests().contains(m_getAccount); }));
    settleEvents();
    EXPECT_FALSE(m_facade->isRestoringPurchases());
    EXPECT_EQ(progress.count(), 2);
    EXPECT_EQ(m_facade->statusMessage(), text("Purchases restored."));
    EXPECT_TRUE(isActive(yearlyRow));
    EXPECT_EQ(requests(), QStringList({m_postTransaction, m_getAccount}));
}

TEST_F(SubscriptionsFacadeTest, tellsOfAnActiveSubscriptionOnce)
{
    appStore().entitlements = {verified("tarnwik.sub.monthly", "a.b.c")};
    run(m_store.refreshPurchasedProducts());
    const QSignalSpy active(m_facade.get(), &SubscriptionsFacade::hasActiveSubscriptionChanged);
    appStore().entitlements.push_back(verified("tarnwik.sub.yearly", "d.e.f"));
    run(m_store.refreshPurchasedProducts());
    EXPECT_EQ(active.count(), 0) << "there was one already";
    appStore().entitlements.clear();
    run(m_store.refreshPurchasedProducts());
    EXPECT_EQ(active.count(), 1);
    EXPECT_FALSE(m_facade->hasActiveSubscription());
}

TEST_F(SubscriptionsFacadeTest, leavesAPurchaseRunningWhenItGoes)
{
    run(m_store.loadProducts());
    appStore().held = {text("purchase")};
    userBuys("tarnwik.sub.monthly");
    m_facade->purchase(monthlyRow);
    m_facade.reset();
    appStore().release();
    EXPECT_TRUE(spinUntil([&] { return requests().contains(m_getAccount); }));
    settleEvents();
    EXPECT_TRUE(m_store.hasActiveSubscription());
}

} // namespace tarnwik::test
