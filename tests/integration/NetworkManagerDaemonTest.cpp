#include "support/EventLoop.h"
#include "support/networkmanager/NetworkManagerFixture.h"
#include "support/networkmanager/UnendingNetworkManager.h"

namespace tarnwik {

namespace {

using test::failureOf;
using test::run;
using test::StatusLog;

/// What becomes of a tunnel when the daemon under it, or the program over it, goes away and comes back.
class NetworkManagerDaemonLife : public test::NetworkManagerTest
{
protected:
    std::shared_ptr<TunnelConfiguration> connected()
    {
        auto configuration = saved();
        const StatusLog log(*manager, configuration);
        run(configuration->startVPNTunnel());
        EXPECT_TRUE(log.waitFor(VPNStatus::Connected));
        return configuration;
    }

    void expectLossAndReturn(const char *verb)
    {
        const auto configuration = connected();
        const StatusLog log(*manager, configuration);
        control(verb);
        ASSERT_TRUE(log.waitFor(VPNStatus::Invalid));
        EXPECT_EQ(configuration->lastDisconnectError().value_or(QString()).toStdString(), "NetworkManager stopped.");
        EXPECT_EQ(failureOf(configuration->startVPNTunnel()), QStringLiteral("NetworkManager is not running."));
        run(configuration->stopVPNTunnel());

        control("start");
        ASSERT_TRUE(log.waitFor(VPNStatus::Disconnected));
        EXPECT_EQ(log.statuses(), (std::vector{VPNStatus::Connected, VPNStatus::Invalid, VPNStatus::Disconnected}));
        run(configuration->startVPNTunnel());
        EXPECT_TRUE(log.waitFor(VPNStatus::Connected));
        EXPECT_FALSE(configuration->lastDisconnectError());
    }
};

TEST_F(NetworkManagerDaemonLife, aDaemonThatIsKilledTakesTheTunnelAlongAndCanBeUsedWhenItIsBack)
{
    expectLossAndReturn("kill");
}

TEST_F(NetworkManagerDaemonLife, aDaemonThatIsStoppedTakesTheTunnelAlongAndCanBeUsedWhenItIsBack)
{
    expectLossAndReturn("stop");
}

TEST_F(NetworkManagerDaemonLife, aDaemonThatIsRestartedWhileItConnectsIsSeenToComeBack)
{
    setProviderMode("hang");
    const auto configuration = saved();
    const StatusLog log(*manager, configuration);
    run(configuration->startVPNTunnel());
    ASSERT_EQ(configuration->status(), VPNStatus::Connecting);
    control("restart");
    ASSERT_TRUE(log.waitFor(VPNStatus::Disconnected));
    EXPECT_EQ(log.statuses().at(log.statuses().size() - 2), VPNStatus::Invalid);

    setProviderMode("ok");
    run(configuration->startVPNTunnel());
    EXPECT_TRUE(log.waitFor(VPNStatus::Connected));
}

TEST_F(NetworkManagerDaemonLife, aDaemonThatComesLaterThanTheProgramIsUsed)
{
    saved();
    control("stop");
    const auto early = makeManager();
    EXPECT_THROW(all(*early), TunnelError);
    control("start");
    EXPECT_EQ(all(*early).size(), 1U);
}

TEST_F(NetworkManagerDaemonLife, aDaemonThatGoesAwayBetweenCallAndAnswerFailsTheCall)
{
    const auto configuration = saved();
    control("freeze");
    test::Running<> start(configuration->startVPNTunnel());
    control("kill");
    EXPECT_THROW(start.result(), TunnelError);
    EXPECT_EQ(configuration->status(), VPNStatus::Invalid);
}

TEST_F(NetworkManagerDaemonLife, aTunnelThatDoesNotEndFailsTheStartAndHoldsUpNoLaterOperation)
{
    control("stop");
    const test::UnendingNetworkManager unending;
    manager = makeManager(std::chrono::milliseconds(100));
    const auto configuration = saved();
    run(configuration->startVPNTunnel());
    run(configuration->stopVPNTunnel());
    ASSERT_EQ(configuration->status(), VPNStatus::Disconnecting);

    const auto failure = QStringLiteral("NetworkManager does not answer.");
    auto start = configuration->startVPNTunnel();
    auto later = configuration->saveToPreferences();
    EXPECT_EQ(failureOf(std::move(start)), failure);
    EXPECT_EQ(failureOf(std::move(later)), QString());
    EXPECT_EQ(failureOf(configuration->startVPNTunnel()), failure);
    EXPECT_EQ(configuration->status(), VPNStatus::Disconnecting);
}

TEST_F(NetworkManagerDaemonLife, aProgramThatStartsWhileTheTunnelIsUpFindsItConnectedAndStopsIt)
{
    connected();
    manager.reset();

    const auto later = makeManager();
    const auto found = all(*later);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front()->status(), VPNStatus::Connected);
    const StatusLog log(*later, found.front());
    run(found.front()->stopVPNTunnel());
    EXPECT_TRUE(log.waitFor(VPNStatus::Disconnected));
}

TEST_F(NetworkManagerDaemonLife, aProgramThatStartsWhileTheTunnelConnectsFollowsIt)
{
    setProviderMode("slow");
    run(saved()->startVPNTunnel());
    const auto later = makeManager();
    const auto found = all(*later);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front()->status(), VPNStatus::Connecting);
    EXPECT_TRUE(StatusLog(*later, found.front()).waitFor(VPNStatus::Connected));
}

TEST_F(NetworkManagerDaemonLife, twoProgramsSeeTheSameTunnel)
{
    const auto configuration = saved();
    const auto other = makeManager();
    const auto seen = all(*other).front();
    const StatusLog log(*other, seen);
    run(configuration->startVPNTunnel());
    ASSERT_TRUE(log.waitFor(VPNStatus::Connected));
    run(seen->stopVPNTunnel());
    EXPECT_TRUE(StatusLog(*manager, configuration).waitFor(VPNStatus::Disconnected));
}

TEST_F(NetworkManagerDaemonLife, aManagerThatEndsWhileItAsksLeavesNothingBehind)
{
    saved();
    auto shortLived = makeManager();
    test::Running<std::optional<TunnelManager::Configurations>> load(shortLived->loadAllFromPreferences());
    shortLived.reset();
    EXPECT_EQ(load.result()->size(), 1U);
}

} // namespace

} // namespace tarnwik
