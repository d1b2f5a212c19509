#include "platform/macos/Reply.h"

#include "support/EventLoop.h"

#include <gtest/gtest.h>

#include <thread>

namespace tarnwik::test {

namespace {

TEST(Reply, comesFromAnotherThreadAndGoesOnOnThisOne)
{
    const Reply<int> reply;
    QThread *resumedOn = nullptr;
    const auto wait = [](Reply<int> reply, QThread *&thread) -> Task<int> {
        const int value = co_await reply.value();
        thread = QThread::currentThread();
        co_return value;
    };
    Running<int> waiting(wait(reply, resumedOn));
    std::thread([handler = reply.handler()] { handler(7); }).join();
    EXPECT_FALSE(waiting.hasEnded()) << "it goes on from the event loop only";
    EXPECT_EQ(waiting.result(), 7);
    EXPECT_EQ(resumedOn, QThread::currentThread());
}

TEST(Reply, mayComeBeforeItIsAwaited)
{
    const Reply<int> reply;
    reply.handler()(7);
    EXPECT_EQ(run(reply.value()), 7);
}

TEST(Reply, theFirstOneCounts)
{
    const Reply<int> reply;
    const auto handler = reply.handler();
    handler(1);
    handler(2);
    reply.handler()(3);
    EXPECT_EQ(run(reply.value()), 1);
}

TEST(Reply, comesToNobodyWhenTheWaiterHasGone)
{
    std::function<void(std::shared_ptr<int>)> handler;
    {
        const Reply<std::shared_ptr<int>> reply;
        handler = reply.handler();
    }
    auto value = std::make_shared<int>(7);
    std::thread([handler = std::exchange(handler, nullptr), value] { handler(value); }).join();
    settleEvents();
    // What was answered is let go of, on the thread that it was meant for.
    EXPECT_TRUE(spinUntil([&] { return value.use_count() == 1; }));
}

TEST(Reply, manyThreadsMayAnswerAtOnce)
{
    for (int round = 0; round < 50; ++round) {
        const Reply<int> reply;
        std::vector<std::thread> threads;
        for (int number = 0; number < 4; ++number)
            threads.emplace_back([handler = reply.handler(), number] { handler(number); });
        const int value = run(reply.value());
        EXPECT_TRUE(value >= 0 && value < 4);
        for (std::thread &thread : threads)
            thread.join();
    }
    settleEvents(); // What a thread let go of last ends here.
}

} // namespace

} // namespace tarnwik::test
