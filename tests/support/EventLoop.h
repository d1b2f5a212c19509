#pragma once

#include "async/Task.h"

#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <variant>

namespace tarnwik::test {

/// How long a test waits for what should come at once. Generous: sanitizers on a busy machine are slow.
inline constexpr std::chrono::milliseconds patience = std::chrono::seconds(10);

/// Runs the event loop until \a isTrue; whether it came true within \a limit. For what happens outside this process or
/// thread too: \a isTrue is asked every millisecond.
inline bool spinUntil(const std::function<bool()> &isTrue, std::chrono::milliseconds limit = patience)
{
    const auto deadline = std::chrono::steady_clock::now() + limit;
    QEventLoop loop;
    QTimer poll;
    poll.callOnTimeout([&] {
        if (isTrue() || std::chrono::steady_clock::now() >= deadline)
            loop.quit();
    });
    if (!isTrue()) {
        poll.start(std::chrono::milliseconds(1));
        loop.exec();
    }
    return isTrue();
}

/// Runs the event loop for \a duration: to see that something does not happen.
inline void spinFor(std::chrono::milliseconds duration)
{
    spinUntil([] { return false; }, duration);
}

/// Handles all that is queued by now, and what that queues in turn.
inline void settleEvents()
{
    for (int round = 0; round < 10; ++round) {
        QEventLoop loop;
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        loop.exec();
    }
}

/// A task that a test started and looks at as it runs.
template<typename T = void>
class Running
{
    using Value = std::conditional_t<std::is_void_v<T>, std::monostate, T>;

    struct State
    {
        std::optional<Value> value;
        std::exception_ptr failure;
        bool hasEnded = false;
    };

public:
    explicit Running(Task<T> task) { follow(std::move(task), m_state); }

    bool hasEnded() const { return m_state->hasEnded; }

    /// Runs the event loop until the task has ended; then its value, or what it threw.
    T result(std::chrono::milliseconds limit = patience)
    {
        if (!spinUntil([this] { return hasEnded(); }, limit))
            throw std::runtime_error("the task did not end in time");
        if (m_state->failure)
            std::rethrow_exception(m_state->failure);
        if constexpr (!std::is_void_v<T>)
            return std::move(*m_state->value);
    }

private:
    static Task<> follow(Task<T> task, std::shared_ptr<State> state)
    {
        try {
            if constexpr (std::is_void_v<T>)
                co_await task;
            else
                state->value.emplace(co_await std::move(task));
        } catch (...) {
            state->failure = std::current_exception();
        }
        state->hasEnded = true;
    }

    std::shared_ptr<State> m_state = std::make_shared<State>();
};

/// Runs the event loop until \a task has ended; its value, or what it threw. A task that hangs fails the test.
template<typename T>
T run(Task<T> task, std::chrono::milliseconds limit = patience)
{
    return Running<T>(std::move(task)).result(limit);
}

} // namespace tarnwik::test
