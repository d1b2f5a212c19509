#include "support/ModelFixture.h"

#include <QPointer>

namespace tarnwik::test {

namespace {

using namespace std::chrono_literals;

class UsageLoop : public ModelTest
{
protected:
    UsageLoop()
    {
        storeSession();
        m_model = std::make_unique<AppModel>();
    }

    void pass(std::chrono::nanoseconds duration)
    {
        m_platform.clock->advance(duration);
        settleEvents();
    }

    qsizetype fetches() const { return requests().size(); }

    std::unique_ptr<AppModel> m_model;
};

} // namespace

TEST_F(UsageLoop, sleepsFirstAndThenFetchesEveryTwentySeconds)
{
    m_model->startUsageRefreshLoop();
    pass(19'999'999'999ns);
    EXPECT_EQ(fetches(), 0);
    pass(1ns);
    EXPECT_EQ(requests(), QStringList({m_getAccount}));
    EXPECT_TRUE(m_model->account());
    pass(20s);
    pass(20s);
    EXPECT_EQ(fetches(), 3);
    EXPECT_FALSE(m_model->isLoading());
}

TEST_F(UsageLoop, waitsForAFetchBeforeItSleepsAgain)
{
    m_answers.remove(m_getAccount);
    m_model->startUsageRefreshLoop();
    pass(20s);
    pass(60s);
    EXPECT_EQ(fetches(), 1);
    m_platform.httpSession->waiting(m_getAccount).answer(200, sampleJSON<AccountResponse>());
    settleEvents();
    pass(19s);
    EXPECT_EQ(fetches(), 1);
    pass(1s);
    EXPECT_EQ(fetches(), 2);
}

TEST_F(UsageLoop, runsOnceHoweverOftenItIsStarted)
{
    m_model->startUsageRefreshLoop();
    m_model->startUsageRefreshLoop();
    EXPECT_EQ(m_platform.clock->pendingCount(), 1);
    pass(20s);
    EXPECT_EQ(fetches(), 1);
}

TEST_F(UsageLoop, doesNotStartWhileSignedOut)
{
    run(m_model->signOut());
    forgetRequests();
    m_model->startUsageRefreshLoop();
    EXPECT_EQ(m_platform.clock->pendingCount(), 0);
    run(m_model->signIn(text("e"), text("p")));
    forgetRequests();
    pass(20s);
    EXPECT_EQ(fetches(), 1);
}

TEST_F(UsageLoop, fetchesNothingOnceStopped)
{
    m_model->startUsageRefreshLoop();
    pass(10s);
    m_model->stopUsageRefreshLoop();
    settleEvents();
    EXPECT_EQ(m_platform.clock->pendingCount(), 0) << "the sleep was not interrupted";
    pass(60s);
    EXPECT_EQ(fetches(), 0);
}

TEST_F(UsageLoop, mayBeStoppedWithoutRunning)
{
    m_model->stopUsageRefreshLoop();
    m_model->stopUsageRefreshLoop();
    m_model->startUsageRefreshLoop();
    pass(20s);
    EXPECT_EQ(fetches(), 1);
}

TEST_F(UsageLoop, startsAnewAtOnceAfterAStop)
{
    m_model->startUsageRefreshLoop();
    pass(10s);
    m_model->stopUsageRefreshLoop();
    m_model->startUsageRefreshLoop();
    pass(19s);
    EXPECT_EQ(fetches(), 0);
    pass(1s);
    EXPECT_EQ(fetches(), 1);
    pass(20s);
    EXPECT_EQ(fetches(), 2) << "the stopped loop went on beside the new one";
}

TEST_F(UsageLoop, showsNoFailureAndGoesOn)
{
    m_answers[m_getNodes] = {500, {}};
    run(m_model->refreshFromUI());
    const auto message = m_model->errorMessage();
    ASSERT_TRUE(message);
    const auto account = m_model->account();
    forgetRequests();
    m_answers[m_getAccount] = {401, R"({"error":"session_expired"})"};
    m_model->startUsageRefreshLoop();
    pass(20s);
    EXPECT_EQ(fetches(), 1);
    EXPECT_EQ(m_model->errorMessage(), message);
    EXPECT_EQ(m_model->account(), account);
    EXPECT_TRUE(m_model->isSignedIn());
    pass(20s);
    EXPECT_EQ(fetches(), 2);
}

TEST_F(UsageLoop, endsWithTheSession)
{
    m_model->startUsageRefreshLoop();
    run(m_model->signOut());
    forgetRequests();
    pass(60s);
    EXPECT_EQ(fetches(), 0);
    EXPECT_EQ(m_platform.clock->pendingCount(), 0);
}

TEST_F(UsageLoop, endsItselfWhenItOutlivedItsSession)
{
    m_answers.remove(m_deleteSession);
    Running signOut(m_model->signOut());
    // Started after the sign-out stopped the loop, and before the session ended.
    m_model->startUsageRefreshLoop();
    m_platform.httpSession->waiting(m_deleteSession).answer(204);
    signOut.result();
    forgetRequests();
    EXPECT_EQ(m_platform.clock->pendingCount(), 1);
    pass(20s);
    EXPECT_EQ(fetches(), 0);
    EXPECT_EQ(m_platform.clock->pendingCount(), 0);
    run(m_model->signIn(text("e"), text("p")));
    EXPECT_EQ(m_platform.clock->pendingCount(), 1) << "the ended loop was taken for a running one";
}

TEST_F(UsageLoop, neverTouchesTheLoadingOfARefresh)
{
    m_model->startUsageRefreshLoop();
    m_answers.remove(m_getNodes);
    Running refresh(m_model->refreshFromUI());
    ASSERT_TRUE(spinUntil([&] { return m_platform.httpSession->isWaiting(m_getNodes); }));
    m_answers[m_getAccount] = {500, {}};
    pass(20s);
    EXPECT_EQ(requests().count(m_getAccount), 2);
    EXPECT_TRUE(m_model->isLoading());
    EXPECT_EQ(m_model->errorMessage(), std::nullopt);
    m_platform.httpSession->waiting(m_getNodes).answer(200, nodes({1}));
    refresh.result();
    EXPECT_FALSE(m_model->isLoading());
}

TEST_F(UsageLoop, endsWithTheModel)
{
    m_model->startUsageRefreshLoop();
    m_model.reset();
    settleEvents();
    EXPECT_EQ(m_platform.clock->pendingCount(), 0);
    pass(60s);
    EXPECT_EQ(fetches(), 0);
}

TEST_F(UsageLoop, doesNotKeepTheModelAlive)
{
    m_answers.remove(m_getAccount);
    m_model->startUsageRefreshLoop();
    pass(20s);
    const QPointer model(m_model.get());
    m_model.reset();
    EXPECT_TRUE(model.isNull());
    settleEvents();
    EXPECT_TRUE(m_platform.httpSession->exchanges.back()->token.stop_requested());
}

TEST_F(UsageLoop, stopsAFetchUnderWay)
{
    m_answers.remove(m_getAccount);
    m_model->startUsageRefreshLoop();
    pass(20s);
    m_model->stopUsageRefreshLoop();
    settleEvents();
    EXPECT_TRUE(m_platform.httpSession->exchanges.back()->token.stop_requested());
    EXPECT_EQ(m_platform.clock->pendingCount(), 0);
    EXPECT_EQ(m_model->account(), std::nullopt);
}

} // namespace tarnwik::test
