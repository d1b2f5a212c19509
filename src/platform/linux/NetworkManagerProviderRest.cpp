#include "platform/linux/NetworkManagerProviderRest.h"

#include "platform/linux/NetworkManagerNames.h"
#include "platform/linux/NetworkManagerStatus.h"

#include <chrono>

using namespace tarnwik::networkmanager;

namespace tarnwik {

namespace {

constexpr auto limit = std::chrono::seconds(1);

} // namespace

NetworkManagerProviderRest::NetworkManagerProviderRest(QDBusConnection bus, const QString &service, Provider now)
    : m_watcher(service, bus, QDBusServiceWatcher::WatchForUnregistration)
    , m_provider(now)
{
    QObject::connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, &NetworkManagerProviderRest::reach);
    bus.connect(service, vpnPluginPath, vpnPluginInterface, QStringLiteral("StateChanged"), this,
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
    if (isAtWork(NetworkManagerServiceState(state)))
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
