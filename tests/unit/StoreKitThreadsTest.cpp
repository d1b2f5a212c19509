// What crosses from the store's threads to the one that asked: without Qt, and run under the thread sanitizer too.

#include "platform/macos/storekit/StoreKitListener.h"
#include "platform/macos/storekit/StoreKitQuestion.h"
#include "support/StoreKitStandIn.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <latch>

namespace tarnwik::test {

namespace {

using Watch = StoreKitMailbox::Watch;

std::shared_ptr<StoreKitMailbox> mailboxWithReply(const std::string &kind)
{
    const auto mailbox = std::make_shared<StoreKitMailbox>();
    askStoreKit(kind == "sync" ? &store_sync : &store_entitlements, mailbox);
    return mailbox;
}

/// A waiter without an event loop. What it is told lies in plain memory of its own, as a gate's state does.
class Waiter
{
public:
    explicit Waiter(StoreKitMailbox &mailbox)
        : m_watch(mailbox, [this] {
            const std::scoped_lock lock(m_mutex);
            ++m_times;
            m_told.notify_one();
        })
    {
    }

    int wait()
    {
        std::unique_lock lock(m_mutex);
        m_told.wait(lock, [this] { return m_times > 0; });
        return m_times;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_told;
    int m_times = 0;
    Watch m_watch;
};

TEST(StoreKitThreads, aReplyFromAnotherThreadIsToldAndTaken)
{
    for (const ReplyWay way : {ReplyWay::AtOnce, ReplyWay::FromThread, ReplyWay::Delayed}) {
        StoreKitStandIn store;
        store.answer("sync", "the reply", way);
        const auto mailbox = mailboxWithReply("sync");
        EXPECT_EQ(Waiter(*mailbox).wait(), 1);
        EXPECT_EQ(mailbox->take(), "the reply");
        EXPECT_EQ(mailbox->take(), std::nullopt);
    }
}

TEST(StoreKitThreads, aReplyAfterTheWaiterHasGoneIsDroppedWithItsBox)
{
    StoreKitStandIn store;
    store.answer("sync", "too late", ReplyWay::Held);
    std::weak_ptr<StoreKitMailbox> box;
    int times = 0;
    {
        const auto mailbox = mailboxWithReply("sync");
        box = mailbox;
        const Watch watch(*mailbox, [&times] { ++times; });
    }
    EXPECT_FALSE(box.expired()) << "the reply that is due has a share";
    store.release();
    store.waitForReplies();
    EXPECT_TRUE(box.expired());
    EXPECT_EQ(times, 0);
}

TEST(StoreKitThreads, aWatchIsToldOfOneLetterOnly)
{
    StoreKitMailbox mailbox;
    int times = 0;
    const Watch watch(mailbox, [&times] { ++times; });
    std::thread([&mailbox] {
        mailbox.put("one");
        mailbox.put("two");
    }).join();
    EXPECT_EQ(times, 1);
    EXPECT_EQ(mailbox.take(), "one");
    EXPECT_EQ(mailbox.take(), "two");
}

TEST(StoreKitThreads, lettersMayBeTakenWhileOthersAreLeft)
{
    constexpr int letterCount = 5000;
    StoreKitMailbox mailbox;
    std::thread writer([&mailbox] {
        for (int letter = 0; letter < letterCount; ++letter)
            mailbox.put(std::to_string(letter));
    });
    for (int letter = 0; letter < letterCount;) {
        if (const auto taken = mailbox.take())
            EXPECT_EQ(*taken, std::to_string(letter++));
    }
    writer.join();
}

TEST(StoreKitThreads, waitersMayGoWhileTheReplyComes)
{
    for (int round = 0; round < 200; ++round) {
        StoreKitStandIn store;
        const auto mailbox = mailboxWithReply("entitlements");
        auto told = std::make_unique<int>(0);
        {
            const Watch watch(*mailbox, [&told] { ++*told; });
            std::this_thread::yield();
        }
        // Nothing is told after the watch: this memory is the waiter's alone again.
        EXPECT_LE(*told, 1);
        told.reset();
        store.waitForReplies();
        EXPECT_EQ(mailbox->take(), "{}");
    }
}

TEST(StoreKitThreads, manyQuestionsAtOnceGetTheirReplies)
{
    StoreKitStandIn store;
    store.answer("sync", "held", ReplyWay::Held);
    std::vector<std::shared_ptr<StoreKitMailbox>> mailboxes;
    for (int question = 0; question < 100; ++question)
        mailboxes.push_back(mailboxWithReply(question % 2 == 0 ? "sync" : "entitlements"));
    store.release();
    for (const auto &mailbox : mailboxes)
        Waiter(*mailbox).wait();
    for (std::size_t question = 0; question < mailboxes.size(); ++question)
        EXPECT_EQ(mailboxes[question]->take(), question % 2 == 0 ? "held" : "{}");
}

TEST(StoreKitThreads, eventsOfEveryThreadArriveInTheirOrder)
{
    constexpr int threadCount = 4;
    constexpr int eventCount = 250;
    StoreKitStandIn store;
    const auto mailbox = std::make_shared<StoreKitMailbox>();
    const StoreKitListener listener(mailbox, {});
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&store, thread] {
            for (int event = 0; event < eventCount; ++event)
                store.report(std::to_string(thread * eventCount + event));
        });
    }
    std::array<int, threadCount> next{};
    for (int letter = 0; letter < threadCount * eventCount; ++letter) {
        Waiter(*mailbox).wait();
        const int event = std::stoi(mailbox->take().value());
        EXPECT_EQ(event % eventCount, next[std::size_t(event / eventCount)]++);
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(mailbox->take(), std::nullopt);
}

TEST(StoreKitThreads, noEventArrivesAfterTheTokenWasPulled)
{
    for (int round = 0; round < 50; ++round) {
        StoreKitStandIn store;
        const auto mailbox = std::make_shared<StoreKitMailbox>();
        std::stop_source source;
        const StoreKitListener listener(mailbox, source.get_token());
        std::thread reporter([&store] {
            for (int event = 0; event < 100; ++event)
                store.report("event");
        });
        source.request_stop();
        EXPECT_EQ(store.listenerCount(), 0U);
        while (mailbox->take()) { }
        reporter.join();
        EXPECT_EQ(mailbox->take(), std::nullopt);
    }
}

TEST(StoreKitThreads, aListenerThatEndsReleasesItsBoxWhileEventsCome)
{
    for (int round = 0; round < 50; ++round) {
        StoreKitStandIn store;
        auto mailbox = std::make_shared<StoreKitMailbox>();
        const std::weak_ptr<StoreKitMailbox> box = mailbox;
        auto listener = std::make_unique<StoreKitListener>(std::move(mailbox), std::stop_token());
        std::thread reporter([&store] {
            for (int event = 0; event < 100; ++event)
                store.report("event");
        });
        listener.reset();
        EXPECT_TRUE(box.expired());
        reporter.join();
    }
}

TEST(StoreKitThreads, aListenerIsStoppedOnceByTokenAndEndTogether)
{
    for (int round = 0; round < 200; ++round) {
        StoreKitStandIn store;
        std::stop_source source;
        auto listener = std::make_unique<StoreKitListener>(std::make_shared<StoreKitMailbox>(), source.get_token());
        std::latch start(2);
        std::thread stopper([&] {
            start.arrive_and_wait();
            source.request_stop();
        });
        start.arrive_and_wait();
        // Now this one is first, now the other.
        std::this_thread::sleep_for(std::chrono::microseconds(round / 2));
        listener.reset();
        stopper.join();
        EXPECT_EQ(store.calls(), (std::vector<std::string>{"updates", "stop"}));
    }
}

TEST(StoreKitThreads, aListenerWhoseTokenWasPulledBeforeHearsNothing)
{
    StoreKitStandIn store;
    std::stop_source source;
    source.request_stop();
    const auto mailbox = std::make_shared<StoreKitMailbox>();
    const StoreKitListener listener(mailbox, source.get_token());
    store.report("event");
    EXPECT_EQ(mailbox->take(), std::nullopt);
    EXPECT_EQ(store.calls(), (std::vector<std::string>{"updates", "stop"}));
}

} // namespace
} // namespace tarnwik::test
