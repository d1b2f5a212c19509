#include "platform/embedded/EmbeddedTunnelManager.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <utility>

namespace tarnwik {

/// The one configuration, as one of its holders sees it.
class EmbeddedTunnelManager::Configuration final : public TunnelConfiguration
{
public:
    explicit Configuration(EmbeddedTunnelManager *manager)
        : m_manager(manager)
    {
    }

    Task<> saveToPreferences() override
    {
        m_manager->m_file.change([this](EmbeddedTunnelState &state) {
            state.isSaved = true;
            state.localizedDescription = localizedDescription;
            state.protocolConfiguration = protocolConfiguration;
            state.isEnabled = isEnabled;
        });
        m_manager->watch();
        co_return;
    }

    Task<> loadFromPreferences() override
    {
        const EmbeddedTunnelState state = m_manager->m_file.read();
        localizedDescription = state.localizedDescription;
        protocolConfiguration = state.protocolConfiguration;
        isEnabled = state.isEnabled;
        co_return;
    }

    Task<> startVPNTunnel() override
    {
        m_manager->send(true);
        co_return;
    }

    Task<> stopVPNTunnel() override
    {
        const VPNStatus current = status();
        if (current != VPNStatus::Connecting && current != VPNStatus::Connected)
            co_return;
        try {
            m_manager->send(false);
        } catch (const TunnelError &) {
            // Stopping never fails: a tunnel that could not be stopped shows in its status.
        }
    }

    VPNStatus status() const override { return m_manager->status(); }
    std::optional<QString> lastDisconnectError() const override { return std::nullopt; }

private:
    // Whoever holds a configuration holds the manager: both belong to the platform.
    EmbeddedTunnelManager *m_manager;
};

EmbeddedTunnelManager::EmbeddedTunnelManager(const QString &path, std::shared_ptr<async::Clock> clock,
                                             TunnelListener listener, WallClock wallClock)
    : m_file(path)
    , m_clock(std::move(clock))
    , m_listener(std::move(listener))
    , m_wallClock(std::move(wallClock))
{
    // The folder, not the file: each change puts a new file into the old one's place.
    QObject::connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
        Q_EMIT statusDidChange();
        tellWhenSettled();
    });
}

std::chrono::milliseconds EmbeddedTunnelManager::systemWallClock()
{
    return std::chrono::milliseconds(QDateTime::currentMSecsSinceEpoch());
}

Task<std::optional<TunnelManager::Configurations>> EmbeddedTunnelManager::loadAllFromPreferences()
{
    Configurations configurations;
    // Before there is anything to see: another process may save and start the configuration next.
    watch();
    if (m_file.read().isSaved) {
        configurations.push_back(create());
        co_await configurations.front()->loadFromPreferences();
    }
    co_return configurations;
}

std::shared_ptr<TunnelConfiguration> EmbeddedTunnelManager::create()
{
    return std::make_shared<Configuration>(this);
}

VPNStatus EmbeddedTunnelManager::status() const
{
    return m_file.read().statusAt(m_wallClock());
}

void EmbeddedTunnelManager::send(bool isGoingUp)
{
    const EmbeddedTunnelState state = m_file.change([&](EmbeddedTunnelState &changing) {
        if (!changing.isSaved)
            throw TunnelError(QStringLiteral("The VPN configuration was not saved."));
        changing.isGoingUp = isGoingUp;
        changing.sentAt = m_wallClock();
    });
    if (m_listener && state.protocolConfiguration)
        m_listener(*state.protocolConfiguration, isGoingUp);
    Q_EMIT statusDidChange();
    tellWhenSettled();
}

void EmbeddedTunnelManager::watch()
{
    const QString folder = QFileInfo(m_file.path()).path();
    if (!m_watcher.directories().contains(folder) && QDir().mkpath(folder))
        m_watcher.addPath(folder);
    tellWhenSettled();
}

void EmbeddedTunnelManager::tellWhenSettled()
{
    if (const auto remaining = m_file.read().settlesIn(m_wallClock()))
        m_clock->after(*remaining, this, [this] { Q_EMIT statusDidChange(); });
}

} // namespace tarnwik
