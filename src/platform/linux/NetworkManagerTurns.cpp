#include "platform/linux/NetworkManagerTurns.h"

#include "async/Gate.h"

namespace tarnwik {

Task<> NetworkManagerTurns::next()
{
    if (!m_isTaken) {
        m_isTaken = true;
        co_return;
    }
    async::Gate gate;
    m_waiting.push_back(&gate);
    co_await gate.wait();
}

void NetworkManagerTurns::pass()
{
    if (m_waiting.empty()) {
        m_isTaken = false;
        return;
    }
    // The turn stays taken: it goes straight to the one who has waited longest.
    auto *const gate = m_waiting.front();
    m_waiting.pop_front();
    gate->open();
}

} // namespace tarnwik
