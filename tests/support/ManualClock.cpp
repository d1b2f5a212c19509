#include "support/ManualClock.h"

#include <algorithm>

namespace tarnwik::test {

void ManualClock::after(std::chrono::nanoseconds delay, QObject *context, std::function<void()> action)
{
    m_pending.emplace(m_now + std::max(delay, std::chrono::nanoseconds(0)), Pending{context, std::move(action)});
}

void ManualClock::advance(std::chrono::nanoseconds duration)
{
    const auto end = m_now + duration;
    while (!m_pending.empty() && m_pending.begin()->first <= end) {
        // Taken out first: the action may ask for another call.
        const auto due = m_pending.extract(m_pending.begin());
        m_now = due.key();
        if (due.mapped().context)
            due.mapped().action();
    }
    m_now = end;
}

qsizetype ManualClock::pendingCount() const
{
    return std::count_if(m_pending.begin(), m_pending.end(), [](const auto &entry) { return entry.second.context; });
}

std::optional<std::chrono::nanoseconds> ManualClock::nextDelay() const
{
    const auto next =
        std::find_if(m_pending.begin(), m_pending.end(), [](const auto &entry) { return entry.second.context; });
    if (next == m_pending.end())
        return std::nullopt;
    return next->first - m_now;
}

} // namespace tarnwik::test
