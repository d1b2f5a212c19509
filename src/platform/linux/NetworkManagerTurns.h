#pragma once

#include "async/Task.h"

#include <deque>

namespace tarnwik {

namespace async {
class Gate;
}

/// Lets operations that would disturb each other run one after the other, in the order in which they came.
///
/// An operation writes `co_await turns.next(); const NetworkManagerTurns::Turn turn(turns);`. It must end before the
/// object does. Lives on one thread.
class NetworkManagerTurns
{
public:
    /// Gives the turn to the next operation when it goes out of scope.
    class Turn
    {
    public:
        explicit Turn(NetworkManagerTurns &turns)
            : m_turns(turns)
        {
        }
        ~Turn() { m_turns.pass(); }

        Turn(const Turn &) = delete;
        Turn &operator=(const Turn &) = delete;

    private:
        NetworkManagerTurns &m_turns;
    };

    /// Waits until it is the caller's turn.
    Task<> next();

private:
    void pass();

    bool m_isTaken = false;
    std::deque<async::Gate *> m_waiting;
};

} // namespace tarnwik
