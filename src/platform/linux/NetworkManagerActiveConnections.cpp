#include "platform/linux/NetworkManagerActiveConnections.h"

#include "async/Detach.h"
#include "async/Gate.h"
#include "platform/linux/NetworkManagerErrorText.h"
#include "platform/linux/NetworkManagerNames.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QTimer>

#include <utility>
#include <vector>

using namespace tarnwik::networkmanager;

namespace tarnwik {

NetworkManagerActiveConnections::Question::Question(NetworkManagerActiveConnections &connections)
    : m_connections(&connections)
{
    ++connections.m_questions;
}

NetworkManagerActiveConnections::Question::~Question()
{
    if (m_connections && --m_connections->m_questions == 0)
        m_connections->dropEnded();
}

NetworkManagerActiveConnections::NetworkManagerActiveConnections(NetworkManagerDaemon &daemon)
    : m_daemon(daemon)
{
    m_daemon.subscribe({}, activeInterface, QStringLiteral("StateChanged"), this,
                       SLOT(onStateChanged(uint, uint, QDBusMessage)));
    QObject::connect(&m_daemon, &NetworkManagerDaemon::stopped, this,
                     &NetworkManagerActiveConnections::onDaemonStopped);
}

Task<> NetworkManagerActiveConnections::refresh()
{
    const QPointer self(this);
    const Question question(*this);
    const auto life = m_daemon.life();

    const auto manager = co_await m_daemon.properties(managerPath, managerInterface);
    if (!self || life != m_daemon.life())
        co_return;
    const auto paths = qdbus_cast<QList<QDBusObjectPath>>(manager.value(QStringLiteral("ActiveConnections")));
    std::vector<Task<>> lookups;
    lookups.reserve(static_cast<std::size_t>(paths.size()));
    for (const auto &path : paths)
        lookups.push_back(identify(self, path.path()));
    for (auto &lookup : lookups)
        co_await lookup;
}

/// Asks whose active connection \a path is. One that has ended meanwhile is of no interest.
Task<> NetworkManagerActiveConnections::identify(QPointer<NetworkManagerActiveConnections> self, QString path)
{
    const Question question(*self);
    const auto life = self->m_daemon.life();
    QVariantMap properties;
    try {
        properties = co_await self->m_daemon.properties(path, activeInterface);
    } catch (const NetworkManagerCallError &) {
        co_return;
    }
    if (self && life == self->m_daemon.life())
        self->describe(path, properties);
}

void NetworkManagerActiveConnections::describe(const QString &path, const QVariantMap &properties)
{
    const auto known = m_records.find(path);
    const auto uuid = properties.value(QStringLiteral("Uuid")).toString();
    if (known != m_records.end()) {
        // Its signals are newer than this answer, whichever of the two came here first.
        identified(*known, uuid);
        return;
    }
    Record record;
    record.uuid = uuid;
    setState(record, NetworkManagerActiveState(properties.value(QStringLiteral("State")).toUInt()));
    m_records.insert(path, record);
    Q_EMIT changed();
}

void NetworkManagerActiveConnections::identified(Record &record, const QString &uuid)
{
    if (record.uuid == uuid)
        return;
    record.uuid = uuid;
    if (record.state == NetworkManagerActiveState::Deactivated)
        noteEnd(record);
    Q_EMIT changed();
}

void NetworkManagerActiveConnections::adopt(const QString &path, const QString &uuid,
                                            std::shared_ptr<NetworkManagerProviderRest> rest)
{
    auto &record = m_records[path];
    follow(record, std::move(rest));
    identified(record, uuid);
}

void NetworkManagerActiveConnections::expectEnd(const QString &path, const QString &service)
{
    const auto record = m_records.find(path);
    if (record == m_records.end())
        return;
    record->isEndExpected = true;
    if (!record->rest)
        follow(*record,
               std::make_shared<NetworkManagerProviderRest>(m_daemon.bus(), service,
                                                            NetworkManagerProviderRest::Provider::AtWork));
}

void NetworkManagerActiveConnections::confirmEnd(const QString &path)
{
    const auto record = m_records.find(path);
    if (record == m_records.end() || record->state == NetworkManagerActiveState::Deactivated)
        return;
    record->state = NetworkManagerActiveState::Deactivating;
    Q_EMIT changed();
}

void NetworkManagerActiveConnections::forgetExpectedEnd(const QString &path)
{
    const auto record = m_records.find(path);
    if (record != m_records.end())
        record->isEndExpected = false;
}

void NetworkManagerActiveConnections::follow(Record &record, std::shared_ptr<NetworkManagerProviderRest> rest)
{
    record.rest = std::move(rest);
    // Queued, since the record, and what it waits for with it, is dropped then.
    QObject::connect(record.rest.get(), &NetworkManagerProviderRest::reached, this,
                     &NetworkManagerActiveConnections::settle, Qt::QueuedConnection);
    if (record.state == NetworkManagerActiveState::Deactivated)
        record.rest->expect();
}

Task<> NetworkManagerActiveConnections::waitUntilEnded(QString uuid, std::chrono::milliseconds limit)
{
    QTimer timer;
    timer.setSingleShot(true);
    timer.start(limit);
    while (path(uuid)) {
        if (!timer.isActive())
            throw notAnsweringError();
        async::Gate gate;
        QObject::connect(this, &NetworkManagerActiveConnections::changed, &gate, &async::Gate::open);
        timer.callOnTimeout(&gate, &async::Gate::open);
        co_await gate.wait();
    }
}

std::optional<QString> NetworkManagerActiveConnections::path(const QString &uuid) const
{
    const auto record = find(uuid);
    return record == m_records.end() ? std::nullopt : std::optional(record.key());
}

VPNStatus NetworkManagerActiveConnections::status(const QString &uuid) const
{
    const auto record = find(uuid);
    if (record == m_records.end())
        return VPNStatus::Disconnected;
    return record->state == NetworkManagerActiveState::Deactivated ? VPNStatus::Disconnecting
                                                                   : vpnStatus(record->state, record->wasActivated);
}

std::optional<NetworkManagerEndReason> NetworkManagerActiveConnections::endReason(const QString &uuid) const
{
    const auto reason = m_endReasons.find(uuid);
    return reason == m_endReasons.end() ? std::nullopt : std::optional(*reason);
}

void NetworkManagerActiveConnections::onStateChanged(uint state, uint reason, const QDBusMessage &message)
{
    const auto path = message.path();
    const auto isNew = !m_records.contains(path);
    auto &record = m_records[path];
    setState(record, NetworkManagerActiveState(state));
    if (record.state == NetworkManagerActiveState::Deactivated) {
        record.reason = NetworkManagerEndReason(reason);
        noteEnd(record);
    }
    if (isNew)
        async::detach(identify(this, path));
    settle();
}

/// Something of which others see the effect has happened.
void NetworkManagerActiveConnections::settle()
{
    if (m_questions == 0)
        dropEnded();
    Q_EMIT changed();
}

/// An active connection that the daemon calls ended, but whose provider is still at work, has not.
bool NetworkManagerActiveConnections::isEnded(const Record &record)
{
    return record.state == NetworkManagerActiveState::Deactivated && (!record.rest || record.rest->isAtRest());
}

void NetworkManagerActiveConnections::setState(Record &record, NetworkManagerActiveState state)
{
    record.state = state;
    record.wasActivated |= state == NetworkManagerActiveState::Activated;
}

void NetworkManagerActiveConnections::onDaemonStopped()
{
    for (auto record : std::as_const(m_records)) {
        if (record.state == NetworkManagerActiveState::Deactivated)
            continue;
        record.reason = NetworkManagerEndReason::DaemonStopped;
        noteEnd(record);
    }
    m_records.clear();
    Q_EMIT changed();
}

void NetworkManagerActiveConnections::noteEnd(Record &record)
{
    if (record.rest)
        record.rest->expect();
    if (!record.uuid.isEmpty())
        m_endReasons.insert(record.uuid,
                            record.isEndExpected ? NetworkManagerEndReason::UserDisconnected : record.reason);
}

/// Of two active connections of one saved connection, which exist while it is started anew, the one that stays counts.
QHash<QString, NetworkManagerActiveConnections::Record>::const_iterator
NetworkManagerActiveConnections::find(const QString &uuid) const
{
    auto found = m_records.end();
    for (auto record = m_records.begin(); record != m_records.end(); ++record) {
        const auto isAnswered = found != m_records.end() && found->state < NetworkManagerActiveState::Deactivating;
        if (record->uuid == uuid && !isEnded(*record) && !isAnswered)
            found = record;
    }
    return found;
}

void NetworkManagerActiveConnections::dropEnded()
{
    m_records.removeIf([](auto record) { return isEnded(*record); });
}

} // namespace tarnwik
