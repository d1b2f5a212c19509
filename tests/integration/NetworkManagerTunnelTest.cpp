#include "support/EventLoop.h"
#include "support/networkmanager/NetworkManagerFixture.h"

#include "platform/linux/NetworkManagerNames.h"

namespace tarnwik {

namespace {

using test::failureOf;
using test::run;
using test::StatusLog;
using Statuses = std::vector<VPNStatus>;

const QString name = QStringLiteral("Tarnwik");

class NetworkManagerTunnel : public test::NetworkManagerTest
{
};

TEST_F(NetworkManagerTunnel, connectsAndDisconnects)
{
    const auto configuration = saved();
    const StatusLog log(*manager, configuration);
    run(configuration->startVPNTunnel());
    ASSERT_TRUE(log.waitFor(VPNStatus::Connected));
    run(configuration->stopVPNTunnel());
    ASSERT_TRUE(log.waitFor(VPNStatus::Disconnected));
    EXPECT_EQ(log.statuses(),
              (Statuses{VPNStatus::Disconnected, VPNStatus::Connecting, VPNStatus::Connected, VPNStatus::Disconnecting,
                        VPNStatus::Disconnected}));
    EXPECT_FALSE(configuration->lastDisconnectError());
}

TEST_F(NetworkManagerTunnel, isConnectingAndDisconnectingBeforeStartAndStopReturn)
{
    setProviderMode("slow");
    const auto configuration = saved();
    run(configuration->startVPNTunnel());
    EXPECT_EQ(configuration->status(), VPNStatus::Connecting);
    StatusLog log(*manager, configuration);
    ASSERT_TRUE(log.waitFor(VPNStatus::Connected));
    run(configuration->stopVPNTunnel());
    EXPECT_TRUE(configuration->status() == VPNStatus::Disconnecting
                || configuration->status() == VPNStatus::Disconnected);
    EXPECT_TRUE(log.waitFor(VPNStatus::Disconnected));
    EXPECT_EQ(log.statuses().at(2), VPNStatus::Disconnecting);
}

TEST_F(NetworkManagerTunnel, canBeStoppedWhileItConnects)
{
    setProviderMode("hang");
    const auto configuration = saved();
    const StatusLog log(*manager, configuration);
    run(configuration->startVPNTunnel());
    run(configuration->stopVPNTunnel());
    ASSERT_TRUE(log.waitFor(VPNStatus::Disconnected));
    EXPECT_EQ(
        log.statuses(),
        (Statuses{VPNStatus::Disconnected, VPNStatus::Connecting, VPNStatus::Disconnecting, VPNStatus::Disconnected}));
    EXPECT_FALSE(configuration->lastDisconnectError());
}

TEST_F(NetworkManagerTunnel, aStopThatComesDuringTheStartStopsWhatWasStarted)
{
    setProviderMode("hang");
    const auto configuration = saved();
    const StatusLog log(*manager, configuration);
    test::Running<> start(configuration->startVPNTunnel());
    test::Running<> stop(configuration->stopVPNTunnel());
    start.result();
    stop.result();
    EXPECT_TRUE(log.waitFor(VPNStatus::Disconnected));
}

TEST_F(NetworkManagerTunnel, aTunnelThatDoesNotRunIsLeftAloneByStop)
{
    run(makeConfiguration()->stopVPNTunnel());
    const auto configuration = saved();
    run(configuration->stopVPNTunnel());
    EXPECT_EQ(configuration->status(), VPNStatus::Disconnected);
    EXPECT_FALSE(configuration->lastDisconnectError());
}

TEST_F(NetworkManagerTunnel, oneThatWasStoppedElsewhereIsLeftAloneByStop)
{
    const auto configuration = saved();
    const StatusLog log(*manager, configuration);
    const auto active = activate(pathOf(name));
    ASSERT_TRUE(log.waitFor(VPNStatus::Connected));
    // The manager has not heard of it when it is asked to stop, and the daemon answers that nothing is active.
    deactivate(active);
    run(configuration->stopVPNTunnel());
    EXPECT_TRUE(log.waitFor(VPNStatus::Disconnected));
}

/// A way in which a tunnel fails after its start, and what a person is told.
struct Failure
{
    const char *mode;
    const char *sentence;
};

class NetworkManagerFailure : public test::NetworkManagerTest, public testing::WithParamInterface<Failure>
{
};

TEST_P(NetworkManagerFailure, takesTheTunnelDownAndIsToldInASentence)
{
    setProviderMode(GetParam().mode);
    const auto configuration = saved();
    // Shorter than the daemon's 60 seconds, for the provider that hangs.
    auto settingsWithTimeout = settings(pathOf(name));
    settingsWithTimeout[QStringLiteral("vpn")][QStringLiteral("timeout")] = 1U;
    updateConnection(pathOf(name), settingsWithTimeout);

    const StatusLog log(*manager, configuration);
    run(configuration->startVPNTunnel());
    ASSERT_TRUE(test::spinUntil([&] { return configuration->lastDisconnectError().has_value(); }));
    EXPECT_EQ(configuration->lastDisconnectError()->toStdString(), GetParam().sentence);
    EXPECT_TRUE(log.waitFor(VPNStatus::Disconnected));
    EXPECT_EQ(log.statuses().at(1), VPNStatus::Connecting);
    EXPECT_EQ(std::count(log.statuses().begin(), log.statuses().end(), VPNStatus::Connected), 0);

    setProviderMode("ok");
    run(configuration->startVPNTunnel());
    EXPECT_FALSE(configuration->lastDisconnectError());
    EXPECT_TRUE(log.waitFor(VPNStatus::Connected));
}

INSTANTIATE_TEST_SUITE_P(
    AfterTheStart, NetworkManagerFailure,
    testing::Values(Failure{"login-failed", "The VPN server refused the login."},
                    Failure{"connect-failed", "The VPN service could not establish the connection."},
                    Failure{"bad-arguments", "The VPN service failed to start."},
                    Failure{"bad-config", "The VPN service gave an invalid network configuration."},
                    Failure{"crash", "The VPN service stopped unexpectedly."},
                    Failure{"hang", "The VPN connection was not established in time."}),
    [](const auto &info) { return QString::fromLatin1(info.param.mode).remove(u'-').toStdString(); });

TEST_F(NetworkManagerTunnel, aServiceThatIsNotInstalledIsNamed)
{
    const auto configuration = saved(QStringLiteral("example.absent.tunnel"));
    EXPECT_EQ(failureOf(configuration->startVPNTunnel()),
              QStringLiteral("The VPN service 'example.absent.tunnel' is not installed."));
    EXPECT_EQ(configuration->status(), VPNStatus::Disconnected);
}

TEST_F(NetworkManagerTunnel, withoutANetworkThePersonIsToldToConnectFirst)
{
    const auto configuration = saved();
    ASSERT_EQ(activePaths().size(), 1);
    deactivate(activePaths().constFirst());
    ASSERT_TRUE(test::spinUntil([] { return activePaths().isEmpty(); }));
    EXPECT_EQ(failureOf(configuration->startVPNTunnel()),
              QStringLiteral("There is no network connection for the VPN to run over. Connect to a network first."));
    EXPECT_EQ(configuration->status(), VPNStatus::Disconnected);
    activate(pathOf(QStringLiteral("uplink")));
    control("restart");
}

TEST_F(NetworkManagerTunnel, aDisabledConfigurationIsNotStarted)
{
    const auto configuration = makeConfiguration();
    configuration->isEnabled = false;
    run(configuration->saveToPreferences());
    EXPECT_EQ(failureOf(configuration->startVPNTunnel()), QStringLiteral("The VPN configuration is disabled."));
}

TEST_F(NetworkManagerTunnel, startingAnActiveOneWithTheSameSettingsChangesNothing)
{
    const auto configuration = saved();
    const StatusLog log(*manager, configuration);
    run(configuration->startVPNTunnel());
    ASSERT_TRUE(log.waitFor(VPNStatus::Connected));
    const auto before = activeVPNs();
    ASSERT_EQ(before.size(), 1);
    run(configuration->saveToPreferences());
    run(configuration->startVPNTunnel());
    EXPECT_EQ(activeVPNs(), before);
    EXPECT_EQ(log.statuses(), (Statuses{VPNStatus::Disconnected, VPNStatus::Connecting, VPNStatus::Connected}));
}

TEST_F(NetworkManagerTunnel, startingAnActiveOneWithNewSettingsStartsItAnew)
{
    const auto configuration = saved();
    const StatusLog log(*manager, configuration);
    run(configuration->startVPNTunnel());
    ASSERT_TRUE(log.waitFor(VPNStatus::Connected));
    configuration->protocolConfiguration->serverAddress = QStringLiteral("198.51.100.1:1");
    run(configuration->saveToPreferences());
    EXPECT_EQ(configuration->status(), VPNStatus::Connected);
    run(configuration->startVPNTunnel());
    ASSERT_TRUE(log.waitFor(VPNStatus::Connected));
    EXPECT_EQ(log.statuses(),
              (Statuses{VPNStatus::Disconnected, VPNStatus::Connecting, VPNStatus::Connected, VPNStatus::Disconnecting,
                        VPNStatus::Disconnected, VPNStatus::Connecting, VPNStatus::Connected}));
    EXPECT_FALSE(configuration->lastDisconnectError());
}

TEST_F(NetworkManagerTunnel, oneThatIsStartedAndStoppedElsewhereIsFollowed)
{
    const auto configuration = saved();
    const StatusLog log(*manager, configuration);
    const auto active = activate(pathOf(name));
    ASSERT_TRUE(log.waitFor(VPNStatus::Connected));
    deactivate(active);
    ASSERT_TRUE(log.waitFor(VPNStatus::Disconnected));
    EXPECT_FALSE(configuration->lastDisconnectError());
}

TEST_F(NetworkManagerTunnel, oneThatWasStartedElsewhereAtTheSameMomentCountsAsStarted)
{
    const auto configuration = saved();
    const StatusLog log(*manager, configuration);
    // So that the next start has nothing to prepare.
    run(configuration->startVPNTunnel());
    ASSERT_TRUE(log.waitFor(VPNStatus::Connected));
    run(configuration->stopVPNTunnel());
    ASSERT_TRUE(log.waitFor(VPNStatus::Disconnected));
    // The manager asks for the start before it looks at the signals that tell of the other one.
    activate(pathOf(name));
    EXPECT_EQ(failureOf(configuration->startVPNTunnel()), QString());
    EXPECT_NE(configuration->status(), VPNStatus::Disconnected);
    EXPECT_TRUE(log.waitFor(VPNStatus::Connected));
}

TEST_F(NetworkManagerTunnel, isReassertingWhileItsProviderConnectsAnew)
{
    setProviderMode("reconnect");
    const auto configuration = saved();
    const StatusLog log(*manager, configuration);
    run(configuration->startVPNTunnel());
    ASSERT_TRUE(test::spinUntil([&] { return log.statuses().size() == 5; }));
    EXPECT_EQ(log.statuses(),
              (Statuses{VPNStatus::Disconnected, VPNStatus::Connecting, VPNStatus::Connected, VPNStatus::Reasserting,
                        VPNStatus::Connected}));
}

TEST_F(NetworkManagerTunnel, anotherTunnelsStatusIsItsOwn)
{
    const auto configuration = saved();
    const auto other = makeConfiguration(test::otherProviderService);
    other->localizedDescription = QStringLiteral("Other");
    run(other->saveToPreferences());
    const StatusLog log(*manager, configuration);
    const StatusLog otherLog(*manager, other);
    run(other->startVPNTunnel());
    ASSERT_TRUE(otherLog.waitFor(VPNStatus::Connected));
    run(other->stopVPNTunnel());
    ASSERT_TRUE(otherLog.waitFor(VPNStatus::Disconnected));
    EXPECT_EQ(log.statuses(), Statuses{VPNStatus::Disconnected});
}

} // namespace

} // namespace tarnwik
