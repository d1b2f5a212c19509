// The platform's App Store through its port, with a stand-in for the platform's side.

#include "StoreKitFixture.h"

#include <QThread>

namespace tarnwik::test {

namespace {

class StoreKitAppStore : public StoreKitTest, public testing::WithParamInterface<ReplyWay>
{
};

/// Follows the updates of a store until it is stopped.
class Listener
{
public:
    explicit Listener(const std::shared_ptr<AppStore> &store)
        : m_running(follow(store, m_source.get_token(), &m_results))
    {
    }

    ~Listener()
    {
        stop();
        EXPECT_THROW(m_running.result(), async::Cancelled);
    }

    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;

    void stop() { m_source.request_stop(); }
    const QList<VerificationResult> &results() const { return m_results; }

    bool hears(qsizetype count) const
    {
        return spinUntil([&] { return m_results.size() >= count; }) && m_results.size() == count;
    }

private:
    static Task<> follow(std::shared_ptr<AppStore> store, std::stop_token token, QList<VerificationResult> *results)
    {
        auto updates = store->transactionUpdates(token);
        for (auto update = co_await updates.begin(); update != updates.end(); co_await ++update) {
            EXPECT_EQ(QThread::currentThread(), qApp->thread());
            results->append(*update);
        }
    }

    std::stop_source m_source;
    QList<VerificationResult> m_results;
    Running<> m_running;
};

INSTANTIATE_TEST_SUITE_P(HoweverTheReplyComes, StoreKitAppStore,
                         testing::Values(ReplyWay::AtOnce, ReplyWay::FromThread, ReplyWay::Delayed));

TEST_P(StoreKitAppStore, findsProducts)
{
    m_bridge.answer("products", R"({"products":[{"id":"b","displayPrice":"€119"},{"id":"a","displayPrice":"€15"}]})",
                    GetParam());
    const auto products =
        run(onMainThread(m_store->products({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("ü")}, {})));
    EXPECT_EQ(products,
              (QList<StoreProduct>{{QStringLiteral("b"), QStringLiteral("€119")},
                                   {QStringLiteral("a"), QStringLiteral("€15")}}));
    EXPECT_EQ(m_bridge.calls(), calls({"products a b ü"}));
}

TEST_P(StoreKitAppStore, buysForAnAccount)
{
    m_bridge.answer("purchase", bought, GetParam());
    PurchaseOptions options;
    options.appAccountToken = QUuid(QStringLiteral("{6F9619FF-8B86-D011-B42D-00CF4FC964FF}"));
    const PurchaseResult result = run(onMainThread(m_store->purchase(product, options, {})));
    EXPECT_EQ(result.outcome, PurchaseOutcome::Success);
    ASSERT_TRUE(result.verification);
    EXPECT_EQ(result.verification->transaction.id, 7U);
    run(m_store->purchase(product, {}, {}));
    EXPECT_EQ(m_bridge.calls(),
              calls({"purchase tarnwik.sub.monthly 6f9619ff-8b86-d011-b42d-00cf4fc964ff",
                     "purchase tarnwik.sub.monthly nobody"}));
}

TEST_P(StoreKitAppStore, readsEntitlementsFinishesAndSyncs)
{
    for (const char *kind : {"finish", "sync"})
        m_bridge.answer(kind, "{}", GetParam());
    m_bridge.answer("entitlements", entitled, GetParam());
    const auto entitlements = readEntitlements();
    ASSERT_EQ(entitlements.size(), 2);
    EXPECT_EQ(entitlements[0].transaction.id, 7U);
    EXPECT_TRUE(entitlements[1].verificationError);
    run(onMainThread(m_store->finish(entitlements[0].transaction)));
    run(onMainThread(m_store->sync({})));
    EXPECT_EQ(m_bridge.calls(), calls({"entitlements", "finish 7", "sync"}));
}

TEST_F(StoreKitTest, tellsBothKindsOfCancellation)
{
    m_bridge.answer("purchase", R"({"outcome":"cancelled"})");
    EXPECT_EQ(run(m_store->purchase(product, {}, {})).outcome, PurchaseOutcome::UserCancelled);
    const char *thrown = R"({"error":{"type":"StoreKitError","case":"userCancelled","message":"Request Cancelled"}})";
    m_bridge.answer("sync", thrown);
    EXPECT_THROW(run(m_store->sync({})), async::Cancelled);
    m_bridge.answer("purchase", thrown);
    EXPECT_THROW(run(m_store->purchase(product, {}, {})), async::Cancelled);
}

TEST_F(StoreKitTest, failuresOfThePlatformAreThrown)
{
    for (const char *kind : {"products", "purchase", "entitlements", "sync"})
        m_bridge.answer(kind, R"({"error":{"type":"StoreKitError","case":"networkError","message":"No network."}})");
    EXPECT_EQ(failure([&] { run(m_store->products({}, {})); }), QStringLiteral("No network."));
    EXPECT_EQ(failure([&] { run(m_store->purchase(product, {}, {})); }), QStringLiteral("No network."));
    EXPECT_EQ(failure([&] { readEntitlements(); }), QStringLiteral("No network."));
    EXPECT_EQ(failure([&] { run(m_store->sync({})); }), QStringLiteral("No network."));
}

TEST_F(StoreKitTest, repliesThatCannotBeReadAreFailures)
{
    for (const char *kind : {"products", "purchase", "entitlements", "sync"})
        m_bridge.answer(kind, "{\"broken");
    const QString unreadable = QStringLiteral("The App Store gave an answer that cannot be read.");
    EXPECT_EQ(failure([&] { run(m_store->products({}, {})); }), unreadable);
    EXPECT_EQ(failure([&] { run(m_store->purchase(product, {}, {})); }), unreadable);
    EXPECT_EQ(failure([&] { readEntitlements(); }), unreadable);
    EXPECT_EQ(failure([&] { run(m_store->sync({})); }), unreadable);
}

TEST_F(StoreKitTest, finishingNeverFails)
{
    for (const char *reply :
         {"nothing", R"({"error":{"type":"CancellationError","case":"cancelled","message":"-"}})"}) {
        m_bridge.answer("finish", reply);
        EXPECT_NO_THROW(run(m_store->finish({})));
    }
}

TEST_F(StoreKitTest, finishingIsAskedForAtOnce)
{
    Running<> finishing(m_store->finish({}));
    EXPECT_EQ(m_bridge.calls(), calls({"finish 0"}));
    finishing.result();
}

TEST_F(StoreKitTest, aWaiterThatIsStoppedLeavesTheReplyToNobody)
{
    for (const char *kind : {"products", "purchase", "entitlements", "sync"})
        m_bridge.answer(kind, bought, ReplyWay::Held);
    std::stop_source source;
    Running<QList<StoreProduct>> products(m_store->products({}, source.get_token()));
    Running<PurchaseResult> purchase(m_store->purchase(product, {}, source.get_token()));
    Running<QList<VerificationResult>> entitlements(collect(m_store, source.get_token()));
    Running<> sync(m_store->sync(source.get_token()));
    ASSERT_TRUE(spinUntil([&] { return m_bridge.calls().size() == 4; }));
    source.request_stop();
    EXPECT_FALSE(sync.hasEnded()) << "not from within request_stop()";
    EXPECT_THROW(products.result(), async::Cancelled);
    EXPECT_THROW(purchase.result(), async::Cancelled);
    EXPECT_THROW(entitlements.result(), async::Cancelled);
    EXPECT_THROW(sync.result(), async::Cancelled);
    m_store.reset();
    m_bridge.release();
    m_bridge.waitForReplies();
    settleEvents();
}

TEST_F(StoreKitTest, aWaiterThatIsStoppedBeforeItBeganAsksNothing)
{
    std::stop_source source;
    source.request_stop();
    EXPECT_THROW(run(m_store->purchase(product, {}, source.get_token())), async::Cancelled);
    EXPECT_THROW(run(collect(m_store, source.get_token())), async::Cancelled);
    EXPECT_TRUE(m_bridge.calls().empty());
}

TEST_F(StoreKitTest, aPurchaseThatWasMadeIsToldToAStoppedWaiterToo)
{
    m_bridge.answer("purchase", bought, ReplyWay::Held);
    std::stop_source source;
    Running<PurchaseResult> purchase(m_store->purchase(product, {}, source.get_token()));
    ASSERT_TRUE(spinUntil([&] { return m_bridge.calls().size() == 1; }));
    m_bridge.release();
    m_bridge.waitForReplies();
    // Comes round the loop with the reply, before the stop.
    QMetaObject::invokeMethod(qApp, [&] { source.request_stop(); }, Qt::QueuedConnection);
    EXPECT_EQ(purchase.result().outcome, PurchaseOutcome::Success);
}

TEST_F(StoreKitTest, stopsAndRepliesMayMeet)
{
    m_bridge.answer("sync", "{}");
    for (int round = 0; round < 200; ++round) {
        std::stop_source source;
        Running<> sync(m_store->sync(source.get_token()));
        spinUntil([&] { return m_bridge.calls().size() > std::size_t(round); });
        std::thread stopper;
        if (round % 2 == 0)
            source.request_stop();
        else
            stopper = std::thread([&source] { source.request_stop(); });
        try {
            sync.result();
        } catch (const async::Cancelled &) {
            // One of the two came first.
        }
        if (stopper.joinable())
            stopper.join();
    }
    m_bridge.waitForReplies();
    settleEvents();
}

TEST_F(StoreKitTest, reportsUpdatesAsTheyHappen)
{
    const Listener listener(m_store);
    ASSERT_TRUE(spinUntil([&] { return m_bridge.listenerCount() == 1; }));
    m_bridge.report(transaction(1));
    std::thread([&] { m_bridge.report(transaction(2)); }).join();
    ASSERT_TRUE(listener.hears(2));
    std::thread([&] { m_bridge.report("broken"); }).join();
    std::thread([&] { m_bridge.report(transaction(3)); }).join();
    ASSERT_TRUE(listener.hears(4));
    EXPECT_EQ(listener.results()[1].transaction.id, 2U);
    EXPECT_TRUE(listener.results()[2].verificationError);
    EXPECT_EQ(listener.results()[3].transaction.id, 3U);
}

TEST_F(StoreKitTest, losesNoneOfManyUpdates)
{
    const Listener one(m_store);
    const Listener other(m_store);
    ASSERT_TRUE(spinUntil([&] { return m_bridge.listenerCount() == 2; }));
    std::vector<std::thread> threads;
    for (quint64 thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            for (quint64 index = 0; index < 250; ++index)
                m_bridge.report(transaction(thread * 250 + index));
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    for (const Listener *listener : {&one, &other}) {
        ASSERT_TRUE(listener->hears(1000));
        QSet<quint64> seen;
        for (const VerificationResult &result : listener->results())
            seen.insert(result.transaction.id);
        EXPECT_EQ(seen.size(), 1000);
    }
}

TEST_F(StoreKitTest, aListenerEndsWithItsToken)
{
    Listener listener(m_store);
    ASSERT_TRUE(spinUntil([&] { return m_bridge.listenerCount() == 1; }));
    m_bridge.report(transaction(1));
    listener.stop();
    EXPECT_EQ(m_bridge.listenerCount(), 0U) << "at once, not with the next turn of the loop";
    m_bridge.report(transaction(2));
    settleEvents();
    EXPECT_TRUE(listener.results().isEmpty()) << "what was not delivered was not finished, and comes again";
    EXPECT_EQ(m_bridge.calls(), calls({"updates", "stop"}));
}

TEST_F(StoreKitTest, aListenerThatIsStoppedBeforeItBeganNeverListens)
{
    Listener listener(m_store);
    listener.stop();
    settleEvents();
    EXPECT_TRUE(m_bridge.calls().empty());
}

} // namespace
} // namespace tarnwik::test
