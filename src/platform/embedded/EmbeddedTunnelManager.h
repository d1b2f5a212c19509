#pragma once

#include "async/Clock.h"
#include "platform/TunnelManager.h"
#include "platform/embedded/EmbeddedTunnelState.h"

#include <QFileSystemWatcher>

#include <functional>

namespace tarnwik {

/// A VPN subsystem with one tunnel, which carries nothing but goes through every status in honest time.
///
/// Its state lies in a file, so that one process can connect and the next one disconnect.
class EmbeddedTunnelManager final : public TunnelManager
{
    Q_OBJECT

public:
    /// Told when the tunnel with this configuration is sent up (true) or down.
    using TunnelListener = std::function<void(const TunnelProviderProtocol &, bool)>;
    /// The time since the epoch.
    using WallClock = std::function<std::chrono::milliseconds()>;

    EmbeddedTunnelManager(const QString &path, std::shared_ptr<async::Clock> clock, TunnelListener listener,
                          WallClock wallClock = systemWallClock);

    static std::chrono::milliseconds systemWallClock();

    Task<std::optional<Configurations>> loadAllFromPreferences() override;
    std::shared_ptr<TunnelConfiguration> create() override;

private:
    class Configuration;

    VPNStatus status() const;
    void send(bool isGoingUp);
    void watch();
    void tellWhenSettled();

    EmbeddedTunnelFile m_file;
    std::shared_ptr<async::Clock> m_clock;
    TunnelListener m_listener;
    WallClock m_wallClock;
    QFileSystemWatcher m_watcher;
};

} // namespace tarnwik
