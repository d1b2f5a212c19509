#include "support/EventLoop.h"
#include "support/networkmanager/NetworkManagerFixture.h"

#include "platform/linux/NetworkManagerNames.h"

#include <QDir>
#include <QProcess>

namespace tarnwik {

namespace {

using test::failureOf;
using test::run;

const QString name = QStringLiteral("Tarnwik");

class NetworkManagerSaving : public test::NetworkManagerTest
{
protected:
    static NetworkManagerConnectionSettings foreignVPN(const QString &id)
    {
        const NetworkManagerStringMap data{{QStringLiteral("remote"), QStringLiteral("vpn.example")}};
        return {{QStringLiteral("connection"),
                 {{QStringLiteral("type"), QStringLiteral("vpn")},
                  {QStringLiteral("id"), id},
                  {QStringLiteral("autoconnect"), false}}},
                {QStringLiteral("vpn"),
                 {{QStringLiteral("service-type"), test::otherProviderService},
                  {QStringLiteral("data"), QVariant::fromValue(data)}}}};
    }

    static QByteArray bytesOf(const QString &connectionName)
    {
        QFile file(directory() + QStringLiteral("/connections/%1.nmconnection").arg(connectionName));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << connectionName.toStdString();
        return file.readAll();
    }
};

TEST_F(NetworkManagerSaving, aNewConfigurationIsInvalidUntilItIsSaved)
{
    const auto configuration = makeConfiguration();
    EXPECT_EQ(configuration->status(), VPNStatus::Invalid);
    EXPECT_EQ(pathOf(name), QString());

    run(configuration->saveToPreferences());
    EXPECT_EQ(configuration->status(), VPNStatus::Disconnected);
}

TEST_F(NetworkManagerSaving, whatIsSavedIsLoadedByAnotherProgram)
{
    const auto configuration = saved();
    const auto other = makeManager();
    const auto found = all(*other);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front()->localizedDescription, configuration->localizedDescription);
    EXPECT_EQ(found.front()->protocolConfiguration, configuration->protocolConfiguration);
    EXPECT_EQ(found.front()->isEnabled, true);
    EXPECT_EQ(found.front()->status(), VPNStatus::Disconnected);
}

TEST_F(NetworkManagerSaving, reloadingGivesBackWhatIsSaved)
{
    const auto configuration = saved();
    const auto protocol = configuration->protocolConfiguration;
    configuration->protocolConfiguration.reset();
    configuration->localizedDescription = QStringLiteral("Something else");
    configuration->isEnabled = false;
    run(configuration->loadFromPreferences());
    EXPECT_EQ(configuration->protocolConfiguration, protocol);
    EXPECT_EQ(configuration->localizedDescription, name);
    EXPECT_TRUE(configuration->isEnabled);
}

TEST_F(NetworkManagerSaving, everyTextSurvivesSavingReloadingAndARestart)
{
    const auto configuration = makeConfiguration();
    auto &items = configuration->protocolConfiguration->providerConfiguration;
    items[QStringLiteral("tunnel_profile_json")] =
        QString(QStringLiteral("{\"a\":\"quotes ' \\\" \\\\ = ; # [x]\",\n\t\"b\":\"") + QString::fromUtf8("ü🐧")
                + QStringLiteral("\"}\n"));
    items[QStringLiteral("keychain_access_group")] = QString();
    items[QStringLiteral("long")] = QString(65536, u'x');
    items[QStringLiteral("metadata_only")] = false;
    items[QStringLiteral("text")] = QStringLiteral("true");
    const auto protocol = configuration->protocolConfiguration;
    run(configuration->saveToPreferences());
    run(configuration->loadFromPreferences());
    EXPECT_EQ(configuration->protocolConfiguration, protocol);

    control("restart");
    const auto found = all(*makeManager());
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front()->protocolConfiguration, protocol);
}

TEST_F(NetworkManagerSaving, theConnectionIsThePersonsOwnAndNeverStartsByItself)
{
    saved();
    const auto connection = settings(pathOf(name)).value(QStringLiteral("connection"));
    const auto permission = QString(QStringLiteral("user:") + currentUserName() + u':');
    EXPECT_EQ(connection.value(QStringLiteral("permissions")), QStringList(permission));
    EXPECT_EQ(connection.value(QStringLiteral("autoconnect")), QVariant(false));
    EXPECT_EQ(vpnData(settings(pathOf(name))).value(QStringLiteral("client_private_key-flags")), QStringLiteral("1"));
    EXPECT_TRUE(bytesOf(name).contains("service-type=example.tarnwik.client.tunnel"));
}

TEST_F(NetworkManagerSaving, savingAgainUpdatesTheSameConnection)
{
    const auto configuration = saved();
    const auto path = pathOf(name);
    const auto count = connectionPaths().size();
    configuration->localizedDescription = QStringLiteral("Renamed");
    configuration->protocolConfiguration->serverAddress = QStringLiteral("198.51.100.1:1");
    run(configuration->saveToPreferences());
    EXPECT_EQ(connectionPaths().size(), count);
    EXPECT_EQ(pathOf(QStringLiteral("Renamed")), path);
}

