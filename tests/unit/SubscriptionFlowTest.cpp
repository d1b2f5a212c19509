#include "core/SubscriptionFlow.h"
#include "core/FailureText.h"
#include "support/ModelFixture.h"

namespace tarnwik::test {

namespace {

class SubscriptionFlowTest : public ModelTest
{
protected:
    SubscriptionFlowTest()
    {
        storeSession();
        m_model = std::make_unique<AppModel>();
        m_answers.insert(m_postTransaction, {200, sampleJSON<SubscriptionResponse>()});
        FakeAppStore &appStore = *m_platform.appStore;
        appStore.offered = {{text("tarnwik.sub.monthly"), text("€15")}};
        appStore.nextPurchase.outcome = PurchaseOutcome::Success;
        appStore.nextPurchase.verification = verified("tarnwik.sub.monthly", "signed.trans.action");
        run(m_store.loadProducts());
    }

    SubscriptionFlow flow() { return {m_model.get(), &m_store}; }
    SubscriptionFlowResult buy() { return run(flow().purchase(AppStoreSubscriptionPlan::monthly)); }

    const QString m_postTransaction = text("POST /api/customer/v1/subscription/apple/transactions");
    std::unique_ptr<AppModel> m_model;
    AppStoreSubscriptionStore m_store;
};

TEST_F(SubscriptionFlowTest, postsThePurchaseAndThenFetchesTheAccount)
{
    const SubscriptionFlowResult result = buy();
    EXPECT_EQ(result.signedTransactionJWS, text("signed.trans.action"));
    EXPECT_FALSE(result.syncFailure);
    EXPECT_FALSE(result.refreshFailure);
    EXPECT_EQ(requests(), QStringList({m_postTransaction, m_getAccount}));
    EXPECT_TRUE(m_platform.httpSession->exchanges.front()->request.body->contains("\"signed.trans.action\""));
    EXPECT_TRUE(m_model->account());
}

TEST_F(SubscriptionFlowTest, passesNoAccountToken)
{
    buy();
    EXPECT_EQ(m_platform.appStore->purchaseOptions, QList<PurchaseOptions>{PurchaseOptions{}});
}

TEST_F(SubscriptionFlowTest, asksTheServiceNothingWhenNothingWasBought)
{
    for (const auto outcome : {PurchaseOutcome::UserCancelled, PurchaseOutcome::Pending, PurchaseOutcome::Unknown}) {
        m_platform.appStore->nextPurchase.outcome = outcome;
        EXPECT_FALSE(buy().signedTransactionJWS);
    }
    EXPECT_FALSE(run(flow().restorePurchases()).signedTransactionJWS);
    EXPECT_TRUE(requests().isEmpty());
}

TEST_F(SubscriptionFlowTest, fetchesTheAccountEvenIfTheServiceRefusesThePurchase)
{
    m_answers.insert(m_postTransaction, {422, R"({"error":"invalid_transaction"})"});
    const SubscriptionFlowResult result = buy();
    EXPECT_TRUE(result.signedTransactionJWS);
    ASSERT_TRUE(result.syncFailure);
    EXPECT_EQ(failureText(result.syncFailure), text("invalid transaction"));
    EXPECT_FALSE(result.refreshFailure);
    EXPECT_EQ(requests(), QStringList({m_postTransaction, m_getAccount}));
    EXPECT_FALSE(m_model->errorMessage()) << "it is shown on no screen";
    EXPECT_FALSE(m_model->isLoading());
}

TEST_F(SubscriptionFlowTest, tellsOfAFailedFetchOfTheAccount)
{
    m_answers.insert(m_getAccount, {500, {}});
    const SubscriptionFlowResult result = buy();
    EXPECT_FALSE(result.syncFailure);
    EXPECT_TRUE(result.refreshFailure);
    EXPECT_FALSE(m_model->errorMessage());
    EXPECT_TRUE(m_model->account()) << "what the sync answered stays";
}

TEST_F(SubscriptionFlowTest, takesARestoreTheSameWay)
{
    m_platform.appStore->entitlements = {verified("tarnwik.sub.yearly", "old.trans.action")};
    EXPECT_EQ(run(flow().restorePurchases()).signedTransactionJWS, text("old.trans.action"));
    EXPECT_EQ(requests(), QStringList({m_postTransaction, m_getAccount}));
    EXPECT_TRUE(m_platform.httpSession->exchanges.front()->request.body->contains("\"old.trans.action\""));
}

TEST_F(SubscriptionFlowTest, endsWithTheModel)
{
    m_platform.appStore->held = {text("purchase")};
    Running<SubscriptionFlowResult> purchase(flow().purchase(AppStoreSubscriptionPlan::monthly));
    settleEvents();
    m_model.reset();
    m_platform.appStore->release();
    EXPECT_TRUE(purchase.result().signedTransactionJWS);
    EXPECT_TRUE(requests().isEmpty());
}

TEST_F(SubscriptionFlowTest, stopsWithItsToken)
{
    m_answers.remove(m_postTransaction);
    m_answers.remove(m_getAccount);
    std::stop_source source;
    Running<SubscriptionFlowResult> purchase(flow().purchase(AppStoreSubscriptionPlan::monthly, source.get_token()));
    ASSERT_TRUE(spinUntil([&] { return m_platform.httpSession->isWaiting(m_postTransaction); }));
    source.request_stop();
    const SubscriptionFlowResult result = purchase.result();
    EXPECT_TRUE(result.syncFailure);
    EXPECT_TRUE(result.refreshFailure);
}

} // namespace
} // namespace tarnwik::test
