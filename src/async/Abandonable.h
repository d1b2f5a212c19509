#pragma once

#include "async/Detach.h"
#include "async/Gate.h"

#include <memory>
#include <type_traits>

namespace tarnwik::async {

namespace detail {

template<typename T>
struct AbandonableState
{
    Gate gate;
    std::exception_ptr failure;
    std::conditional_t<std::is_void_v<T>, bool, std::optional<T>> result{};
};

template<typename T>
Task<> finish(Task<T> task, std::shared_ptr<AbandonableState<T>> state, std::shared_ptr<const void> /*owner*/)
{
    try {
        if constexpr (std::is_void_v<T>)
            co_await task;
        else
            state->result = co_await task;
    } catch (...) {
        // Lost only when the waiter has gone, and with it everyone who could be told.
        state->failure = std::current_exception();
    }
    state->gate.open();
}

} // namespace detail

/// Waits for \a task, which cannot be stopped; a pulled \a token ends the wait with Cancelled while \a task runs on to
/// its end alone. \a owner, the object that \a task works on, is kept until then.
template<typename T>
Task<T> abandonable(Task<T> task, std::stop_token token, std::shared_ptr<const void> owner)
{
    const auto state = std::make_shared<detail::AbandonableState<T>>();
    detach(detail::finish(std::move(task), state, std::move(owner)));
    co_await state->gate.wait(std::move(token));
    if (state->failure)
        std::rethrow_exception(state->failure);
    if constexpr (!std::is_void_v<T>)
        co_return std::move(*state->result);
}

} // namespace tarnwik::async
