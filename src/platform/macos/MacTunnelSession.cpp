#include "platform/macos/MacTunnelSession.h"

#include <QPointer>

#include <utility>

namespace tarnwik {

MacTunnelSession::MacTunnelSession(std::shared_ptr<mac::NetworkExtension> networkExtension)
    : m_networkExtension(std::move(networkExtension))
{
    // Weakly: a notification that was already on its way comes after the observation has ended.
    m_observation = m_networkExtension->observeStatus([session = QPointer(this)] {
        if (session)
            Q_EMIT session->statusDidChange();
    });
}

} // namespace tarnwik
