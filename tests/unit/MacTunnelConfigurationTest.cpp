#include "platform/macos/MacTunnelConfiguration.h"

#include "MacNetworkExtensionStandIn.h"
#include "support/EventLoop.h"

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

    /// The system answers the question for the reason that was asked as number \a index.
    void answerReason(std::size_t index) const
    {
        std::thread(m_tunnel->held.at(index)).join();
        settleEvents();
    }

    qsizetype reasonsAsked() const { return std::ranges::count(m_tunnel->calls, "fetchLastDisconnectError"); }

    std::shared_ptr<MacNetworkExtensionStandIn> m_system = std::make_shared<MacNetworkExtensionStandIn>();
    std::shared_ptr<MacTunnelSession> m_session = std::make_shared<MacTunnelSession>(m_system);
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

TEST_F(MacTunnelConfigurationTest, aStartReturnsBeforeTheStatusFollows)
{
    m_tunnel->statusAfterStart = 1;
    run(m_configuration->startVPNTunnel());
    EXPECT_EQ(m_configuration->status(), VPNStatus::Disconnected);
    become(2);
    EXPECT_EQ(m_configuration->status(), VPNStatus::Connecting);
    EXPECT_EQ(reasonsAsked(), 0);
}

TEST_F(MacTunnelConfigurationTest, aStopReturnsBeforeTheStatusFollows)
{
    become(3);
    m_tunnel->statusAfterStop = 3;
    run(m_configuration->stopVPNTunnel());
    EXPECT_EQ(m_configuration->status(), VPNStatus::Connected);
    become(5);
    EXPECT_EQ(m_configuration->status(), VPNStatus::Disconnecting);
}

TEST_F(MacTunnelConfigurationTest, theStatusIsTheSystemsWhateverIsStillToCome)
{
    m_tunnel->isHolding = true;
    for (const long status : {3L, 1L, 2L, 0L, 4L, 5L, 1L, 9L}) {
        become(status);
        EXPECT_EQ(long(m_configuration->status()), status);
    }
    EXPECT_EQ(reasonsAsked(), 3);
    for (std::size_t index = 0; index < m_tunnel->held.size(); ++index)
        answerReason(index);
}

TEST_F(MacTunnelConfigurationTest, tellsWhyTheTunnelWentDownOnceTheSystemDoes)
{
    become(3);
    m_tunnel->disconnectError = mac::PlatformError{"NEVPNConnectionErrorDomain", 8, "The VPN session failed."};
    m_tunnel->isHolding = true;
    const QSignalSpy changes(m_session.get(), &MacTunnelSession::statusDidChange);
    become(1);
    EXPECT_EQ(m_configuration->status(), VPNStatus::Disconnected);
    EXPECT_EQ(m_configuration->lastDisconnectError(), std::nullopt);
    EXPECT_EQ(changes.count(), 1);

    answerReason(0);
    EXPECT_EQ(m_configuration->lastDisconnectError(), QStringLiteral("The VPN session failed."));
    EXPECT_EQ(changes.count(), 2) << "whoever follows the status looks again";
    EXPECT_EQ(reasonsAsked(), 1);
}

TEST_F(MacTunnelConfigurationTest, anEndWithoutAReasonIsToldOnce)
{
    become(3);
    const QSignalSpy changes(m_session.get(), &MacTunnelSession::statusDidChange);
    become(1);
    EXPECT_EQ(reasonsAsked(), 1);
    EXPECT_EQ(m_configuration->lastDisconnectError(), std::nullopt);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(MacTunnelConfigurationTest, theReasonOfAnEarlierEndNeverReplacesThatOfALaterOne)
{
    m_tunnel->isHolding = true;
    for (const char *reason : {"the first", "the second"}) {
        m_tunnel->disconnectError = mac::PlatformError{"NEVPNConnectionErrorDomain", 8, reason};
        become(2);
        become(1);
    }
    ASSERT_EQ(reasonsAsked(), 2);
    answerReason(1);
    EXPECT_EQ(m_configuration->lastDisconnectError(), QStringLiteral("the second"));
    answerReason(0);
    EXPECT_EQ(m_configuration->lastDisconnectError(), QStringLiteral("the second"));
}

TEST_F(MacTunnelConfigurationTest, theReasonOfAnEarlierEndIsNotTakenForThatOfALaterOne)
{
    m_tunnel->isHolding = true;
    m_tunnel->disconnectError = mac::PlatformError{"NEVPNConnectionErrorDomain", 8, "the first"};
    become(2);
    become(1);
    become(2);
    m_tunnel->disconnectError.reset();
    become(1);
    answerReason(0);
    answerReason(1);
    EXPECT_EQ(m_configuration->lastDisconnectError(), std::nullopt);
}

TEST_F(MacTunnelConfigurationTest, aReasonThatComesAfterTheNextStartIsDropped)
{
    m_tunnel->isHolding = true;
    m_tunnel->disconnectError = mac::PlatformError{"NEVPNConnectionErrorDomain", 8, "late"};
    m_tunnel->statusAfterStart = 1;
    become(3);
    become(1);
    run(m_configuration->startVPNTunnel());
    answerReason(0);
    EXPECT_EQ(m_configuration->lastDisconnectError(), std::nullopt) << "the status has not even followed";

    become(2);
    become(1);
    m_tunnel->currentStatus = 2; // Which nobody has been told of yet.
    answerReason(1);
    EXPECT_EQ(m_configuration->lastDisconnectError(), std::nullopt);
}

TEST_F(MacTunnelConfigurationTest, isNotKeptForAReasonThatIsStillToCome)
{
    m_tunnel->isHolding = true;
    become(3);
    become(1);
    const std::weak_ptr<MacTunnelConfiguration> configuration = m_configuration;
    m_configuration.reset();
    EXPECT_TRUE(configuration.expired());
    answerReason(0);
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

TEST_F(MacTunnelConfigurationTest, aTunnelThatWeStoppedOnceHasAReasonTheNextTime)
{
    m_tunnel->disconnectError = mac::PlatformError{"NEVPNConnectionErrorDomain", 8, "failed"};
    become(3);
    run(m_configuration->stopVPNTunnel());
    become(1);
    become(2);
    become(1);
    EXPECT_EQ(m_configuration->lastDisconnectError(), QStringLiteral("failed"));
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
    run(m_configuration->startVPNTunnel());
    EXPECT_EQ(reasonsAsked(), 0) << "it has not ended yet";
    // Up and down again, and by the first notification already down.
    become(1);
    become(1);
    EXPECT_EQ(m_configuration->lastDisconnectError(), QStringLiteral("The plug-in is disabled."));
    EXPECT_EQ(reasonsAsked(), 1);
}

TEST_F(MacTunnelConfigurationTest, aRefusedStartChangesNothing)
{
    m_tunnel->startError = mac::PlatformError{"NEVPNErrorDomain", 2, ""};
    EXPECT_THROW(run(m_configuration->startVPNTunnel()), TunnelError);
    become(1);
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
