#include "platform/linux/NetworkManagerTunnelManager.h"

#include "platform/linux/NetworkManagerConfiguration.h"
#include "platform/linux/NetworkManagerErrorText.h"
#include "platform/linux/NetworkManagerNames.h"

#include <QDBusArgument>
#include <QDBusObjectPath>

#include <pwd.h>
#include <unistd.h>

using namespace tarnwik::networkmanager;

namespace tarnwik {

namespace {

using SharedSession = std::shared_ptr<NetworkManagerSession>;
using SharedConfiguration = std::shared_ptr<TunnelConfiguration>;

/// Whether a connection that cannot be read is simply not for us: another user's, or deleted since it was listed.
bool isOthersOrGone(const NetworkManagerCallError &error)
{
    return error.name() == errors::settingsPermissionDenied || error.name() == errors::unknownMethod
        || error.name() == errors::unknownObject;
}

/// The configuration saved under \a path; nothing when it is no VPN, or not for us.
Task<SharedConfiguration> configuration(SharedSession session, QString path)
{
    NetworkManagerConnectionSettings settings;
    try {
        settings = co_await savedSettings(session, path);
    } catch (const NetworkManagerCallError &error) {
        if (!isOthersOrGone(error))
            throw;
    }
    if (!isVPN(settings))
        co_return SharedConfiguration();
    session->savedConnections.follow(connectionUUID(settings), path);
    co_return std::make_shared<NetworkManagerConfiguration>(session, settings);
}

/// Asks for everything at once: what comes of it costs two round trips, however many connections there are.
Task<TunnelManager::Configurations> loadAll(SharedSession session)
{
    auto activeRefresh = session->activeConnections.refresh();
    const auto reply =
        co_await session->daemon.call(settingsPath, settingsInterface, QStringLiteral("ListConnections"));
    const auto paths = qdbus_cast<QList<QDBusObjectPath>>(reply.arguments().value(0));
    std::vector<Task<SharedConfiguration>> tasks;
    tasks.reserve(static_cast<std::size_t>(paths.size()));
    for (const auto &path : paths)
        tasks.push_back(configuration(session, path.path()));
    TunnelManager::Configurations configurations;
    for (auto &task : tasks) {
        if (auto found = co_await task)
            configurations.push_back(std::move(found));
    }
    co_await activeRefresh;
    co_return configurations;
}

} // namespace

QString currentUserName()
{
    const auto *const entry = getpwuid(getuid());
    return entry ? QString::fromLocal8Bit(entry->pw_name) : QString();
}

NetworkManagerTunnelManager::NetworkManagerTunnelManager(std::shared_ptr<KeychainServices> keychain, QString userName,
                                                         const QDBusConnection &bus, std::chrono::milliseconds endLimit)
{
    registerNetworkManagerTypes();
    m_session = std::make_shared<NetworkManagerSession>(std::move(keychain), std::move(userName), bus, endLimit);
    QObject::connect(&m_session->activeConnections, &NetworkManagerActiveConnections::changed, this,
                     &TunnelManager::statusDidChange);
    QObject::connect(&m_session->savedConnections, &NetworkManagerSavedConnections::changed, this,
                     &TunnelManager::statusDidChange);
}

NetworkManagerTunnelManager::~NetworkManagerTunnelManager() = default;

Task<std::optional<TunnelManager::Configurations>> NetworkManagerTunnelManager::loadAllFromPreferences()
{
    co_return co_await withTunnelErrors(loadAll(m_session), QString());
}

std::shared_ptr<TunnelConfiguration> NetworkManagerTunnelManager::create()
{
    return std::make_shared<NetworkManagerConfiguration>(m_session);
}

} // namespace tarnwik
