#pragma once

#include "platform/macos/storekit/StoreKitBridge.h"

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace tarnwik::test {

/// How the reply to a question comes.
enum class ReplyWay {
    /// Before the function that asked has returned.
    AtOnce,
    /// From a thread of the store's own.
    FromThread,
    /// From such a thread, some milliseconds later.
    Delayed,
    /// From such a thread, once the test releases it.
    Held,
};

/// The platform's store behind the functions of StoreKitBridge.h, played by the test. There is one at a time; it must
/// be gone before what it replies to. Free of Qt; may be used from any thread.
class StoreKitStandIn
{
public:
    StoreKitStandIn();

    /// Releases what is held and waits for all replies.
    ~StoreKitStandIn();

    StoreKitStandIn(const StoreKitStandIn &) = delete;
    StoreKitStandIn &operator=(const StoreKitStandIn &) = delete;

    /// Sets the reply to every later question of a kind: "products", "purchase", "entitlements", "finish", "sync". It is
    /// {} from a thread before.
    void answer(const std::string &kind, const std::string &json, ReplyWay way = ReplyWay::FromThread);

    /// Lets the replies that are held go, each from a thread of its own.
    void release();

    /// Waits until every reply that is under way has been given.
    void waitForReplies();

    /// Reports a transaction to every listener, from the calling thread.
    void report(const std::string &json);

    /// The calls so far: "products ID…", "purchase ID ACCOUNT", "entitlements", "updates", "stop", "finish ID", "sync".
    std::vector<std::string> calls() const;
    std::size_t listenerCount() const;

    // What the functions of the bridge do.
    void ask(const std::string &call, void *context, store_reply reply);
    void *startUpdates(void *context, store_event event);
    void stopUpdates(void *handle);

private:
    struct Answer
    {
        std::string json = "{}";
        ReplyWay way = ReplyWay::FromThread;
    };

    struct Listener
    {
        std::mutex mutex;
        bool isStopped = false;
        void *context = nullptr;
        store_event event = nullptr;
    };

    mutable std::mutex m_mutex;
    std::condition_variable m_released;
    std::vector<std::string> m_calls;
    std::map<std::string, Answer> m_answers;
    /// How often release() was called.
    int m_releases = 0;
    std::vector<std::shared_ptr<Listener>> m_listeners;
    std::vector<std::thread> m_threads;
};

} // namespace tarnwik::test
