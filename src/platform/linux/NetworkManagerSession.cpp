#include "platform/linux/NetworkManagerSession.h"

#include "async/Detach.h"
#include "platform/linux/NetworkManagerNames.h"

#include <QDBusArgument>

using namespace tarnwik::networkmanager;

namespace tarnwik {

NetworkManagerSession::NetworkManagerSession(std::shared_ptr<KeychainServices> keychain, QString userName,
                                             const QDBusConnection &bus, std::chrono::milliseconds endLimit)
    : daemon(bus)
    , activeConnections(daemon)
    , savedConnections(daemon)
    , agent(daemon, std::move(keychain))
    , userName(std::move(userName))
    , endLimit(endLimit)
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

Task<NetworkManagerConnectionSettings> savedSettings(std::shared_ptr<NetworkManagerSession> session, QString path)
{
    const auto reply = co_await session->daemon.call(path, connectionInterface, QStringLiteral("GetSettings"));
    co_return qdbus_cast<NetworkManagerConnectionSettings>(reply.arguments().value(0));
}

} // namespace tarnwik
