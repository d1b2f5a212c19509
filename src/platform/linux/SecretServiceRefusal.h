#pragma once

#include "platform/KeychainServices.h"

#include <chrono>
#include <mutex>
#include <optional>

namespace tarnwik {

/// Remembers for a short while that the person was asked to unlock a keyring and did not do it, so that calls which
/// follow each other put one question. May be used by several threads at once.
class SecretServiceRefusal
{
public:
    explicit SecretServiceRefusal(std::chrono::milliseconds duration);

    void remember(OSStatus status);

    /// The status that the last refused question ended with; nothing when that was longer ago.
    std::optional<OSStatus> status() const;

private:
    const std::chrono::milliseconds m_duration;
    mutable std::mutex m_mutex;
    OSStatus m_status = errSecSuccess;
    std::optional<std::chrono::steady_clock::time_point> m_time; // absent until something was refused
};

} // namespace tarnwik
