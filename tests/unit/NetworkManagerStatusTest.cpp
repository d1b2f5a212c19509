#include "platform/linux/NetworkManagerStatus.h"

#include <gtest/gtest.h>

namespace tarnwik {

namespace {

TEST(NetworkManagerStatus, followsTheStateOfTheActiveConnection)
{
    EXPECT_EQ(vpnStatus(NetworkManagerActiveState::Activating, false), VPNStatus::Connecting);
    EXPECT_EQ(vpnStatus(NetworkManagerActiveState::Activated, true), VPNStatus::Connected);
    EXPECT_EQ(vpnStatus(NetworkManagerActiveState::Deactivating, true), VPNStatus::Disconnecting);
    EXPECT_EQ(vpnStatus(NetworkManagerActiveState::Deactivating, false), VPNStatus::Disconnecting);
    EXPECT_EQ(vpnStatus(NetworkManagerActiveState::Deactivated, true), VPNStatus::Disconnected);
}

TEST(NetworkManagerStatus, activatingAgainIsReasserting)
{
    EXPECT_EQ(vpnStatus(NetworkManagerActiveState::Activating, true), VPNStatus::Reasserting);
}

TEST(NetworkManagerStatus, aStateThatTheDaemonDoesNotKnowIsDisconnected)
{
    EXPECT_EQ(vpnStatus(NetworkManagerActiveState::Unknown, false), VPNStatus::Disconnected);
    EXPECT_EQ(vpnStatus(static_cast<NetworkManagerActiveState>(77), true), VPNStatus::Disconnected);
}

TEST(NetworkManagerStatus, aServiceIsAtWorkFromItsStartUntilItHasStopped)
{
    using State = NetworkManagerServiceState;
    for (const auto state : {State::Starting, State::Started, State::Stopping})
        EXPECT_TRUE(isAtWork(state));
    for (const auto state : {State::Unknown, State::Init, State::Shutdown, State::Stopped})
        EXPECT_FALSE(isAtWork(state));
}

} // namespace

} // namespace tarnwik
