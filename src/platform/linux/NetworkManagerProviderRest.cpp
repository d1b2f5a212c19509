#include "platform/linux/NetworkManagerProviderRest.h"

#include <chrono>

namespace tarnwik {

namespace {

constexpr auto limit = std::chrono::seconds(1);

/// Whether a service in \a state, an NMVpnServiceState, is at work: starting, started or stopping.
bool isAtWork(uint state)
{
    return state >= 3 && state <= 5;
}

} // namespace

NetworkManagerProviderRest::NetworkManagerProviderRest(QDBusConnection bus, const QString &service, Provider now)
    : m_watcher(service, bus, QDBusServiceWatcher::WatchForUnregistration)
    , m_provider(now)
{
    QObject::connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, &NetworkManagerProviderRest::reach);
    bus.connect(service, QStringLiteral("/org/freedesktop/NetworkManager/VPN/Plugin"),
                QStringLiteral("org.freedesktop.NetworkManager.VPN.Plugin"), QStringLiteral("StateChanged"), this,
                SLOT(onStateChanged(uint)));
    m_limit.setSingleShot(true);
    m_limit.callOnTimeout(this, &NetworkManagerProviderRest::reach);
}

void NetworkManagerProviderRest::expect()
{
    if (!isAtRest())
        m_limit.start(limit);
}

void NetworkManagerProviderRest::onStateChanged(uint state)
{
    if (isAtWork(state))
        m_provider = Provider::AtWork;
    else
        reach();
}

void NetworkManagerProviderRest::reach()
{
    m_limit.stop();
    if (isAtRest())
        return;
    m_provider = Provider::AtRest;
    Q_EMIT reached();
}

} // namespace tarnwik
