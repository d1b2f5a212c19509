#include "platform/qt/StallTimer.h"

#include <utility>

namespace tarnwik {

StallTimer::StallTimer(async::Clock &clock, std::chrono::nanoseconds limit, std::function<void()> onStall)
    : m_clock(clock)
    , m_limit(limit)
    , m_onStall(std::move(onStall))
    , m_lastTouch(clock.now())
{
    m_clock.after(m_limit, this, [this] { check(); });
}

void StallTimer::check()
{
    const auto stillLeft = m_lastTouch + m_limit - m_clock.now();
    if (stillLeft > std::chrono::nanoseconds(0)) {
        m_clock.after(stillLeft, this, [this] { check(); });
        return;
    }
    m_onStall();
}

} // namespace tarnwik
