#include "platform/linux/NetworkManagerDaemon.h"

#include "async/Gate.h"
#include "platform/linux/NetworkManagerNames.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>

using namespace tarnwik::networkmanager;

namespace tarnwik {

namespace {

Task<QDBusMessage> reply(QDBusPendingCall call)
{
    QDBusPendingCallWatcher watcher(call);
    async::Gate gate;
    QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &gate, &async::Gate::open);
    // Without a bus the call has failed before it was made, and nothing more is told of it.
    if (!watcher.isFinished())
        co_await gate.wait();
    if (watcher.isError())
        throw NetworkManagerCallError(watcher.error().name(), watcher.error().message());
    co_return watcher.reply();
}

Task<QVariantMap> propertyMap(Task<QDBusMessage> call)
{
    const auto message = co_await call;
    co_return qdbus_cast<QVariantMap>(message.arguments().value(0));
}

Task<QString> text(Task<QDBusMessage> call)
{
    const auto message = co_await call;
    co_return message.arguments().value(0).toString();
}

} // namespace

NetworkManagerDaemon::NetworkManagerDaemon(QDBusConnection bus)
    : m_bus(std::move(bus))
    , m_watcher(serviceName, m_bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    QObject::connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
                     &NetworkManagerDaemon::onOwnerChanged);
    subscribe(settingsPath, settingsInterface, QStringLiteral("NewConnection"), this,
              SLOT(onNewConnection(QDBusMessage)));
}

Task<QDBusMessage> NetworkManagerDaemon::call(const QString &path, const QString &interface, const QString &method,
                                              const QVariantList &arguments) const
{
    auto message = QDBusMessage::createMethodCall(serviceName, path, interface, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    return reply(m_bus.asyncCall(message));
}

Task<QVariantMap> NetworkManagerDaemon::properties(const QString &path, const QString &interface) const
{
    return propertyMap(call(path, propertiesInterface, QStringLiteral("GetAll"), {interface}));
}

Task<QString> NetworkManagerDaemon::owner() const
{
    auto message = QDBusMessage::createMethodCall(busService, busPath, busInterface, QStringLiteral("GetNameOwner"));
    message.setArguments({serviceName});
    return text(reply(m_bus.asyncCall(message)));
}

void NetworkManagerDaemon::subscribe(const QString &path, const QString &interface, const QString &signal,
                                     QObject *receiver, const char *slot)
{
    // Without a bus there is nothing to hear, and every call tells so. With one, only a wrong slot can fail.
    if (!m_bus.connect(serviceName, path, interface, signal, receiver, slot) && m_bus.isConnected())
        qFatal("NetworkManager's signal %s cannot be connected.", qUtf8Printable(signal));
}

void NetworkManagerDaemon::onNewConnection(const QDBusMessage &)
{
    Q_EMIT connectionAdded();
}

void NetworkManagerDaemon::onOwnerChanged(const QString &, const QString &oldOwner, const QString &newOwner)
{
    if (!oldOwner.isEmpty()) {
        m_isRunning = false;
        Q_EMIT stopped();
    }
    if (!newOwner.isEmpty()) {
        m_isRunning = true;
        ++m_life;
        Q_EMIT started();
    }
}

} // namespace tarnwik
