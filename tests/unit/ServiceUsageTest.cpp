#include "ServiceFixture.h"

namespace tarnwik::service {
namespace {

using namespace std::chrono_literals;

/// A signed-in account with one device whose profile has just been made, at 1000 bytes a second.
class ServiceUsage : public ServiceTest
{
protected:
    void SetUp() override
    {
        m_seed.usageBytesPerSecond = 1000;
        seedAccount().usedBytes = 5'000'000'000;
        seedAccount().cycleUsedBytes = 0;
        seedAccount().cycleQuotaBytes = 100'000;
        m_token = signIn();
        m_device = createDevice(m_token).id;
        m_profile = createProfile(m_token, m_device, 1).profile.id;
    }

    qint64 used() { return account(m_token).cycleUsedBytes.value(); }
    DeviceProfile profile(qsizetype index = 0) { return devices(m_token).first().profiles[index]; }

    QByteArray m_token;
    qint64 m_device = 0;
    qint64 m_profile = 0;
};

TEST_F(ServiceUsage, growsWithTimeWhileAProfileIsActive)
{
    EXPECT_EQ(used(), 0);
    m_now += 10s;
    EXPECT_EQ(used(), 10'000);
    EXPECT_EQ(account(m_token).usedBytes, 5'000'010'000);
    m_now += 500ms;
    EXPECT_EQ(used(), 10'500);
    EXPECT_EQ(used(), 10'500);
}

TEST_F(ServiceUsage, isSplitIntoReceivedAndSentAtTheProfile)
{
    m_now += 10s;
    EXPECT_EQ(profile().rxBytes, 8'000);
    EXPECT_EQ(profile().txBytes, 2'000);
    EXPECT_EQ(profile().lastHandshakeAt, QStringLiteral("2026-05-04T12:00:10Z"));
}

TEST_F(ServiceUsage, stopsAtTheQuota)
{
    m_now += 1000s;
    EXPECT_EQ(used(), 100'000);
    EXPECT_EQ(outcome(tryCreateProfile(m_token, m_device, 1)), "403 quota_exceeded");
    EXPECT_TRUE(account(m_token).serviceEnabled);
}

TEST_F(ServiceUsage, standsStillBetweenTheLastSignOutAndTheNextSignIn)
{
    m_now += 3s;
    send("DELETE", QStringLiteral("session"), {}, m_token);
    m_now += 60s;
    m_token = signIn();
    EXPECT_EQ(used(), 3'000);
    m_now += 1s;
    EXPECT_EQ(used(), 4'000);
}

TEST_F(ServiceUsage, goesOnWhileAnotherSessionOfTheAccountLives)
{
    send("DELETE", QStringLiteral("session"), {}, std::exchange(m_token, signIn()));
    m_now += 2s;
    EXPECT_EQ(used(), 2'000);
}

TEST_F(ServiceUsage, movesWithTheActiveProfile)
{
    m_now += 1s;
    createProfile(m_token, m_device, 2);
    m_now += 2s;
    EXPECT_EQ(used(), 3'000);
    EXPECT_EQ(profile(0).rxBytes + profile(0).txBytes, 1'000);
    EXPECT_EQ(profile(1).rxBytes + profile(1).txBytes, 2'000);
}

TEST_F(ServiceUsage, addsUpOverDevices)
{
    createProfile(m_token, createDevice(m_token).id, 1);
    m_now += 5s;
    EXPECT_EQ(used(), 10'000);
}

TEST_F(ServiceUsage, followsTheTunnelOnceItIsKnown)
{
    m_now += 1s;
    EXPECT_TRUE(service().setTunnelRunning(m_profile, false));
    m_now += 10s;
    EXPECT_EQ(used(), 1'000);
    EXPECT_TRUE(service().setTunnelRunning(m_profile, true));
    m_now += 2s;
    EXPECT_TRUE(service().setTunnelRunning(m_profile, false));
    m_now += 10s;
    EXPECT_EQ(used(), 3'000);
    createProfile(m_token, m_device, 1);
    m_now += 10s;
    EXPECT_EQ(used(), 3'000);
}

TEST_F(ServiceUsage, knowsNoTunnelOfAnUnknownProfile)
{
    EXPECT_FALSE(service().setTunnelRunning(m_profile + 1, true));
}

TEST_F(ServiceUsage, neverShrinksWhenTheClockIsSetBack)
{
    m_now += 10s;
    EXPECT_EQ(used(), 10'000);
    m_now -= 1h;
    EXPECT_EQ(used(), 10'000);
    m_now += 1s;
    EXPECT_EQ(used(), 11'000);
}

} // namespace
} // namespace tarnwik::service
