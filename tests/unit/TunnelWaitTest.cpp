#include "cli/TunnelWait.h"

#include "support/EventLoop.h"
#include "support/TestPlatform.h"

#include <gtest/gtest.h>

namespace tarnwik::cli {

namespace {

using test::Running;
using test::settleEvents;

/// A tunnel whose system says that it is down.
class TunnelWaitTest : public testing::Test
{
protected:
    TunnelWaitTest()
    {
        m_tunnel->currentStatus = VPNStatus::Disconnected;
        test::run(m_controller.refreshStatus());
    }

    void tell() const
    {
        Q_EMIT m_platform.tunnelManager->statusDidChange();
        settleEvents();
    }

    const QString m_reason = QStringLiteral("The VPN session failed.");
    test::TestPlatform m_platform;
    VPNController m_controller{QStringLiteral("example.tunnel"), std::nullopt};
    std::shared_ptr<test::FakeTunnelConfiguration> m_tunnel =
        m_platform.tunnelManager->addSaved(QStringLiteral("Tarnwik"));
};

TEST_F(TunnelWaitTest, waitsUntilTheStatusFollowsTheStart)
{
    Running waiting(waitForStart(m_controller, {}));
    tell(); // Another program's tunnel.
    EXPECT_FALSE(waiting.hasEnded());
    m_tunnel->currentStatus = VPNStatus::Connecting;
    tell();
    waiting.result();
    EXPECT_EQ(m_controller.status(), VPNStatus::Connecting);
}

TEST_F(TunnelWaitTest, waitsForAStartNoLongerThanASystemTakes)
{
    Running waiting(waitForStart(m_controller, {}));
    m_platform.clock->advance(systemDelay - std::chrono::milliseconds(1));
    settleEvents();
    EXPECT_FALSE(waiting.hasEnded());
    m_platform.clock->advance(std::chrono::milliseconds(1));
    waiting.result();
}

TEST_F(TunnelWaitTest, doesNotWaitForAStartThatIsKnownToHaveFailed)
{
    m_tunnel->disconnectError = m_reason;
    test::run(waitForStart(m_controller, {}));
    test::run(waitForReason(m_controller, {}));
}

TEST_F(TunnelWaitTest, waitsUntilTheReasonIsKnown)
{
    Running waiting(waitForReason(m_controller, {}));
    tell();
    EXPECT_FALSE(waiting.hasEnded());
    m_tunnel->disconnectError = m_reason;
    tell();
    waiting.result();
}

TEST_F(TunnelWaitTest, waitsForAReasonNoLongerThanASystemTakes)
{
    Running waiting(waitForReason(m_controller, {}));
    settleEvents();
    EXPECT_FALSE(waiting.hasEnded());
    m_platform.clock->advance(systemDelay);
    waiting.result();
}

} // namespace

} // namespace tarnwik::cli
