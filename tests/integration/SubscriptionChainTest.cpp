// A purchase from the store to the account: the client's own parts over the embedded store, a real HTTP session and the
// real service process, which trusts that store's root.

#include "ServiceProcess.h"
#include "core/AppModel.h"
#include "core/FailureText.h"
#include "core/SubscriptionFlow.h"
#include "platform/embedded/store/EmbeddedAppStore.h"
#include "platform/embedded/store/EmbeddedStoreControl.h"
#include "platform/qt/QtHTTPSession.h"
#include "support/TestPlatform.h"

#include <QTemporaryDir>

namespace tarnwik::test {

namespace {

class SubscriptionChain : public testing::Test
{
protected:
    SubscriptionChain()
    {
        run(m_model.signIn(text("demo@tarnwik.example"), text("demo")));
        EXPECT_FALSE(m_model.errorMessage());
        run(m_store.loadProducts());
        EXPECT_FALSE(m_store.errorMessage());
        m_store.startObservingTransactions();
    }

    void TearDown() override { m_model.stopUsageRefreshLoop(); }

    static QString text(const char *utf8) { return QString::fromUtf8(utf8); }

    PlatformServices services()
    {
        PlatformServices services;
        services.clock = std::make_shared<async::SystemClock>();
        services.informationDictionary = m_standIns.informationDictionary;
        services.userDefaults = m_standIns.userDefaults;
        services.keychain = m_standIns.keychain;
        services.tunnelManager = m_standIns.tunnelManager;
        services.httpSession = std::make_shared<QtHTTPSession>(services.clock);
        services.appStore = embeddedAppStore(m_folder.filePath(text("store")), services.clock);
        m_standIns.informationDictionary->objects.insert(text("TarnwikDefaultServerURL"), m_service.waitForOrigin());
        return services;
    }

    SubscriptionFlow flow() { return {&m_model, &m_store}; }
    EmbeddedStoreControl control() { return EmbeddedStoreControl(m_folder.filePath(text("store"))); }

    QTemporaryDir m_folder;
    TestPlatform m_standIns;
    service::ServiceProcess m_service{{text("--store-root"), m_folder.filePath(text("store/root.pem"))}};
    ScopedPlatform m_platform{services()};
    AppModel m_model;
    AppStoreSubscriptionStore m_store;
};

TEST_F(SubscriptionChain, buysAndShowsTheNewPlanUntilTheStoreTakesItBack)
{
    const Account before = m_model.account().value();
    const SubscriptionFlowResult bought = run(flow().purchase(AppStoreSubscriptionPlan::monthly));
    ASSERT_TRUE(bought.signedTransactionJWS) << m_store.errorMessage().value_or(QString()).toStdString();
    ASSERT_FALSE(bought.syncFailure) << failureText(bought.syncFailure)->toStdString();
    ASSERT_FALSE(bought.refreshFailure);
    const Account after = m_model.account().value();
    EXPECT_NE(after.planGb, before.planGb);
    EXPECT_EQ(after.quotaBytes, after.planGb * 1'073'741'824);
    EXPECT_EQ(after.subscriptionStatus, text("active"));
    EXPECT_NE(after.subscriptionCurrentPeriodEnd, before.subscriptionCurrentPeriodEnd);
    EXPECT_TRUE(m_store.isActive(AppStoreSubscriptionPlan::monthly));
    EXPECT_EQ(m_store.statusMessage(), text("Monthly subscription is active."));

    control().revoke(text("tarnwik.sub.monthly"));
    EXPECT_TRUE(spinUntil([this] { return !m_store.hasActiveSubscription(); }));
    EXPECT_EQ(m_store.statusMessage(), text("App Store subscription updated."));
    const SubscriptionFlowResult restored = run(flow().restorePurchases());
    EXPECT_FALSE(restored.signedTransactionJWS);
    EXPECT_EQ(m_store.statusMessage(), text("No active App Store subscription was found."));
}

TEST_F(SubscriptionChain, bringsWhatWasBoughtElsewhereByARestore)
{
    const Account before = m_model.account().value();
    control().purchaseElsewhere(text("tarnwik.sub.yearly"));
    EXPECT_TRUE(spinUntil([this] { return m_store.isActive(AppStoreSubscriptionPlan::yearly); }));
    EXPECT_EQ(m_model.account()->planGb, before.planGb) << "an update that arrives tells the service nothing";

    const SubscriptionFlowResult restored = run(flow().restorePurchases());
    EXPECT_TRUE(restored.signedTransactionJWS);
    EXPECT_FALSE(restored.syncFailure);
    EXPECT_EQ(m_store.statusMessage(), text("Purchases restored."));
    EXPECT_NE(m_model.account()->planGb, before.planGb);
}

TEST_F(SubscriptionChain, leavesTheAccountAsItWasWhenTheServiceDoesNotTrustTheStore)
{
    const QString otherStore = m_folder.filePath(text("another store"));
    EmbeddedStoreControl(otherStore).purchaseElsewhere(text("tarnwik.sub.monthly"));
    service::ServiceProcess suspicious({text("--store-root"), otherStore + text("/root.pem")});
    m_model.setServerURLString(suspicious.waitForOrigin());
    run(m_model.signIn(text("demo@tarnwik.example"), text("demo")));
    const Account before = m_model.account().value();

    const SubscriptionFlowResult bought = run(flow().purchase(AppStoreSubscriptionPlan::monthly));
    EXPECT_TRUE(bought.signedTransactionJWS);
    ASSERT_TRUE(bought.syncFailure);
    EXPECT_EQ(failureText(bought.syncFailure), text("invalid transaction"));
    EXPECT_FALSE(bought.refreshFailure);
    EXPECT_EQ(m_model.account()->planGb, before.planGb);
    EXPECT_EQ(m_model.account()->subscriptionCurrentPeriodEnd, before.subscriptionCurrentPeriodEnd);
    EXPECT_TRUE(m_store.hasActiveSubscription()) << "what was bought stays bought";
    EXPECT_FALSE(m_model.errorMessage());
}

} // namespace
} // namespace tarnwik::test
