#include "platform/macos/MacTunnelManager.h"

#include "platform/macos/MacTunnelConfiguration.h"
#include "platform/macos/MacTunnelValues.h"
#include "platform/macos/Reply.h"

#include <utility>

namespace tarnwik {

namespace {

Task<std::optional<TunnelManager::Configurations>> loadAll(std::shared_ptr<MacTunnelSession> session)
{
    const Reply<mac::NetworkExtension::Loaded> reply;
    session->networkExtension().loadAllFromPreferences(reply.handler());
    const auto loaded = co_await reply.value();
    if (loaded.error)
        throw tunnelError(*loaded.error);
    if (!loaded.managers)
        co_return std::nullopt;

    TunnelManager::Configurations configurations;
    for (const auto &manager : *loaded.managers)
        configurations.push_back(std::make_shared<MacTunnelConfiguration>(session, manager));
    co_return configurations;
}

} // namespace

MacTunnelManager::MacTunnelManager(std::shared_ptr<mac::NetworkExtension> networkExtension)
    : m_session(std::make_shared<MacTunnelSession>(std::move(networkExtension)))
{
    QObject::connect(m_session.get(), &MacTunnelSession::statusDidChange, this, &TunnelManager::statusDidChange);
}

Task<std::optional<TunnelManager::Configurations>> MacTunnelManager::loadAllFromPreferences()
{
    return loadAll(m_session);
}

std::shared_ptr<TunnelConfiguration> MacTunnelManager::create()
{
    return std::make_shared<MacTunnelConfiguration>(m_session, m_session->networkExtension().create());
}

} // namespace tarnwik
