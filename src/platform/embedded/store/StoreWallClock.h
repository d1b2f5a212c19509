#pragma once

#include <chrono>
#include <functional>

namespace tarnwik {

/// The time since the epoch, as the embedded store sees it.
using StoreWallClock = std::function<std::chrono::milliseconds()>;

/// The machine's own.
inline std::chrono::milliseconds systemStoreTime()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::system_clock::now().time_since_epoch());
}

} // namespace tarnwik
