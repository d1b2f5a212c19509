#pragma once

#include "platform/macos/native/NetworkExtension.h"

#include <QObject>

#include <memory>

namespace tarnwik {

/// What a tunnel manager shares with its configurations. Lives on the main thread.
class MacTunnelSession final : public QObject
{
    Q_OBJECT

public:
    explicit MacTunnelSession(std::shared_ptr<mac::NetworkExtension> networkExtension);

    mac::NetworkExtension &networkExtension() const { return *m_networkExtension; }

Q_SIGNALS:
    /// The status of a tunnel changed, of any tunnel; or why one went down is known now.
    void statusDidChange();

private:
    std::shared_ptr<mac::NetworkExtension> m_networkExtension;
    std::shared_ptr<void> m_observation;
};

} // namespace tarnwik
