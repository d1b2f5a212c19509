#pragma once

#include "async/Gate.h"

#include <QThread>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace tarnwik {

/// One answer that the system gives on any thread, at any time, and that one coroutine awaits on the thread that made
/// this. The waiter may be gone when the answer comes: nobody notices then. The first answer counts.
template<typename T>
class Reply
{
public:
    /// What is to be called with the answer. Copies of it share one answer.
    std::function<void(T)> handler() const
    {
        return [state = m_state](T value) {
            if (state->isAnswered.test_and_set())
                return;
            state->value = std::move(value);
            state->gate.open();
        };
    }

    /// Waits for the answer, and goes on from the event loop. Once only.
    Task<T> value() const { return wait(m_state); }

private:
    struct State final : QObject
    {
        async::Gate gate;
        std::atomic_flag isAnswered;
        std::optional<T> value;
    };

    static Task<T> wait(std::shared_ptr<State> state)
    {
        co_await state->gate.wait();
        co_return std::move(*state->value);
    }

    /// The gate must end on its own thread, whoever lets go of it last.
    static void end(State *state)
    {
        if (QThread::currentThread() == state->thread())
            delete state;
        else
            state->deleteLater();
    }

    std::shared_ptr<State> m_state{new State, &end};
};

} // namespace tarnwik
