#include "platform/macos/MacTunnelConfiguration.h"

#include "async/Detach.h"
#include "platform/macos/MacTunnelValues.h"
#include "platform/macos/Reply.h"

#include <utility>

namespace tarnwik {

namespace {

using Outcome = std::optional<mac::PlatformError>;

void throwIfFailed(const Outcome &outcome)
{
    if (outcome)
        throw tunnelError(*outcome);
}

} // namespace

MacTunnelConfiguration::MacTunnelConfiguration(std::shared_ptr<MacTunnelSession> session,
                                               std::shared_ptr<mac::TunnelProviderManager> manager)
    : m_session(std::move(session))
    , m_manager(std::move(manager))
    , m_isUp(!isDown(status()))
{
    takeFields();
    QObject::connect(m_session.get(), &MacTunnelSession::statusDidChange, &m_context, [this] { followStatus(); });
}

Task<> MacTunnelConfiguration::saveToPreferences()
{
    const auto self = shared_from_this();
    mac::TunnelManagerFields fields;
    if (localizedDescription)
        fields.localizedDescription = localizedDescription->toStdString();
    if (protocolConfiguration)
        fields.protocolConfiguration = nativeProtocol(*protocolConfiguration);
    fields.isEnabled = isEnabled;
    m_manager->setFields(fields);

    const Reply<Outcome> reply;
    m_manager->saveToPreferences(reply.handler());
    throwIfFailed(co_await reply.value());
}

Task<> MacTunnelConfiguration::loadFromPreferences()
{
    const auto self = shared_from_this();
    const Reply<Outcome> reply;
    m_manager->loadFromPreferences(reply.handler());
    throwIfFailed(co_await reply.value());
    takeFields();
}

Task<> MacTunnelConfiguration::startVPNTunnel()
{
    throwIfFailed(m_manager->startVPNTunnel());
    beginAnew();
    // A tunnel that fails at once may never be seen to run, and is asked for its reason all the same.
    m_isUp = true;
    co_return;
}

Task<> MacTunnelConfiguration::stopVPNTunnel()
{
    m_isStopWanted = true;
    m_manager->stopVPNTunnel();
    co_return;
}

VPNStatus MacTunnelConfiguration::status() const
{
    return vpnStatus(m_manager->status());
}

void MacTunnelConfiguration::takeFields()
{
    const mac::TunnelManagerFields fields = m_manager->fields();
    localizedDescription.reset();
    if (fields.localizedDescription)
        localizedDescription = QString::fromStdString(*fields.localizedDescription);
    protocolConfiguration.reset();
    if (fields.protocolConfiguration)
        protocolConfiguration = tunnelProtocol(*fields.protocolConfiguration);
    isEnabled = fields.isEnabled;
}

void MacTunnelConfiguration::followStatus()
{
    const bool isUp = !isDown(status());
    const bool wasUp = std::exchange(m_isUp, isUp);
    if (isUp && !wasUp) // Whoever started it.
        beginAnew();
    else if (wasUp && !isUp && !m_isStopWanted)
        async::detach(fetchLastDisconnectError(m_manager, weak_from_this(), m_starts));
}

void MacTunnelConfiguration::beginAnew()
{
    ++m_starts;
    m_lastDisconnectError.reset();
    m_isStopWanted = false;
}

// Keeps the asker alive no longer than others do: the system may take its time.
Task<> MacTunnelConfiguration::fetchLastDisconnectError(std::shared_ptr<mac::TunnelProviderManager> manager,
                                                        std::weak_ptr<MacTunnelConfiguration> asker, unsigned starts)
{
    const Reply<Outcome> reply;
    manager->fetchLastDisconnectError(reply.handler());
    const Outcome error = co_await reply.value();
    const auto self = asker.lock();
    if (self && self->m_starts == starts)
        self->takeLastDisconnectError(error);
}

void MacTunnelConfiguration::takeLastDisconnectError(const Outcome &error)
{
    if (!error)
        return;
    m_lastDisconnectError = tunnelError(*error).localizedDescription();
    Q_EMIT m_session->statusDidChange();
}

} // namespace tarnwik
