#include "platform/linux/NetworkManagerConfiguration.h"

#include "platform/linux/NetworkManagerErrorText.h"
#include "platform/linux/NetworkManagerNames.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QUuid>

using namespace tarnwik::networkmanager;

namespace tarnwik {

namespace {

/// NM_SETTINGS_ADD_CONNECTION2_FLAG_TO_DISK and NM_SETTINGS_UPDATE2_FLAG_TO_DISK.
constexpr uint toDisk = 1;

TunnelError notSaved()
{
    return TunnelError(QStringLiteral("The VPN configuration is not among the system's network settings."));
}

} // namespace

NetworkManagerConfiguration::NetworkManagerConfiguration(std::shared_ptr<NetworkManagerSession> session)
    : m_session(std::move(session))
{
}

NetworkManagerConfiguration::NetworkManagerConfiguration(std::shared_ptr<NetworkManagerSession> session,
                                                         const NetworkManagerConnectionSettings &settings)
    : m_session(std::move(session))
    , m_uuid(connectionUUID(settings))
{
    setFields(tunnelFields(settings));
}

Task<> NetworkManagerConfiguration::saveToPreferences()
{
    return withTunnelErrors(save(fields()), providerBundleIdentifier());
}

Task<> NetworkManagerConfiguration::loadFromPreferences()
{
    return withTunnelErrors(load(), providerBundleIdentifier());
}

Task<> NetworkManagerConfiguration::startVPNTunnel()
{
    return withTunnelErrors(start(), providerBundleIdentifier());
}

Task<> NetworkManagerConfiguration::stopVPNTunnel()
{
    const auto self = shared_from_this();
    co_await m_turns.next();
    const NetworkManagerTurns::Turn turn(m_turns);
    const auto activePath = m_uuid ? m_session->activeConnections.path(*m_uuid) : std::nullopt;
    if (!activePath)
        co_return;
    try {
        co_await deactivate(*activePath);
    } catch (const NetworkManagerCallError &) {
        // It has ended meanwhile, or the daemon has. Where the daemon refuses, the status goes on telling that it runs.
    }
}

VPNStatus NetworkManagerConfiguration::status() const
{
    if (!m_uuid || !m_session->daemon.isRunning() || !m_session->savedConnections.path(*m_uuid))
        return VPNStatus::Invalid;
    return m_session->activeConnections.status(*m_uuid);
}

std::optional<QString> NetworkManagerConfiguration::lastDisconnectError() const
{
    const auto reason = m_uuid ? m_session->activeConnections.endReason(*m_uuid) : std::nullopt;
    return reason ? sentence(*reason, m_session->agent.keychainFailure(*m_uuid)) : std::nullopt;
}

NetworkManagerTunnelFields NetworkManagerConfiguration::fields() const
{
    return {localizedDescription, protocolConfiguration, isEnabled};
}

void NetworkManagerConfiguration::setFields(const NetworkManagerTunnelFields &fields)
{
    localizedDescription = fields.localizedDescription;
    protocolConfiguration = fields.protocolConfiguration;
    isEnabled = fields.isEnabled;
}

QString NetworkManagerConfiguration::providerBundleIdentifier() const
{
    return protocolConfiguration ? protocolConfiguration->providerBundleIdentifier : QString();
}

Task<> NetworkManagerConfiguration::save(NetworkManagerTunnelFields fields)
{
    const auto self = shared_from_this();
    if (!fields.protocolConfiguration || fields.protocolConfiguration->providerBundleIdentifier.isEmpty())
        throw TunnelError(QStringLiteral("The VPN configuration names no VPN service."));

    co_await m_turns.next();
    const NetworkManagerTurns::Turn turn(m_turns);
    std::optional<QString> path;
    if (m_uuid)
        path = co_await m_session->savedConnections.find(*m_uuid);
    if (path)
        co_await update(*path, fields);
    else
        co_await add(fields);
}

Task<> NetworkManagerConfiguration::add(NetworkManagerTunnelFields fields)
{
    const auto uuid = m_uuid.value_or(QUuid::createUuid().toString(QUuid::WithoutBraces));
    const auto settings = withTunnelFields({}, uuid, fields, m_session->userName);
    const QVariantList arguments{QVariant::fromValue(settings), toDisk, QVariantMap()};
    const auto reply =
        co_await m_session->daemon.call(settingsPath, settingsInterface, QStringLiteral("AddConnection2"), arguments);
    m_uuid = uuid;
    m_session->savedConnections.follow(uuid, qdbus_cast<QDBusObjectPath>(reply.arguments().value(0)).path());
}

Task<> NetworkManagerConfiguration::update(QString path, NetworkManagerTunnelFields fields)
{
    const auto before = co_await savedSettings(m_session, path);
    const auto after = withTunnelFields(before, *m_uuid, fields, m_session->userName);
    const QVariantList arguments{QVariant::fromValue(after), toDisk, QVariantMap()};
    co_await m_session->daemon.call(path, connectionInterface, QStringLiteral("Update2"), arguments);
    m_isChanged |= vpnServiceType(after) != vpnServiceType(before) || vpnData(after) != vpnData(before);
}

Task<> NetworkManagerConfiguration::load()
{
    const auto self = shared_from_this();
    co_await m_turns.next();
    const NetworkManagerTurns::Turn turn(m_turns);
    const auto path = co_await savedPath();
    setFields(tunnelFields(co_await savedSettings(m_session, path)));
}

Task<> NetworkManagerConfiguration::start()
{
    const auto self = shared_from_this();
    co_await m_turns.next();
    const NetworkManagerTurns::Turn turn(m_turns);
    const auto path = co_await savedPath();
    if (!isEnabled)
        throw TunnelError(QStringLiteral("The VPN configuration is disabled."));

    co_await m_session->agent.ensureRegistered();
    m_session->agent.serve(*m_uuid, providerBundleIdentifier());

    auto &activeConnections = m_session->activeConnections;
    if (const auto activePath = activeConnections.path(*m_uuid)) {
        const auto isEnding = activeConnections.status(*m_uuid) == VPNStatus::Disconnecting;
        if (!isEnding && !m_isChanged)
            co_return;
        if (!isEnding)
            co_await deactivate(*activePath);
        co_await activeConnections.waitUntilEnded(*m_uuid, m_session->endLimit);
    }
    co_await activate(path);
    m_isChanged = false;
}

Task<> NetworkManagerConfiguration::activate(QString path)
{
    auto &activeConnections = m_session->activeConnections;
    m_session->agent.forgetFailure(*m_uuid);
    activeConnections.forgetEndReason(*m_uuid);

    const NetworkManagerActiveConnections::Question question(activeConnections);
    auto rest = std::make_shared<NetworkManagerProviderRest>(m_session->daemon.bus(), providerBundleIdentifier(),
                                                             NetworkManagerProviderRest::Provider::AtRest);
    const QDBusObjectPath anything(QStringLiteral("/"));
    const QVariantList arguments{QVariant::fromValue(QDBusObjectPath(path)), QVariant::fromValue(anything),
                                 QVariant::fromValue(anything)};
    std::optional<QDBusMessage> reply;
    try {
        reply = co_await m_session->daemon.call(managerPath, managerInterface, QStringLiteral("ActivateConnection"),
                                                arguments);
    } catch (const NetworkManagerCallError &error) {
        if (error.name() != errors::connectionAlreadyActive)
            throw;
    }
    if (reply)
        activeConnections.adopt(qdbus_cast<QDBusObjectPath>(reply->arguments().value(0)).path(), *m_uuid,
                                std::move(rest));
    else // Somebody else has just started it, which is what was wanted.
        co_await activeConnections.refresh();
}

Task<> NetworkManagerConfiguration::deactivate(QString activePath)
{
    auto &activeConnections = m_session->activeConnections;
    const NetworkManagerActiveConnections::Question question(activeConnections);
    activeConnections.expectEnd(activePath, providerBundleIdentifier());
    try {
        co_await m_session->daemon.call(managerPath, managerInterface, QStringLiteral("DeactivateConnection"),
                                        {QVariant::fromValue(QDBusObjectPath(activePath))});
    } catch (const NetworkManagerCallError &) {
        activeConnections.forgetExpectedEnd(activePath);
        throw;
    }
    activeConnections.confirmEnd(activePath);
}

Task<QString> NetworkManagerConfiguration::savedPath()
{
    const auto path = m_uuid ? co_await m_session->savedConnections.find(*m_uuid) : std::nullopt;
    if (!path)
        throw notSaved();
    co_return *path;
}

} // namespace tarnwik
