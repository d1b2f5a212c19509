#include "platform/macos/MacTunnelConfiguration.h"

#include "MacNetworkExtensionStandIn.h"
#include "support/EventLoop.h"
#include "support/ManualClock.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

class MacTunnelConfigurationTest : public testing::Test
{
protected:
    /// The system's status of the tunnel is \a status from now on.
    void become(long status) const
    {
        m_tunnel->currentStatus = status;
        m_system->notify();
        settleEvents();
    }

    qsizetype reasonsAsked() const { return std::ranges::count(m_tunnel->calls, "fetchLastDisconnectError"); }

    std::shared_ptr<MacNetworkExtensionStandIn> m_system = std::make_shared<MacNetworkExtensionStandIn>();
    std::shared_ptr<ManualClock> m_clock = std::make_shared<ManualClock>();
    std::shared_ptr<MacTunnelSession> m_session = std::make_shared<MacTunnelSession>(m_system, m_clock);
    std::shared_ptr<MacManagerStandIn> m_tunnel = m_system->addSaved("Tarnwik");
    std::shared_ptr<MacTunnelConfiguration> m_configuration =
        std::make_shared<MacTunnelConfiguration>(m_session, m_tunnel);
};

TEST_F(MacTunnelConfigurationTest, savesWhatItHoldsAndReadsItBack)
{
    m_configuration->localizedDescription = QStringLiteral("Žluť");
    m_configuration->protocolConfiguration = TunnelProviderProtocol();
    m_configuration->protocolConfiguration->serverAddress = QStringLiteral("192.0.2.3:51820");
    m_configuration->isEnabled = true;
    run(m_configuration->saveToPreferences());
    EXPECT_EQ(m_tunnel->saved.localizedDescription, "Žluť");
    EXPECT_EQ(m_tunnel->saved.protocolConfiguration->serverAddress, "192.0.2.3:51820");
    EXPECT_TRUE(m_tunnel->saved.isEnabled);

    // Somebody else changed it in the meantime.
    m_tunnel->saved.isEnabled = false;
    m_tunnel->saved.protocolConfiguration.reset();
    run(m_configuration->loadFromPreferences());
    EXPECT_EQ(m_configuration->localizedDescription, QStringLiteral("Žluť"));
    EXPECT_EQ(m_configuration->protocolConfiguration, std::nullopt);
    EXPECT_FALSE(m_configuration->isEnabled);
}

TEST_F(MacTunnelConfigurationTest, aFailedLoadLeavesTheFieldsAlone)
{
    m_configuration->isEnabled = true;
    m_tunnel->loadError = mac::PlatformError{"NEVPNErrorDomain", 5, "IPC failed"};
    EXPECT_THROW(run(m_configuration->loadFromPreferences()), TunnelError);
    EXPECT_TRUE(m_configuration->isEnabled);
}

TEST_F(MacTunnelConfigurationTest, isKeptUntilItsOperationHasEnded)
{
    m_tunnel->isHolding = true;
    Running saving(m_configuration->saveToPreferences());
    const std::weak_ptr<MacTunnelConfiguration> configuration = m_configuration;
    m_configuration.reset();
    settleEvents();
    EXPECT_FALSE(saving.hasEnded());
    EXPECT_FALSE(configuration.expired());
    std::thread(m_tunnel->held.front()).join();
    saving.result();
    EXPECT_TRUE(configuration.expired());
}

TEST_F(MacTunnelConfigurationTest, aStartReturnsOnceTheStatusFollows)
{
    m_tunnel->statusAfterStart = 1;
    Running starting(m_configuration->startVPNTunnel());
    settleEvents();
    m_system->notify(); // Another program's tunnel.
    settleEvents();
    EXPECT_FALSE(starting.hasEnded());
    become(2);
    starting.result();
    EXPECT_EQ(m_configuration->status(), VPNStatus::Connecting);
    EXPECT_EQ(reasonsAsked(), 0);
}

TEST_F(MacTunnelConfigurationTest, aStartWaitsNoLongerThanItsLimit)
{
    m_tunnel->statusAfterStart = 1;
    m_tunnel->isHolding = true;
    Running starting(m_configuration->startVPNTunnel());
    m_clock->advance(tunnelSettlingLimit);
    starting.result();
    EXPECT_EQ(m_configuration->status(), VPNStatus::Disconnecting) << "why it did not come up is being asked";
    m_tunnel->held.front()();
    settleEvents();
    EXPECT_EQ(m_configuration->status(), VPNStatus::Disconnected);
}