TEST_F(NetworkManagerSaving, savingAfterARestartOfTheDaemonUpdatesTheSameConnection)
{
    const auto configuration = saved();
    const auto uuid = connectionUUID(settings(pathOf(name)));
    const test::StatusLog log(*manager, configuration);
    control("restart");
    ASSERT_TRUE(test::spinUntil([&] { return log.statuses().size() == 3; }));
    ASSERT_EQ(configuration->status(), VPNStatus::Disconnected);
    run(configuration->saveToPreferences());
    EXPECT_EQ(connectionUUID(settings(pathOf(name))), uuid);
    EXPECT_EQ(all(*makeManager()).size(), 1U);
}

TEST_F(NetworkManagerSaving, savingKeepsWhatOthersHaveSet)
{
    const auto configuration = saved();
    auto changed = settings(pathOf(name));
    changed[QStringLiteral("vpn")][QStringLiteral("timeout")] = 7U;
    changed[QStringLiteral("ipv4")][QStringLiteral("dns-search")] = QStringList(QStringLiteral("example.org"));
    updateConnection(pathOf(name), changed);
    run(configuration->saveToPreferences());
    const auto after = settings(pathOf(name));
    EXPECT_EQ(after.value(QStringLiteral("vpn")).value(QStringLiteral("timeout")).toUInt(), 7U);
    EXPECT_EQ(after.value(QStringLiteral("ipv4")).value(QStringLiteral("dns-search")),
              QStringList(QStringLiteral("example.org")));
}

TEST_F(NetworkManagerSaving, aForeignConnectionIsLeftUntouched)
{
    addConnection(foreignVPN(QStringLiteral("Office")));
    const auto before = bytesOf(QStringLiteral("Office"));
    const auto configuration = saved();
    run(configuration->startVPNTunnel());
    run(configuration->stopVPNTunnel());
    run(configuration->saveToPreferences());
    EXPECT_EQ(bytesOf(QStringLiteral("Office")), before);
    EXPECT_EQ(all(*makeManager()).size(), 2U);
}

TEST_F(NetworkManagerSaving, ofTwoConnectionsOfOurNameTheOneListedFirstComesFirst)
{
    addConnection(foreignVPN(name));
    saved();
    QStringList expected;
    for (const auto &path : connectionPaths()) {
        if (isVPN(settings(path.path())))
            expected.append(vpnServiceType(settings(path.path())));
    }
    ASSERT_EQ(expected.size(), 2);

    QStringList listed;
    for (const auto &configuration : all(*makeManager())) {
        EXPECT_EQ(configuration->localizedDescription, name);
        listed.append(configuration->protocolConfiguration->providerBundleIdentifier);
    }
    EXPECT_EQ(listed, expected);
}

TEST_F(NetworkManagerSaving, connectionsThatAreNoVPNAreNotListed)
{
    EXPECT_NE(pathOf(QStringLiteral("uplink")), QString());
    EXPECT_TRUE(all(*manager).empty());
}

TEST_F(NetworkManagerSaving, aConnectionDeletedElsewhereIsInvalidUntilItIsSavedAnew)
{
    const auto configuration = saved();
    const test::StatusLog log(*manager, configuration);
    call(pathOf(name), networkmanager::connectionInterface, QStringLiteral("Delete"));
    EXPECT_TRUE(log.waitFor(VPNStatus::Invalid));
    EXPECT_NE(failureOf(configuration->loadFromPreferences()), QString());
    EXPECT_NE(failureOf(configuration->startVPNTunnel()), QString());

    run(configuration->saveToPreferences());
    EXPECT_TRUE(log.waitFor(VPNStatus::Disconnected));
    EXPECT_NE(pathOf(name), QString());
}

TEST_F(NetworkManagerSaving, aConfigurationThatWasNeverSavedCannotBeLoadedOrStarted)
{
    const auto sentence = QStringLiteral("The VPN configuration is not among the system's network settings.");
    EXPECT_EQ(failureOf(makeConfiguration()->loadFromPreferences()), sentence);
    EXPECT_EQ(failureOf(makeConfiguration()->startVPNTunnel()), sentence);
}

TEST_F(NetworkManagerSaving, aConfigurationWithoutAServiceCannotBeSaved)
{
    const auto sentence = QStringLiteral("The VPN configuration names no VPN service.");
    const auto configuration = makeConfiguration();
    configuration->protocolConfiguration->providerBundleIdentifier.clear();
    EXPECT_EQ(failureOf(configuration->saveToPreferences()), sentence);
    configuration->protocolConfiguration.reset();
    EXPECT_EQ(failureOf(configuration->saveToPreferences()), sentence);
}

TEST_F(NetworkManagerSaving, settingsThatTheDaemonRefusesAreToldInItsWords)
{
    const auto configuration = makeConfiguration();
    configuration->localizedDescription.reset();
    const auto failure = failureOf(configuration->saveToPreferences());
    EXPECT_TRUE(failure.startsWith(QStringLiteral("NetworkManager refused: connection.id"))) << failure.toStdString();
}

TEST_F(NetworkManagerSaving, withoutADaemonNothingCanBeListedOrSaved)
{
    control("stop");
    const auto sentence = QStringLiteral("NetworkManager is not running.");
    EXPECT_EQ(failureOf(makeConfiguration()->saveToPreferences()), sentence);
    try {
        all(*manager);
        ADD_FAILURE() << "The list was given without a daemon.";
    } catch (const TunnelError &error) {
        EXPECT_EQ(error.localizedDescription(), sentence);
    }
}

} // namespace

} // namespace tarnwik
