#include "support/StoreKitStandIn.h"

#include <algorithm>
#include <atomic>
#include <cassert>
#include <chrono>
#include <utility>

namespace tarnwik::test {

namespace {

std::atomic<StoreKitStandIn *> current = nullptr;

StoreKitStandIn &standIn()
{
    assert(current);
    return *current;
}

/// Hands \a json out in memory that is spoiled and gone after the call: nobody may keep a pointer into it.
template<typename Function>
void handOut(Function function, void *context, const std::string &json)
{
    auto copy = std::make_unique<std::string>(json);
    function(context, copy->c_str());
    std::fill(copy->begin(), copy->end(), '#');
}

} // namespace

StoreKitStandIn::StoreKitStandIn()
{
    assert(!current);
    current = this;
}

StoreKitStandIn::~StoreKitStandIn()
{
    release();
    waitForReplies();
    current = nullptr;
}

void StoreKitStandIn::answer(const std::string &kind, const std::string &json, ReplyWay way)
{
    const std::scoped_lock lock(m_mutex);
    m_answers[kind] = Answer{json, way};
}

void StoreKitStandIn::release()
{
    const std::scoped_lock lock(m_mutex);
    ++m_releases;
    m_released.notify_all();
}

void StoreKitStandIn::waitForReplies()
{
    std::unique_lock lock(m_mutex);
    auto threads = std::exchange(m_threads, {});
    lock.unlock();
    for (std::thread &thread : threads)
        thread.join();
}

void StoreKitStandIn::report(const std::string &json)
{
    std::unique_lock lock(m_mutex);
    const auto listeners = m_listeners;
    lock.unlock();
    for (const auto &listener : listeners) {
        const std::scoped_lock reporting(listener->mutex);
        if (!listener->isStopped)
            handOut(listener->event, listener->context, json);
    }
}

std::vector<std::string> StoreKitStandIn::calls() const
{
    const std::scoped_lock lock(m_mutex);
    return m_calls;
}

std::size_t StoreKitStandIn::listenerCount() const
{
    const std::scoped_lock lock(m_mutex);
    return m_listeners.size();
}

void StoreKitStandIn::ask(const std::string &call, void *context, store_reply reply)
{
    std::unique_lock lock(m_mutex);
    m_calls.push_back(call);
    const Answer answer = m_answers[call.substr(0, call.find(' '))];
    if (answer.way == ReplyWay::AtOnce) {
        lock.unlock();
        handOut(reply, context, answer.json);
        return;
    }
    m_threads.emplace_back([this, answer, context, reply, releases = m_releases] {
        if (answer.way == ReplyWay::Delayed)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        if (answer.way == ReplyWay::Held) {
            std::unique_lock waiting(m_mutex);
            m_released.wait(waiting, [&] { return m_releases > releases; });
        }
        handOut(reply, context, answer.json);
    });
}

void *StoreKitStandIn::startUpdates(void *context, store_event event)
{
    const auto listener = std::make_shared<Listener>();
    listener->context = context;
    listener->event = event;
    const std::scoped_lock lock(m_mutex);
    m_calls.emplace_back("updates");
    m_listeners.push_back(listener);
    return listener.get();
}

void StoreKitStandIn::stopUpdates(void *handle)
{
    std::unique_lock lock(m_mutex);
    m_calls.emplace_back("stop");
    const auto found = std::find_if(m_listeners.begin(), m_listeners.end(),
                                    [handle](const auto &listener) { return listener.get() == handle; });
    assert(found != m_listeners.end());
    const auto listener = std::move(*found);
    m_listeners.erase(found);
    lock.unlock();
    const std::scoped_lock reporting(listener->mutex);
    listener->isStopped = true;
}

} // namespace tarnwik::test

using tarnwik::test::standIn;

void store_products(const char *const *ids, size_t count, void *context, store_reply reply)
{
    std::string call = "products";
    for (std::size_t index = 0; index < count; ++index)
        call.append(" ").append(ids[index]);
    standIn().ask(call, context, reply);
}

void store_purchase(const char *product_id, const char *account_uuid, void *context, store_reply reply)
{
    const std::string account = account_uuid ? account_uuid : "nobody";
    standIn().ask(std::string("purchase ") + product_id + ' ' + account, context, reply);
}

void store_entitlements(void *context, store_reply reply)
{
    standIn().ask("entitlements", context, reply);
}

void *store_updates_start(void *context, store_event event)
{
    return standIn().startUpdates(context, event);
}

void store_updates_stop(void *handle)
{
    standIn().stopUpdates(handle);
}

void store_finish(uint64_t transaction_id, void *context, store_reply reply)
{
    standIn().ask("finish " + std::to_string(transaction_id), context, reply);
}

void store_sync(void *context, store_reply reply)
{
    standIn().ask("sync", context, reply);
}
