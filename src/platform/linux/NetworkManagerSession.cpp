#include "platform/linux/NetworkManagerSession.h"

#include "async/Detach.h"

namespace tarnwik {

NetworkManagerSession::NetworkManagerSession(std::shared_ptr<KeychainServices> keychain, QString userName,
                                             const QDBusConnection &bus)
    : daemon(bus)
    , activeConnections(daemon)
    , savedConnections(daemon)
    , agent(daemon, std::move(keychain))
    , userName(std::move(userName))
{
    const auto again = [this] { registerAgentAgain(); };
    QObject::connect(&daemon, &NetworkManagerDaemon::started, &agent, again);
    QObject::connect(&daemon, &NetworkManagerDaemon::connectionAdded, &agent, again);
}

/// A daemon that has been started anew knows no agents. One that cannot answer yet is asked again as soon as it serves
/// its connections, and before every start of a tunnel in any case: a failure here is none.
void NetworkManagerSession::registerAgentAgain()
{
    if (!agent.isExported())
        return;
    async::detach(
        [](std::shared_ptr<NetworkManagerSession> self) -> Task<> {
            co_await self->agent.ensureRegistered();
        }(shared_from_this()),
        [](std::exception_ptr) {});
}

} // namespace tarnwik
