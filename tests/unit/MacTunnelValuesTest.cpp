#include "platform/macos/MacTunnelValues.h"

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

TEST(MacTunnelValues, aStatusKeepsItsNumber)
{
    EXPECT_EQ(vpnStatus(0), VPNStatus::Invalid);
    EXPECT_EQ(vpnStatus(1), VPNStatus::Disconnected);
    EXPECT_EQ(vpnStatus(2), VPNStatus::Connecting);
    EXPECT_EQ(vpnStatus(3), VPNStatus::Connected);
    EXPECT_EQ(vpnStatus(4), VPNStatus::Reasserting);
    EXPECT_EQ(vpnStatus(5), VPNStatus::Disconnecting);
    EXPECT_EQ(int(vpnStatus(6)), 6) << "one that the system may tell one day";
}

TEST(MacTunnelValues, anErrorSpeaksInTheWordsOfTheSystem)
{
    EXPECT_EQ(tunnelError({"NEVPNErrorDomain", 5, "permission denied"}).localizedDescription(),
              QStringLiteral("permission denied"));
}

TEST(MacTunnelValues, anErrorWithoutWordsIsNamedByDomainAndCode)
{
    EXPECT_EQ(tunnelError({"NEVPNErrorDomain", 2, ""}).localizedDescription(),
              QStringLiteral("The operation couldn’t be completed. (NEVPNErrorDomain error 2.)"));
    EXPECT_EQ(tunnelError({"%2", -1, ""}).localizedDescription(),
              QStringLiteral("The operation couldn’t be completed. (%2 error -1.)"));
}

TEST(MacTunnelValues, aRefusalWithoutAnErrorNamesNone)
{
    EXPECT_EQ(tunnelError({}).localizedDescription(), QStringLiteral("The operation couldn’t be completed."));
}

TEST(MacTunnelValues, aProtocolIsToldWhole)
{
    const TunnelProviderProtocol protocol{
        .providerBundleIdentifier = QStringLiteral("example.tarnwik.client.tunnel"),
        .serverAddress = QStringLiteral("192.0.2.3:51820"),
        .disconnectOnSleep = false,
        .providerConfiguration = {{QStringLiteral("tunnel_profile_json"), QStringLiteral("{\"name\":\"Žďár\"}")},
                                  {QStringLiteral("metadata_only"), true}}};
    const mac::TunnelProtocolFields fields = nativeProtocol(protocol);
    EXPECT_EQ(fields.providerBundleIdentifier, "example.tarnwik.client.tunnel");
    EXPECT_EQ(fields.serverAddress, "192.0.2.3:51820");
    EXPECT_FALSE(fields.disconnectOnSleep);
    EXPECT_EQ(fields.providerConfiguration.size(), 2u);
    EXPECT_EQ(fields.providerConfiguration.at("tunnel_profile_json"),
              mac::PropertyValue(std::string("{\"name\":\"Žďár\"}")));
    EXPECT_EQ(fields.providerConfiguration.at("metadata_only"), mac::PropertyValue(true)) << "a boolean, not a number";
    EXPECT_EQ(tunnelProtocol(fields), protocol);
}

} // namespace

} // namespace tarnwik::test
