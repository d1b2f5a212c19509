#pragma once

#include "platform/TunnelManager.h"

#include <chrono>
#include <functional>
#include <optional>
#include <utility>

namespace tarnwik {

/// How long the embedded tunnel takes to come up, and to go down.
inline constexpr std::chrono::milliseconds embeddedConnectTime{900};
inline constexpr std::chrono::milliseconds embeddedDisconnectTime{300};

/// What is known of the one embedded tunnel: its saved configuration, and which way it was last sent.
struct EmbeddedTunnelState
{
    bool isSaved = false;
    std::optional<QString> localizedDescription;
    std::optional<TunnelProviderProtocol> protocolConfiguration;
    bool isEnabled = false;
    bool isGoingUp = false;
    /// When it was last sent up or down, since the epoch.
    std::chrono::milliseconds sentAt{0};

    /// The status at the time \a now since the epoch: it follows from the state alone, so that every process that
    /// reads it sees the same tunnel.
    VPNStatus statusAt(std::chrono::milliseconds now) const;

    /// How long after \a now the status changes by itself; nothing when it has settled.
    std::optional<std::chrono::milliseconds> settlesIn(std::chrono::milliseconds now) const;
};

/// The state in a file that several processes share, replaced as a whole.
class EmbeddedTunnelFile
{
public:
    explicit EmbeddedTunnelFile(QString path)
        : m_path(std::move(path))
    {
    }

    /// What was last written; a fresh state when there is none, or none that can be read.
    EmbeddedTunnelState read() const;

    /// Lets \a edit change the state and writes what came of it, while no other process does the same; what was written.
    /// Throws what \a edit throws, and TunnelError.
    EmbeddedTunnelState change(const std::function<void(EmbeddedTunnelState &)> &edit) const;

    const QString &path() const { return m_path; }

private:
    void write(const EmbeddedTunnelState &state) const;

    QString m_path;
};

} // namespace tarnwik
