#pragma once

#include "async/Clock.h"

#include <QPointer>

#include <functional>
#include <map>
#include <optional>

namespace tarnwik::test {

/// A clock that stands still until the test lets time pass.
class ManualClock final : public async::Clock
{
public:
    std::chrono::nanoseconds now() const override { return m_now; }
    void after(std::chrono::nanoseconds delay, QObject *context, std::function<void()> action) override;

    /// Lets \a duration pass. What falls due meanwhile is called in its order, each at its own time, before this
    /// returns; coroutines that it wakes go on when the event loop runs.
    void advance(std::chrono::nanoseconds duration);

    /// How many calls are due one day.
    qsizetype pendingCount() const;

    /// How long until the next call is due; nothing when none is.
    std::optional<std::chrono::nanoseconds> nextDelay() const;

private:
    struct Pending
    {
        QPointer<QObject> context;
        std::function<void()> action;
    };

    std::chrono::nanoseconds m_now{0};
    std::multimap<std::chrono::nanoseconds, Pending> m_pending;
};

} // namespace tarnwik::test
