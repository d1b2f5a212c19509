#include "platform/linux/SecretServiceRefusal.h"

namespace tarnwik {

SecretServiceRefusal::SecretServiceRefusal(std::chrono::milliseconds duration)
    : m_duration(duration)
{
}

void SecretServiceRefusal::remember(OSStatus status)
{
    const std::lock_guard lock(m_mutex);
    m_status = status;
    m_time = std::chrono::steady_clock::now();
}

std::optional<OSStatus> SecretServiceRefusal::status() const
{
    const std::lock_guard lock(m_mutex);
    const bool isRecent = m_time && std::chrono::steady_clock::now() - *m_time < m_duration;
    return isRecent ? std::optional(m_status) : std::nullopt;
}

} // namespace tarnwik
