#include "async/Clock.h"

#include "support/EventLoop.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>

#include <chrono>
#include <string>

namespace tarnwik::async {

namespace {

using namespace std::chrono_literals;

TEST(Sleep, lastsUntilItsTimeHasPassed)
{
    test::ManualClock clock;
    test::Running<> sleeper(sleep(clock, 5s, {}));
    clock.advance(5s - 1ns);
    test::settleEvents();
    EXPECT_FALSE(sleeper.hasEnded());

    clock.advance(1ns);
    EXPECT_NO_THROW(sleeper.result());
}

TEST(Sleep, ofNoTimeStillLetsTheEventLoopComeRound)
{
    test::ManualClock clock;
    test::Running<> sleeper(sleep(clock, 0s, {}));
    EXPECT_FALSE(sleeper.hasEnded());
    clock.advance(0s);
    EXPECT_NO_THROW(sleeper.result());
}

TEST(Sleep, endsAtOnceWhenItIsStopped)
{
    test::ManualClock clock;
    std::stop_source source;
    test::Running<> sleeper(sleep(clock, 5s, source.get_token()));
    source.request_stop();
    EXPECT_THROW(sleeper.result(), Cancelled);
    EXPECT_EQ(clock.pendingCount(), 0);
}

TEST(Sleep, stoppedBeforeItBeginsDoesNotLast)
{
    test::ManualClock clock;
    std::stop_source source;
    source.request_stop();
    EXPECT_THROW(test::run(sleep(clock, 5s, source.get_token())), Cancelled);
}

TEST(Sleep, stoppedAsItEndsIsStopped)
{
    test::ManualClock clock;
    std::stop_source source;
    test::Running<> sleeper(sleep(clock, 5s, source.get_token()));
    clock.advance(5s);
    source.request_stop();
    EXPECT_THROW(sleeper.result(), Cancelled);
}

TEST(Yield, letsTheEventLoopComeRoundOnce)
{
    test::Running<> waiter(yield());
    EXPECT_FALSE(waiter.hasEnded());
    EXPECT_NO_THROW(waiter.result());
}

TEST(Yield, stoppedMeanwhileIsStopped)
{
    std::stop_source source;
    test::Running<> waiter(yield(source.get_token()));
    source.request_stop();
    EXPECT_THROW(waiter.result(), Cancelled);
}

TEST(SystemClock, goesForwards)
{
    const SystemClock clock;
    const auto before = clock.now();
    EXPECT_GE(clock.now(), before);
}

TEST(SystemClock, callsFromTheEventLoopAndNeverEarly)
{
    SystemClock clock;
    QObject context;
    const auto start = clock.now();
    std::optional<std::chrono::nanoseconds> called;
    clock.after(3ms, &context, [&] { called = clock.now(); });
    EXPECT_FALSE(called);
    ASSERT_TRUE(test::spinUntil([&] { return called.has_value(); }));
    EXPECT_GE(*called - start, 3ms);
}

TEST(SystemClock, aDelayThatHasPassedMeansAtOnce)
{
    SystemClock clock;
    QObject context;
    bool wasCalled = false;
    clock.after(-5s, &context, [&] { wasCalled = true; });
    EXPECT_FALSE(wasCalled);
    EXPECT_TRUE(test::spinUntil([&] { return wasCalled; }));
}

TEST(SystemClock, leavesNoTimerBehindWhenItsContextEnds)
{
    SystemClock clock;
    bool wasCalled = false;
    {
        QObject context;
        clock.after(10ms, &context, [&] { wasCalled = true; });
    }
    // The next thing that wakes the event loop is a timer of the test's own.
    bool isOver = false;
    QTimer::singleShot(40ms, Qt::PreciseTimer, [&] { isOver = true; });
    auto *dispatcher = QAbstractEventDispatcher::instance();
    int wakeUps = 0;
    QObject::connect(dispatcher, &QAbstractEventDispatcher::awake, dispatcher, [&] { ++wakeUps; });
    test::settleEvents();
    wakeUps = 0;
    while (!isOver)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QObject::disconnect(dispatcher, &QAbstractEventDispatcher::awake, dispatcher, nullptr);
    EXPECT_FALSE(wasCalled);
    EXPECT_LE(wakeUps, 2);
}

TEST(SystemClock, leavesNoTimerBehindWhenItHasCalled)
{
    SystemClock clock;
    QObject context;
    bool wasCalled = false;
    clock.after(0s, &context, [&] { wasCalled = true; });
    ASSERT_TRUE(test::spinUntil([&] { return wasCalled; }));
    test::settleEvents();
    EXPECT_TRUE(context.children().isEmpty());
}

TEST(ManualClock, callsInTheOrderOfTheTimes)
{
    test::ManualClock clock;
    QObject context;
    std::string calls;
    clock.after(2s, &context, [&] { calls += 'b'; });
    clock.after(1s, &context, [&] {
        calls += 'a';
        clock.after(2s, &context, [&] { calls += 'c'; });
    });
    EXPECT_EQ(clock.nextDelay(), 1s);
    clock.advance(5s);
    EXPECT_EQ(calls, "abc");
    EXPECT_EQ(clock.now(), 5s);
}

TEST(ManualClock, forgetsCallsWhoseContextIsGone)
{
    test::ManualClock clock;
    bool wasCalled = false;
    {
        QObject context;
        clock.after(1s, &context, [&] { wasCalled = true; });
        EXPECT_EQ(clock.pendingCount(), 1);
    }
    EXPECT_EQ(clock.pendingCount(), 0);
    EXPECT_EQ(clock.nextDelay(), std::nullopt);
    clock.advance(2s);
    EXPECT_FALSE(wasCalled);
}

} // namespace

} // namespace tarnwik::async
