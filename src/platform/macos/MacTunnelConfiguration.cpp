#include "platform/macos/MacTunnelConfiguration.h"

#include "async/Detach.h"
#include "async/Gate.h"
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
    , m_isUp(!isDown(systemStatus()))
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
    const auto self = shared_from_this();
    throwIfFailed(m_manager->startVPNTunnel());
    m_lastDisconnectError.reset();
    m_isStopWanted = false;
    co_await waitForStatus(false);
    // A tunnel that has already failed was never seen to run, and is asked for its reason all the same.
    m_isUp = true;
    followStatus();
}

Task<> MacTunnelConfiguration::stopVPNTunnel()
{
    const auto self = shared_from_this();
    m_isStopWanted = true;
    m_manager->stopVPNTunnel();
    co_await waitForStatus(true);
}

VPNStatus MacTunnelConfiguration::status() const
{
    const VPNStatus status = systemStatus();
    return m_isReasonAwaited && status == VPNStatus::Disconnected ? VPNStatus::Disconnecting : status;
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

VPNStatus MacTunnelConfiguration::systemStatus() const
{
    return vpnStatus(m_manager->status());
}

void MacTunnelConfiguration::followStatus()
{
    const bool isUp = !isDown(systemStatus());
    const bool wasUp = std::exchange(m_isUp, isUp);
    if (isUp && !wasUp) {
        // Whoever started it.
        m_lastDisconnectError.reset();
        m_isStopWanted = false;
    } else if (wasUp && !isUp && !m_isStopWanted) {
        async::detach(fetchLastDisconnectError(shared_from_this()));
    }
}

// The system's calls return before its status follows.
Task<> MacTunnelConfiguration::waitForStatus(bool isDownWanted)
{
    const auto isReached = [this, isDownWanted] {
        const VPNStatus status = systemStatus();
        return (status == VPNStatus::Disconnecting || isDown(status)) == isDownWanted;
    };
    if (isReached())
        co_return;
    async::Gate gate;
    QObject::connect(m_session.get(), &MacTunnelSession::statusDidChange, &gate, [&] {
        if (isReached())
            gate.open();
    });
    m_session->clock().after(tunnelSettlingLimit, &gate, [&gate] { gate.open(); });
    co_await gate.wait();
}

Task<> MacTunnelConfiguration::fetchLastDisconnectError(std::shared_ptr<MacTunnelConfiguration> self)
{
    const Reply<Outcome> reply;
    self->m_isReasonAwaited = true;
    self->m_session->clock().after(tunnelSettlingLimit, &self->m_context,
                                   [answer = reply.handler()] { answer(std::nullopt); });
    self->m_manager->fetchLastDisconnectError(reply.handler());
    const Outcome error = co_await reply.value();
    self->m_isReasonAwaited = false;
    if (error && isDown(self->systemStatus()))
        self->m_lastDisconnectError = tunnelError(*error).localizedDescription();
    Q_EMIT self->m_session->statusDidChange();
}

} // namespace tarnwik
