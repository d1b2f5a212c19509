#include "async/Gate.h"

#include "support/EventLoop.h"

#include <gtest/gtest.h>

#include <QTimer>

#include <memory>
#include <thread>

namespace tarnwik::async {

namespace {

/// Waits at a gate that the test holds too.
Task<> passThrough(std::shared_ptr<Gate> gate, std::stop_token token)
{
    co_await gate->wait(token);
}

class GateTest : public testing::Test
{
protected:
    test::Running<> start() { return test::Running<>(passThrough(m_gate, m_source.get_token())); }

    std::shared_ptr<Gate> m_gate = std::make_shared<Gate>();
    std::stop_source m_source;
};

TEST_F(GateTest, waitsUntilItIsOpened)
{
    auto waiter = start();
    test::settleEvents();
    EXPECT_FALSE(waiter.hasEnded());

    m_gate->open();
    EXPECT_NO_THROW(waiter.result());
}

TEST_F(GateTest, openedBeforeTheWaitLetsThrough)
{
    m_gate->open();
    auto waiter = start();
    EXPECT_NO_THROW(waiter.result());
}

TEST_F(GateTest, openedTwiceLetsThroughOnce)
{
    auto waiter = start();
    m_gate->open();
    m_gate->open();
    EXPECT_NO_THROW(waiter.result());
    test::settleEvents();
}

TEST_F(GateTest, openingResumesFromTheEventLoopOnly)
{
    auto waiter = start();
    m_gate->open();
    EXPECT_FALSE(waiter.hasEnded());
    waiter.result();
}

TEST_F(GateTest, evenAnOpenGateLetsTheEventLoopComeRoundFirst)
{
    m_gate->open();
    auto waiter = start();
    EXPECT_FALSE(waiter.hasEnded());
    waiter.result();
}

TEST_F(GateTest, stoppingEndsTheWait)
{
    auto waiter = start();
    m_source.request_stop();
    EXPECT_THROW(waiter.result(), Cancelled);
}

TEST_F(GateTest, stoppingResumesFromTheEventLoopOnly)
{
    auto waiter = start();
    m_source.request_stop();
    EXPECT_FALSE(waiter.hasEnded());
    EXPECT_THROW(waiter.result(), Cancelled);
}

TEST_F(GateTest, stoppedBeforeTheWaitDoesNotWait)
{
    m_source.request_stop();
    auto waiter = start();
    EXPECT_FALSE(waiter.hasEnded());
    EXPECT_THROW(waiter.result(), Cancelled);
}

TEST_F(GateTest, stoppingAfterTheWaitChangesNothing)
{
    auto waiter = start();
    m_gate->open();
    EXPECT_NO_THROW(waiter.result());
    m_source.request_stop();
    test::settleEvents();
}

TEST_F(GateTest, whatWasDoneCountsThoughItWasStoppedMeanwhile)
{
    auto waiter = start();
    m_gate->open();
    m_source.request_stop();
    EXPECT_NO_THROW(waiter.result());
}

TEST_F(GateTest, canBeOpenedFromAnotherThread)
{
    auto waiter = start();
    std::thread([gate = m_gate] { gate->open(); }).join();
    EXPECT_FALSE(waiter.hasEnded());
    EXPECT_NO_THROW(waiter.result());
}

TEST_F(GateTest, canBeStoppedFromAnotherThread)
{
    auto waiter = start();
    std::thread([this] { m_source.request_stop(); }).join();
    EXPECT_FALSE(waiter.hasEnded());
    EXPECT_THROW(waiter.result(), Cancelled);
}

TEST_F(GateTest, theEventLoopTurnsWhileItWaits)
{
    auto waiter = start();
    bool hasTurned = false;
    QTimer::singleShot(0, [&] { hasTurned = true; });
    test::settleEvents();
    EXPECT_TRUE(hasTurned);
    EXPECT_FALSE(waiter.hasEnded());
    m_gate->open();
    waiter.result();
}

TEST_F(GateTest, outlivesWhatWouldHaveOpenedIt)
{
    auto timer = std::make_unique<QTimer>();
    QObject::connect(timer.get(), &QTimer::timeout, m_gate.get(), [gate = m_gate.get()] { gate->open(); });
    auto waiter = start();
    timer->start(0);
    timer.reset();
    test::settleEvents();
    EXPECT_FALSE(waiter.hasEnded());

    // Only the token is left to end this wait.
    m_source.request_stop();
    EXPECT_THROW(waiter.result(), Cancelled);
}

TEST_F(GateTest, theOpenerMayBeDestroyedByWhatTheWaiterDoesNext)
{
    auto timer = std::make_unique<QTimer>();
    QObject::connect(timer.get(), &QTimer::timeout, m_gate.get(), [gate = m_gate.get()] { gate->open(); });
    timer->start(0);
    const auto destroyAfterwards = [](std::shared_ptr<Gate> gate, std::unique_ptr<QTimer> opener,
                                      std::stop_token token) -> Task<> {
        co_await gate->wait(token);
        opener.reset();
    };
    EXPECT_NO_THROW(test::run(destroyAfterwards(m_gate, std::move(timer), m_source.get_token())));
}

TEST_F(GateTest, itsConnectionsEndWithIt)
{
    QTimer timer;
    int openings = 0;
    const auto waitOnce = [](QTimer *opener, int *count) -> Task<> {
        Gate gate;
        QObject::connect(opener, &QTimer::timeout, &gate, [&gate, count] {
            ++*count;
            gate.open();
        });
        co_await gate.wait();
    };
    auto waiter = test::Running<>(waitOnce(&timer, &openings));
    timer.start(0);
    waiter.result();
    const int openingsMeanwhile = openings;
    test::settleEvents();
    EXPECT_EQ(openings, openingsMeanwhile);
}

} // namespace

} // namespace tarnwik::async
