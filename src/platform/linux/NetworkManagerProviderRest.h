#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>

namespace tarnwik {

/// Tells whether a VPN service has come to rest after a tunnel.
///
/// The daemon calls a tunnel ended as soon as it has asked the service to end it. What the service says a moment later,
/// that it has stopped, would end the next tunnel if that was started meanwhile. Services announce their states to
/// everybody; one that leaves the bus, or says nothing for a second after the end, counts as at rest.
class NetworkManagerProviderRest final : public QObject
{
    Q_OBJECT

public:
    enum class Provider { AtRest, AtWork };

    /// Follows \a service, which is \a now at rest or at work.
    NetworkManagerProviderRest(QDBusConnection bus, const QString &service, Provider now);

    bool isAtRest() const { return m_provider == Provider::AtRest; }

    /// The daemon has called the tunnel ended: the service has a second to come to rest.
    void expect();

Q_SIGNALS:
    void reached();

private:
    Q_SLOT void onStateChanged(uint state);

    void reach();

    QDBusServiceWatcher m_watcher;
    QTimer m_limit;
    Provider m_provider;
};

} // namespace tarnwik
