#include "platform/macos/storekit/StoreKitMailbox.h"

#include <utility>

namespace tarnwik {

void StoreKitMailbox::put(std::string letter)
{
    const std::scoped_lock lock(m_mutex);
    m_letters.push_back(std::move(letter));
    tellOfLetter();
}

std::optional<std::string> StoreKitMailbox::take()
{
    const std::scoped_lock lock(m_mutex);
    if (m_letters.empty())
        return std::nullopt;
    std::string letter = std::move(m_letters.front());
    m_letters.pop_front();
    return letter;
}

void StoreKitMailbox::tellOfLetter()
{
    // With the lock held: whoever is called must not go away meanwhile.
    if (const auto onLetter = std::exchange(m_onLetter, nullptr))
        onLetter();
}

StoreKitMailbox::Watch::Watch(StoreKitMailbox &mailbox, std::function<void()> onLetter)
    : m_mailbox(mailbox)
{
    const std::scoped_lock lock(m_mailbox.m_mutex);
    m_mailbox.m_onLetter = std::move(onLetter);
    if (!m_mailbox.m_letters.empty())
        m_mailbox.tellOfLetter();
}

StoreKitMailbox::Watch::~Watch()
{
    const std::scoped_lock lock(m_mailbox.m_mutex);
    m_mailbox.m_onLetter = nullptr;
}

} // namespace tarnwik
