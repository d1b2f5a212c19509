#include "async/Abandonable.h"
#include "support/EventLoop.h"

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

/// What a task works on, and what becomes of it.
struct Work
{
    async::Gate gate;
    bool hasEnded = false;
};

Task<int> numberAfter(std::shared_ptr<Work> work)
{
    co_await work->gate.wait();
    work->hasEnded = true;
    co_return 7;
}

Task<> failureAfter(Work *work)
{
    co_await work->gate.wait();
    work->hasEnded = true;
    throw std::runtime_error("too late");
}

} // namespace

TEST(Abandonable, givesTheValue)
{
    const auto work = std::make_shared<Work>();
    Running running(async::abandonable(numberAfter(work), {}, work));
    work->gate.open();
    EXPECT_EQ(running.result(), 7);
}

TEST(Abandonable, passesTheFailureOn)
{
    const auto work = std::make_shared<Work>();
    Running running(async::abandonable(failureAfter(work.get()), {}, work));
    work->gate.open();
    EXPECT_THROW(running.result(), std::runtime_error);
}

TEST(Abandonable, letsTheTaskRunOnAlone)
{
    const auto work = std::make_shared<Work>();
    std::stop_source stop;
    Running running(async::abandonable(numberAfter(work), stop.get_token(), work));
    stop.request_stop();
    EXPECT_THROW(running.result(), async::Cancelled);
    EXPECT_FALSE(work->hasEnded);
    work->gate.open();
    EXPECT_TRUE(spinUntil([&] { return work->hasEnded; }));
}

TEST(Abandonable, keepsTheOwnerToTheEndAndDropsAFailureThatNobodyWaitsFor)
{
    auto work = std::make_shared<Work>();
    const std::weak_ptr observer = work;
    Work *bare = work.get();
    std::stop_source stop;
    Running running(async::abandonable(failureAfter(bare), stop.get_token(), std::move(work)));
    stop.request_stop();
    EXPECT_THROW(running.result(), async::Cancelled);
    ASSERT_FALSE(observer.expired());
    bare->gate.open();
    EXPECT_TRUE(spinUntil([&] { return observer.expired(); }));
}

} // namespace tarnwik::test
