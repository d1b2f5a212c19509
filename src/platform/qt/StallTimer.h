#pragma once

#include "async/Clock.h"

#include <QObject>

#include <chrono>
#include <functional>

namespace tarnwik {

/// Tells when something has stood still for too long. Lives on the main thread.
class StallTimer final : public QObject
{
    Q_OBJECT

public:
    /// Calls \a onStall once, from the event loop, when touch() was not called for \a limit. \a clock must outlive it.
    StallTimer(async::Clock &clock, std::chrono::nanoseconds limit, std::function<void()> onStall);

    /// Something moved: the time starts anew. Cheap, for it is called for every packet.
    void touch() { m_lastTouch = m_clock.now(); }

private:
    void check();

    async::Clock &m_clock;
    std::chrono::nanoseconds m_limit;
    std::function<void()> m_onStall;
    std::chrono::nanoseconds m_lastTouch;
};

} // namespace tarnwik
