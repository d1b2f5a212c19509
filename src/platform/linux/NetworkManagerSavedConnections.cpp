#include "platform/linux/NetworkManagerSavedConnections.h"

#include "async/Detach.h"
#include "platform/linux/NetworkManagerNames.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QPointer>

using namespace tarnwik::networkmanager;

namespace tarnwik {

NetworkManagerSavedConnections::NetworkManagerSavedConnections(NetworkManagerDaemon &daemon)
    : m_daemon(daemon)
{
    m_daemon.subscribe(settingsPath, settingsInterface, QStringLiteral("ConnectionRemoved"), this,
                       SLOT(onConnectionRemoved(QDBusMessage)));
    QObject::connect(&m_daemon, &NetworkManagerDaemon::stopped, this, &NetworkManagerSavedConnections::onDaemonStopped);
    QObject::connect(&m_daemon, &NetworkManagerDaemon::started, this, &NetworkManagerSavedConnections::findMissing);
    QObject::connect(&m_daemon, &NetworkManagerDaemon::connectionAdded, this,
                     &NetworkManagerSavedConnections::findMissing);
}

void NetworkManagerSavedConnections::follow(const QString &uuid, const QString &path)
{
    if (std::exchange(m_paths[uuid], path) != path)
        Q_EMIT changed();
}

std::optional<QString> NetworkManagerSavedConnections::path(const QString &uuid) const
{
    const auto path = m_paths.value(uuid);
    return path.isEmpty() ? std::nullopt : std::optional(path);
}

Task<std::optional<QString>> NetworkManagerSavedConnections::find(QString uuid)
{
    if (auto known = path(uuid))
        co_return known;

    const QPointer self(this);
    const auto life = m_daemon.life();
    std::optional<QDBusMessage> reply;
    try {
        reply = co_await m_daemon.call(settingsPath, settingsInterface, QStringLiteral("GetConnectionByUuid"), {uuid});
    } catch (const NetworkManagerCallError &error) {
        if (error.name() != errors::invalidConnection)
            throw;
    }
    if (!reply || !self || life != m_daemon.life())
        co_return std::nullopt;
    const auto path = qdbus_cast<QDBusObjectPath>(reply->arguments().value(0)).path();
    follow(uuid, path);
    co_return path;
}

void NetworkManagerSavedConnections::onConnectionRemoved(const QDBusMessage &message)
{
    const auto removed = qdbus_cast<QDBusObjectPath>(message.arguments().value(0)).path();
    for (auto &path : m_paths) {
        if (path == removed) {
            path.clear();
            Q_EMIT changed();
            return;
        }
    }
}

void NetworkManagerSavedConnections::onDaemonStopped()
{
    for (auto &path : m_paths)
        path.clear();
    Q_EMIT changed();
}

void NetworkManagerSavedConnections::findMissing()
{
    const auto uuids = m_paths.keys(QString());
    for (const auto &uuid : uuids) {
        // A daemon that cannot answer yet announces its connections once it can; one that has gone announces its return.
        async::detach([](Task<std::optional<QString>> search) -> Task<> { co_await search; }(find(uuid)),
                      [](std::exception_ptr) {});
    }
}

} // namespace tarnwik
