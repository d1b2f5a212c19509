#include "async/Clock.h"

#include "async/Gate.h"

#include <QTimer>

#include <algorithm>

namespace tarnwik::async {

std::chrono::nanoseconds SystemClock::now() const
{
    return std::chrono::steady_clock::now().time_since_epoch();
}

void SystemClock::after(std::chrono::nanoseconds delay, QObject *context, std::function<void()> action)
{
    // The context's child, not QTimer::singleShot(): that one's timer would outlive the context and wake the program
    // for nothing.
    auto *timer = new QTimer(context);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    timer->callOnTimeout(context, [timer, action = std::move(action)] {
        timer->deleteLater();
        action();
    });
    // Rounded up: a timer that fires early would find its deadline still ahead.
    timer->start(std::chrono::ceil<std::chrono::milliseconds>(std::max(delay, std::chrono::nanoseconds(0))));
}

Task<> sleep(Clock &clock, std::chrono::nanoseconds duration, std::stop_token token)
{
    Gate gate;
    clock.after(duration, &gate, [&gate] { gate.open(); });
    co_await gate.wait(token);
    throwIfStopped(token);
}

Task<> yield(std::stop_token token)
{
    Gate gate;
    gate.open();
    co_await gate.wait(token);
    throwIfStopped(token);
}

} // namespace tarnwik::async
