#pragma once

#include <chrono>
#include <functional>

namespace tarnwik::service {

/// A moment as the database keeps it.
using Moment = std::chrono::sys_time<std::chrono::milliseconds>;

/// Where the service takes the time of day from.
using TimeSource = std::function<Moment()>;

/// The machine's own time.
inline Moment systemTime()
{
    return std::chrono::time_point_cast<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

inline long long toMilliseconds(Moment moment)
{
    return moment.time_since_epoch().count();
}

} // namespace tarnwik::service