TEST_F(MacTunnelConfigurationTest, aStopReturnsOnceTheStatusFollows)
{
    become(3);
    m_tunnel->statusAfterStop = 3;
    Running stopping(m_configuration->stopVPNTunnel());
    settleEvents();
    EXPECT_FALSE(stopping.hasEnded());
    become(5);
    stopping.result();
}

TEST_F(MacTunnelConfigurationTest, aStopOfATunnelThatDoesNotRunReturnsAtOnce)
{
    run(m_configuration->stopVPNTunnel());
    EXPECT_EQ(m_configuration->status(), VPNStatus::Disconnected);
    EXPECT_EQ(m_clock->pendingCount(), 0);
}

TEST_F(MacTunnelConfigurationTest, tellsWhyTheTunnelWentDown)
{
    become(3);
    m_tunnel->disconnectError = mac::PlatformError{"NEVPNConnectionErrorDomain", 8, "The VPN session failed."};
    m_tunnel->isHolding = true;
    const QSignalSpy changes(m_session.get(), &MacTunnelSession::statusDidChange);
    become(1);
    EXPECT_EQ(m_configuration->status(), VPNStatus::Disconnecting)
        << "it counts as going down until the reason is known";
    EXPECT_EQ(m_configuration->lastDisconnectError(), std::nullopt);

    std::thread(m_tunnel->held.front()).join();
    settleEvents();
    EXPECT_EQ(m_configuration->status(), VPNStatus::Disconnected);
    EXPECT_EQ(m_configuration->lastDisconnectError(), QStringLiteral("The VPN session failed."));
    EXPECT_EQ(changes.count(), 2) << "whoever follows the status reads it again";
}

TEST_F(MacTunnelConfigurationTest, waitsForTheReasonNoLongerThanItsLimit)
{
    become(3);
    m_tunnel->disconnectError = mac::PlatformError{"NEVPNConnectionErrorDomain", 8, "late"};
    m_tunnel->isHolding = true;
    become(1);
    m_clock->advance(tunnelSettlingLimit);
    settleEvents();
    EXPECT_EQ(m_configuration->status(), VPNStatus::Disconnected);
    m_tunnel->held.front()();
    settleEvents();
    EXPECT_EQ(m_configuration->lastDisconnectError(), std::nullopt);
}

TEST_F(MacTunnelConfigurationTest, aTunnelThatWeStoppedHasNoReason)
{
    become(3);
    m_tunnel->disconnectError = mac::PlatformError{"NEVPNConnectionErrorDomain", 1, "stopped"};
    run(m_configuration->stopVPNTunnel());
    become(1);
    EXPECT_EQ(reasonsAsked(), 0);
    EXPECT_EQ(m_configuration->status(), VPNStatus::Disconnected);
    EXPECT_EQ(m_configuration->lastDisconnectError(), std::nullopt);
}

TEST_F(MacTunnelConfigurationTest, aReasonLastsUntilTheNextStartWhoeverStarts)
{
    m_tunnel->disconnectError = mac::PlatformError{"NEVPNConnectionErrorDomain", 8, "failed"};
    become(3);
    become(1);
    ASSERT_TRUE(m_configuration->lastDisconnectError());
    become(2);
    EXPECT_EQ(m_configuration->lastDisconnectError(), std::nullopt);
    become(1);
    ASSERT_TRUE(m_configuration->lastDisconnectError());
    run(m_configuration->startVPNTunnel());
    EXPECT_EQ(m_configuration->lastDisconnectError(), std::nullopt);
}

TEST_F(MacTunnelConfigurationTest, aTunnelThatFailsBeforeItIsSeenToRunHasAReasonToo)
{
    m_tunnel->statusAfterStart = 1;
    m_tunnel->disconnectError = mac::PlatformError{"NEVPNConnectionErrorDomain", 14, "The plug-in is disabled."};
    Running starting(m_configuration->startVPNTunnel());
    m_clock->advance(tunnelSettlingLimit);
    starting.result();
    settleEvents();
    EXPECT_EQ(m_configuration->lastDisconnectError(), QStringLiteral("The plug-in is disabled."));
}

TEST_F(MacTunnelConfigurationTest, aRefusedStartChangesNothing)
{
    m_tunnel->startError = mac::PlatformError{"NEVPNErrorDomain", 2, ""};
    EXPECT_THROW(run(m_configuration->startVPNTunnel()), TunnelError);
    EXPECT_EQ(m_configuration->status(), VPNStatus::Disconnected);
    EXPECT_EQ(reasonsAsked(), 0);
}

TEST_F(MacTunnelConfigurationTest, aStatusChangeAfterItsEndComesToNobody)
{
    become(3);
    m_configuration.reset();
    become(1);
    EXPECT_EQ(reasonsAsked(), 0);
}

} // namespace

} // namespace tarnwik::test
