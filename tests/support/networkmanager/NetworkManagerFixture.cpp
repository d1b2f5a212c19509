#include "support/networkmanager/NetworkManagerFixture.h"

#include "support/EventLoop.h"

#include "platform/linux/NetworkManagerNames.h"
#include "platform/linux/NetworkManagerStatus.h"

#include <QDBusArgument>
#include <QFile>
#include <QProcess>

using namespace tarnwik::networkmanager;

namespace tarnwik::test {

namespace {

/// Runs one of the fixture's tools, and the event loop meanwhile: the program sees what happens as it happens.
void runTool(const QString &name, const QStringList &arguments)
{
    QProcess tool;
    tool.setProcessChannelMode(QProcess::ForwardedChannels);
    tool.start(qEnvironmentVariable("NM_FIXTURE_TOOLS") + u'/' + name, arguments);
    ASSERT_TRUE(spinUntil([&] { return tool.state() == QProcess::NotRunning; }, 2 * patience));
    ASSERT_EQ(tool.exitCode(), 0) << name.toStdString();
}

QDBusConnection somebodyElse()
{
    return QDBusConnection::systemBus();
}

QVariant property(const QString &service, const QString &path, const QString &interface, const QString &name)
{
    auto message = QDBusMessage::createMethodCall(service, path, propertiesInterface, QStringLiteral("Get"));
    message.setAutoStartService(false);
    message.setArguments({interface, name});
    return qdbus_cast<QDBusVariant>(somebodyElse().call(message).arguments().value(0)).variant();
}

/// Whether a provider is at work: a tunnel of the next test would suffer from what it says yet.
bool isAtWork(const QString &provider)
{
    const auto state = property(provider, vpnPluginPath, vpnPluginInterface, QStringLiteral("State")).toUInt();
    return tarnwik::isAtWork(NetworkManagerServiceState(state));
}

/// Waits until \a provider is at rest. A daemon that stops a tunnel while its provider's process still starts may give
/// the provider the order to connect after that, and forget it: it gets the order to end from us then.
bool comesToRest(const QString &provider)
{
    const auto isAtRest = [&provider] { return !isAtWork(provider); };
    if (spinUntil(isAtRest, std::chrono::seconds(3)))
        return true;
    somebodyElse().call(
        QDBusMessage::createMethodCall(provider, vpnPluginPath, vpnPluginInterface, QStringLiteral("Disconnect")));
    return spinUntil(isAtRest);
}

} // namespace

StatusLog::StatusLog(TunnelManager &manager, std::shared_ptr<TunnelConfiguration> configuration)
    : m_configuration(std::move(configuration))
    , m_statuses{m_configuration->status()}
{
    QObject::connect(&manager, &TunnelManager::statusDidChange, &m_context, [this] {
        if (m_configuration->status() != m_statuses.back())
            m_statuses.push_back(m_configuration->status());
    });
}

bool StatusLog::waitFor(VPNStatus status) const
{
    return spinUntil([&] { return m_statuses.back() == status; });
}

EndLog::EndLog()
{
    EXPECT_TRUE(somebodyElse().connect(serviceName, {}, activeInterface, QStringLiteral("StateChanged"), this,
                                       SLOT(onStateChanged(uint, uint, QDBusMessage))));
}

std::optional<uint> EndLog::waitFor(const QString &activePath) const
{
    if (!spinUntil([&] { return m_reasons.contains(activePath); }))
        return std::nullopt;
    return m_reasons.value(activePath);
}

void EndLog::onStateChanged(uint state, uint reason, const QDBusMessage &message)
{
    if (NetworkManagerActiveState(state) == NetworkManagerActiveState::Deactivated)
        m_reasons.insert(message.path(), reason);
}

void NetworkManagerTest::SetUp()
{
    ASSERT_FALSE(directory().isEmpty()) << "Run this program by run-beside-networkmanager.sh.";
    registerNetworkManagerTypes();
    if (!QFile::exists(directory() + QStringLiteral("/services/nm-%1.name").arg(providerService))) {
        runTool(QStringLiteral("install-provider.sh"), {providerService});
        runTool(QStringLiteral("install-provider.sh"), {otherProviderService});
    }
    control("start");
    setProviderMode("ok");
    keychain->put(QStringLiteral("Tarnwik"), keyAccount, privateKey);
    manager = makeManager();
}

void NetworkManagerTest::TearDown()
{
    manager.reset();
    control("start");
    for (const auto &path : connectionPaths()) {
        if (isVPN(settings(path.path())))
            call(path.path(), connectionInterface, QStringLiteral("Delete"));
    }
    // What is still active of them goes down by itself.
    EXPECT_TRUE(spinUntil([] { return activeVPNs().isEmpty(); }));
    for (const QString &provider : {providerService, otherProviderService})
        EXPECT_TRUE(comesToRest(provider));
}

std::unique_ptr<TunnelManager> NetworkManagerTest::makeManager(std::chrono::milliseconds endLimit)
{
    static int count = 0;
    const auto bus =
        QDBusConnection::connectToBus(QDBusConnection::SystemBus, QStringLiteral("manager %1").arg(++count));
    return std::make_unique<NetworkManagerTunnelManager>(keychain, currentUserName(), bus, endLimit);
}

std::shared_ptr<TunnelConfiguration> NetworkManagerTest::makeConfiguration(const QString &service)
{
    auto configuration = manager->create();
    configuration->localizedDescription = QStringLiteral("Tarnwik");
    configuration->isEnabled = true;
    TunnelProviderProtocol protocol;
    protocol.providerBundleIdentifier = service;
    protocol.serverAddress = QStringLiteral("192.0.2.1:51820");
    protocol.providerConfiguration = {
        {QStringLiteral("tunnel_profile_json"), QStringLiteral("{}")},
        {QStringLiteral("client_private_key_ref"), keyAccount},
        {QStringLiteral("keychain_service"), QStringLiteral("Tarnwik")},
        {QStringLiteral("metadata_only"), true},
    };
    configuration->protocolConfiguration = protocol;
    return configuration;
}

std::shared_ptr<TunnelConfiguration> NetworkManagerTest::saved(const QString &service)
{
    auto configuration = makeConfiguration(service);
    run(configuration->saveToPreferences());
    return configuration;
}

TunnelManager::Configurations NetworkManagerTest::all(TunnelManager &manager)
{
    return run(manager.loadAllFromPreferences()).value();
}

void NetworkManagerTest::setProviderMode(const char *mode)
{
    QFile file(directory() + QStringLiteral("/provider-mode"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(mode);
}

void NetworkManagerTest::control(const char *verb)
{
    runTool(QStringLiteral("control.sh"), {QString::fromLatin1(verb)});
}

QString NetworkManagerTest::directory()
{
    return qEnvironmentVariable("NM_FIXTURE_DIR");
}

QDBusMessage NetworkManagerTest::call(const QString &path, const QString &interface, const QString &method,
                                      const QVariantList &arguments)
{
    auto message = QDBusMessage::createMethodCall(serviceName, path, interface, method);
    message.setArguments(arguments);
    // Blocks without running the event loop of the program under test, as somebody else's call would.
    auto reply = somebodyElse().call(message);
    EXPECT_NE(reply.type(), QDBusMessage::ErrorMessage)
        << method.toStdString() << ": " << reply.errorMessage().toStdString();
    return reply;
}

QList<QDBusObjectPath> NetworkManagerTest::connectionPaths()
{
    const auto reply = call(settingsPath, settingsInterface, QStringLiteral("ListConnections"));
    return qdbus_cast<QList<QDBusObjectPath>>(reply.arguments().value(0));
}

NetworkManagerConnectionSettings NetworkManagerTest::settings(const QString &path)
{
    // Without call()'s expectation: the daemon's own connection of a tunnel's device goes when the device does.
    const auto reply = somebodyElse().call(
        QDBusMessage::createMethodCall(serviceName, path, connectionInterface, QStringLiteral("GetSettings")));
    return qdbus_cast<NetworkManagerConnectionSettings>(reply.arguments().value(0));
}

QString NetworkManagerTest::pathOf(const QString &connectionName)
{
    for (const auto &path : connectionPaths()) {
        if (settings(path.path()).value(QStringLiteral("connection")).value(QStringLiteral("id")) == connectionName)
            return path.path();
    }
    return {};
}

QString NetworkManagerTest::addConnection(const NetworkManagerConnectionSettings &settings)
{
    const auto reply = call(settingsPath, settingsInterface, QStringLiteral("AddConnection2"),
                            {QVariant::fromValue(settings), 1U, QVariantMap()});
    return qdbus_cast<QDBusObjectPath>(reply.arguments().value(0)).path();
}

void NetworkManagerTest::updateConnection(const QString &path, const NetworkManagerConnectionSettings &settings)
{
    call(path, connectionInterface, QStringLiteral("Update2"), {QVariant::fromValue(settings), 1U, QVariantMap()});
}

QString NetworkManagerTest::activate(const QString &path)
{
    const auto none = QVariant::fromValue(QDBusObjectPath(QStringLiteral("/")));
    const auto reply = call(managerPath, managerInterface, QStringLiteral("ActivateConnection"),
                            {QVariant::fromValue(QDBusObjectPath(path)), none, none});
    return qdbus_cast<QDBusObjectPath>(reply.arguments().value(0)).path();
}

void NetworkManagerTest::deactivate(const QString &activePath)
{
    call(managerPath, managerInterface, QStringLiteral("DeactivateConnection"),
         {QVariant::fromValue(QDBusObjectPath(activePath))});
}

QStringList NetworkManagerTest::activePaths()
{
    QStringList paths;
    const auto value = property(serviceName, managerPath, managerInterface, QStringLiteral("ActiveConnections"));
    for (const auto &path : qdbus_cast<QList<QDBusObjectPath>>(value))
        paths.append(path.path());
    return paths;
}

QStringList NetworkManagerTest::activeVPNs()
{
    QStringList paths;
    for (const auto &path : activePaths()) {
        if (property(serviceName, path, activeInterface, QStringLiteral("Vpn")).toBool())
            paths.append(path);
    }
    return paths;
}

QString failureOf(Task<> task)
{
    try {
        run(std::move(task));
    } catch (const TunnelError &error) {
        return error.localizedDescription();
    }
    return {};
}

} // namespace tarnwik::test
