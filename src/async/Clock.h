#pragma once

#include "async/Task.h"

#include <QObject>

#include <chrono>
#include <functional>

namespace tarnwik::async {

/// Time as the program sees it, so that tests can let it pass at will. Used on the main thread.
class Clock
{
public:
    virtual ~Clock() = default;

    /// Time since an arbitrary fixed moment. Never goes back.
    virtual std::chrono::nanoseconds now() const = 0;

    /// Calls \a action once from the event loop after \a delay, unless \a context has been destroyed by then.
    virtual void after(std::chrono::nanoseconds delay, QObject *context, std::function<void()> action) = 0;
};

/// The machine's own clock.
class SystemClock final : public Clock
{
public:
    std::chrono::nanoseconds now() const override;
    void after(std::chrono::nanoseconds delay, QObject *context, std::function<void()> action) override;
};

/// Waits for \a duration; throws Cancelled as soon as \a token is pulled. \a clock must outlive the wait.
Task<> sleep(Clock &clock, std::chrono::nanoseconds duration, std::stop_token token);

/// Lets the event loop come round once; throws Cancelled when \a token was pulled by then.
Task<> yield(std::stop_token token = {});

} // namespace tarnwik::async
