#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

namespace tarnwik {

/// Where what the store says on threads of its own is left for the thread that asked. Free of Qt.
///
/// Both sides hold it by a shared pointer: a letter that comes when nobody waits for it any more is dropped with the
/// box.
class StoreKitMailbox
{
public:
    StoreKitMailbox() = default;

    StoreKitMailbox(const StoreKitMailbox &) = delete;
    StoreKitMailbox &operator=(const StoreKitMailbox &) = delete;

    /// Leaves a letter, from any thread.
    void put(std::string letter);

    /// The oldest letter that nobody took yet, if any.
    std::optional<std::string> take();

    /// Watches a box for its next letter. There is at most one at a time.
    class Watch
    {
    public:
        /// Calls \a onLetter once: with the next letter from the thread that leaves it, or at once when there is one.
        /// It must not touch the box.
        Watch(StoreKitMailbox &mailbox, std::function<void()> onLetter);

        /// Waits for a call that is under way: none comes after this.
        ~Watch();

        Watch(const Watch &) = delete;
        Watch &operator=(const Watch &) = delete;

    private:
        StoreKitMailbox &m_mailbox;
    };

private:
    void tellOfLetter();

    std::mutex m_mutex;
    std::deque<std::string> m_letters;
    std::function<void()> m_onLetter;
};

} // namespace tarnwik
