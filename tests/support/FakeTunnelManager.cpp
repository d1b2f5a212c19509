#include "support/FakeTunnelManager.h"

#include "async/Clock.h"

namespace tarnwik::test {

Task<> FakeTunnelConfiguration::saveToPreferences()
{
    co_await m_manager->perform(QStringLiteral("save"));
    if (currentStatus == VPNStatus::Invalid)
        currentStatus = VPNStatus::Disconnected;
}

Task<> FakeTunnelConfiguration::loadFromPreferences()
{
    return m_manager->perform(QStringLiteral("load"));
}

Task<> FakeTunnelConfiguration::startVPNTunnel()
{
    co_await m_manager->perform(QStringLiteral("start"));
    currentStatus = VPNStatus::Connecting;
}

Task<> FakeTunnelConfiguration::stopVPNTunnel()
{
    co_await m_manager->perform(QStringLiteral("stop"));
    if (currentStatus != VPNStatus::Invalid)
        currentStatus = VPNStatus::Disconnected;
}

Task<std::optional<TunnelManager::Configurations>> FakeTunnelManager::loadAllFromPreferences()
{
    co_await perform(QStringLiteral("loadAll"));
    co_return saved;
}

std::shared_ptr<TunnelConfiguration> FakeTunnelManager::create()
{
    operations << QStringLiteral("create");
    created.push_back(std::make_shared<FakeTunnelConfiguration>(this));
    return created.back();
}

std::shared_ptr<FakeTunnelConfiguration> FakeTunnelManager::addSaved(const std::optional<QString> &description)
{
    auto configuration = std::make_shared<FakeTunnelConfiguration>(this);
    configuration->localizedDescription = description;
    configuration->currentStatus = VPNStatus::Disconnected;
    saved->push_back(configuration);
    return configuration;
}

void FakeTunnelManager::release()
{
    held.clear();
    for (const auto &gate : std::exchange(m_gates, {}))
        gate->open();
}

Task<> FakeTunnelManager::perform(QString operation)
{
    operations << operation;
    if (held.contains(operation)) {
        const auto gate = std::make_shared<async::Gate>();
        m_gates.push_back(gate);
        co_await gate->wait();
    } else {
        co_await async::yield();
    }
    if (failures.contains(operation))
        throw TunnelError(failures.value(operation));
}

} // namespace tarnwik::test
