#include "platform/linux/NetworkManagerSecretAgent.h"

#include "platform/linux/NetworkManagerNames.h"
#include "platform/linux/NetworkManagerPrivateKey.h"

#include <QDBusArgument>
#include <QDBusPendingCall>

using namespace tarnwik::networkmanager;

namespace tarnwik {

namespace {

/// NM_SECRET_AGENT_CAPABILITY_VPN_HINTS: the agent understands the hints that come with a VPN's question.
constexpr uint vpnHintsCapability = 1;

/// The daemon takes each identifier once a user, and several of our programs may run side by side: the name on the bus
/// tells them apart.
QString identifier(const QDBusConnection &bus)
{
    auto suffix = bus.baseService();
    suffix.replace(u':', u'c').replace(u'.', u'_');
    return QStringLiteral("example.tarnwik.client.%1").arg(suffix);
}

QDBusMessage reply(const QDBusMessage &question, const NetworkManagerPrivateKey &key)
{
    const NetworkManagerStringMap secrets{{privateKeyItem, key.text()}};
    const NetworkManagerConnectionSettings answer{
        {QStringLiteral("vpn"), {{QStringLiteral("secrets"), QVariant::fromValue(secrets)}}}};
    return question.createReply(QVariant::fromValue(answer));
}

} // namespace

NetworkManagerSecretAgent::NetworkManagerSecretAgent(NetworkManagerDaemon &daemon,
                                                     std::shared_ptr<KeychainServices> keychain)
    : m_daemon(daemon)
    , m_keychain(std::move(keychain))
{
    QObject::connect(&m_daemon, &NetworkManagerDaemon::stopped, this, [this] { m_registeredWith.clear(); });
}

NetworkManagerSecretAgent::~NetworkManagerSecretAgent()
{
    auto bus = m_daemon.bus();
    if (!m_registeredWith.isEmpty())
        bus.asyncCall(unregistration());
    if (m_isExported)
        bus.unregisterObject(secretAgentPath);
}

Task<> NetworkManagerSecretAgent::ensureRegistered()
{
    co_await m_turns.next();
    const NetworkManagerTurns::Turn turn(m_turns);
    if (!m_registeredWith.isEmpty())
        co_return;

    // Known before the daemon is told of us: it may ask before it answers, and only it is answered.
    const auto owner = co_await m_daemon.owner();
    auto bus = m_daemon.bus();
    if (!m_isExported)
        m_isExported = bus.registerVirtualObject(secretAgentPath, this);
    if (!m_isExported)
        throw TunnelError(QStringLiteral("This program has a secret agent already."));

    m_registeredWith = owner;
    try {
        const auto answer =
            co_await m_daemon.call(agentManagerPath, agentManagerInterface, QStringLiteral("RegisterWithCapabilities"),
                                   {identifier(bus), vpnHintsCapability});
        m_registeredWith = answer.service();
    } catch (const NetworkManagerCallError &) {
        m_registeredWith.clear();
        throw;
    }
}

std::optional<OSStatus> NetworkManagerSecretAgent::keychainFailure(const QString &uuid) const
{
    const auto failure = m_failures.find(uuid);
    return failure == m_failures.end() ? std::nullopt : std::optional(*failure);
}

QString NetworkManagerSecretAgent::introspect(const QString &) const
{
    return QStringLiteral(R"(<interface name="org.freedesktop.NetworkManager.SecretAgent">
  <method name="GetSecrets">
    <arg name="connection" type="a{sa{sv}}" direction="in"/>
    <arg name="connection_path" type="o" direction="in"/>
    <arg name="setting_name" type="s" direction="in"/>
    <arg name="hints" type="as" direction="in"/>
    <arg name="flags" type="u" direction="in"/>
    <arg name="secrets" type="a{sa{sv}}" direction="out"/>
  </method>
  <method name="CancelGetSecrets">
    <arg name="connection_path" type="o" direction="in"/>
    <arg name="setting_name" type="s" direction="in"/>
  </method>
  <method name="SaveSecrets">
    <arg name="connection" type="a{sa{sv}}" direction="in"/>
    <arg name="connection_path" type="o" direction="in"/>
  </method>
  <method name="DeleteSecrets">
    <arg name="connection" type="a{sa{sv}}" direction="in"/>
    <arg name="connection_path" type="o" direction="in"/>
  </method>
</interface>
)");
}

bool NetworkManagerSecretAgent::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    if (message.interface() != secretAgentInterface)
        return false;
    if (m_registeredWith.isEmpty() || message.service() != m_registeredWith) {
        connection.send(message.createErrorReply(errors::agentPermissionDenied,
                                                 QStringLiteral("Only NetworkManager is answered.")));
        return true;
    }

    const auto method = message.member();
    if (method == QLatin1StringView("GetSecrets")) {
        answerGetSecrets(message, connection);
        return true;
    }
    // The keychain is the program's own: NetworkManager, which calls these whenever a connection is added, started or
    // deleted, neither stores nor deletes keys there. A question is answered before it can be cancelled.
    if (method == QLatin1StringView("SaveSecrets") || method == QLatin1StringView("DeleteSecrets")
        || method == QLatin1StringView("CancelGetSecrets")) {
        connection.send(message.createReply());
        return true;
    }
    return false;
}

void NetworkManagerSecretAgent::answerGetSecrets(const QDBusMessage &message, const QDBusConnection &connection)
{
    const auto arguments = message.arguments();
    const auto settings = qdbus_cast<NetworkManagerConnectionSettings>(arguments.value(0));
    if (!isServed(settings, arguments.value(2).toString())) {
        connection.send(
            message.createErrorReply(errors::agentNoSecrets, QStringLiteral("This connection is another's.")));
        return;
    }

    NetworkManagerPrivateKey key;
    const auto status = key.read(*m_keychain, vpnData(settings));
    if (status == errSecSuccess) {
        connection.send(reply(message, key));
        return;
    }
    m_failures.insert(connectionUUID(settings), status);
    connection.send(
        message.createErrorReply(status == errSecUserCanceled ? errors::agentUserCanceled : errors::agentNoSecrets,
                                 QStringLiteral("The keychain answered with status %1.").arg(status)));
}

bool NetworkManagerSecretAgent::isServed(const NetworkManagerConnectionSettings &settings, const QString &section) const
{
    const auto served = m_served.find(connectionUUID(settings));
    return section == QLatin1StringView("vpn") && served != m_served.end() && *served == vpnServiceType(settings);
}

QDBusMessage NetworkManagerSecretAgent::unregistration() const
{
    auto message = QDBusMessage::createMethodCall(serviceName, agentManagerPath, agentManagerInterface,
                                                  QStringLiteral("Unregister"));
    message.setAutoStartService(false);
    return message;
}

} // namespace tarnwik
