#pragma once

#include "async/Task.h"

#include <QObject>

#include <coroutine>
#include <functional>
#include <optional>

namespace tarnwik::async {

/// One place where one coroutine waits until open() is called, or until its stop token is pulled.
///
/// The coroutine goes on from the event loop of the thread that made the gate, never from inside open() or
/// request_stop(): whoever calls these may be destroyed by what the coroutine does next. Opening twice, or before the
/// wait, is fine. The gate is a QObject so that it can be the context of the connections that open it; after the wait
/// these end with it. The gate must outlive the wait, which a local variable of the waiting coroutine does.
class Gate final : public QObject
{
    Q_OBJECT

public:
    Gate() = default;

    /// Lets the waiting coroutine go on. May be called from any thread.
    void open();

    /// The awaitable. `co_await gate.wait(token)` throws Cancelled when the token is pulled first.
    auto wait(std::stop_token token = {})
    {
        struct Awaiter
        {
            Gate *gate;

            bool await_ready() const noexcept { return false; }
            void await_suspend(std::coroutine_handle<> handle) { gate->suspend(handle); }
            void await_resume() const { gate->finish(); }
        };
        m_token = std::move(token);
        return Awaiter{this};
    }

private:
    using StopCallback = std::stop_callback<std::function<void()>>;

    void suspend(std::coroutine_handle<> handle);
    void finish();
    void resumeLater();

    std::stop_token m_token;
    std::optional<StopCallback> m_stopCallback;
    std::coroutine_handle<> m_waiting;
    bool m_isOpen = false;
};

} // namespace tarnwik::async
