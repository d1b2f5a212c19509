#include "platform/macos/MacTunnelSession.h"

#include <QPointer>

#include <utility>

namespace tarnwik {

MacTunnelSession::MacTunnelSession(std::shared_ptr<mac::NetworkExtension> networkExtension,
                                   std::shared_ptr<async::Clock> clock)
    : m_networkExtension(std::move(networkExtension))
    , m_clock(std::move(clock))
{
    // Weakly: a notification that was already on its way comes after the observation has ended.
    m_observation = m_networkExtension->observeStatus([session = QPointer(this)] {
        if (session)
            Q_EMIT session->statusDidChange();
    });
}

} // namespace tarnwik
