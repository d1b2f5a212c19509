#include "platform/linux/NetworkManagerConnectionSettings.h"

#include <gtest/gtest.h>

namespace tarnwik {

namespace {

const QString uuid = QStringLiteral("0a64c1fc-4df3-4d9d-9501-eaaf54705e4c");
const QString user = QStringLiteral("ada");

NetworkManagerTunnelFields tunnel()
{
    TunnelProviderProtocol protocol;
    protocol.providerBundleIdentifier = QStringLiteral("example.tarnwik.client.tunnel");
    protocol.serverAddress = QStringLiteral("192.0.2.1:51820");
    protocol.providerConfiguration = {
        {QStringLiteral("tunnel_profile_json"), QStringLiteral("{\"id\":1}")},
        {QStringLiteral("client_private_key_ref"), QStringLiteral("tarnwik-device-1-private-key")},
        {QStringLiteral("keychain_service"), QStringLiteral("Tarnwik")},
        {QStringLiteral("metadata_only"), true},
    };
    return {QStringLiteral("Tarnwik"), protocol, true};
}

NetworkManagerConnectionSettings written(const NetworkManagerTunnelFields &fields)
{
    return withTunnelFields({}, uuid, fields, user);
}

TEST(NetworkManagerConnectionSettings, whatIsWrittenIsReadBack)
{
    EXPECT_EQ(tunnelFields(written(tunnel())), tunnel());
}

TEST(NetworkManagerConnectionSettings, everyFieldIsReadBackWhateverItsValue)
{
    auto fields = tunnel();
    fields.isEnabled = false;
    fields.protocolConfiguration->disconnectOnSleep = true;
    fields.protocolConfiguration->serverAddress.clear();
    auto &configuration = fields.protocolConfiguration->providerConfiguration;
    configuration[QStringLiteral("metadata_only")] = false;
    configuration[QStringLiteral("keychain_access_group")] = QString();
    configuration[QStringLiteral("a text")] = QStringLiteral("true");
    configuration[QStringLiteral("another switch")] = true;
    EXPECT_EQ(tunnelFields(written(fields)), fields);
}

TEST(NetworkManagerConnectionSettings, aTunnelIsAConnectionOfTheUsersOwn)
{
    const auto settings = written(tunnel());
    EXPECT_TRUE(isVPN(settings));
    EXPECT_EQ(connectionUUID(settings), uuid);
    const auto connection = settings.value(QStringLiteral("connection"));
    EXPECT_EQ(connection.value(QStringLiteral("id")), QStringLiteral("Tarnwik"));
    EXPECT_EQ(connection.value(QStringLiteral("autoconnect")), QVariant(false));
    EXPECT_EQ(connection.value(QStringLiteral("permissions")), QStringList(QStringLiteral("user:ada:")));
    EXPECT_EQ(settings.value(QStringLiteral("ipv4")).value(QStringLiteral("method")), QStringLiteral("auto"));
    EXPECT_EQ(settings.value(QStringLiteral("ipv6")).value(QStringLiteral("method")), QStringLiteral("auto"));
}

TEST(NetworkManagerConnectionSettings, theProviderFindsItsConfigurationAsText)
{
    const auto settings = written(tunnel());
    EXPECT_EQ(vpnServiceType(settings), QStringLiteral("example.tarnwik.client.tunnel"));
    const auto data = vpnData(settings);
    EXPECT_EQ(data.value(QStringLiteral("metadata_only")), QStringLiteral("true"));
    EXPECT_EQ(data.value(QStringLiteral("keychain_service")), QStringLiteral("Tarnwik"));
}

TEST(NetworkManagerConnectionSettings, thePrivateKeyIsTheAgentsToKeep)
{
    EXPECT_EQ(vpnData(written(tunnel())).value(QStringLiteral("client_private_key-flags")), QStringLiteral("1"));
}

TEST(NetworkManagerConnectionSettings, nothingOfAnEarlierProtocolIsKept)
{
    auto earlier = tunnel();
    earlier.protocolConfiguration->providerConfiguration.insert(QStringLiteral("keychain_access_group"),
                                                                QStringLiteral("group"));
    EXPECT_EQ(tunnelFields(withTunnelFields(written(earlier), uuid, tunnel(), user)), tunnel());
}

TEST(NetworkManagerConnectionSettings, whatOthersHaveSetStays)
{
    auto before = written(tunnel());
    before[QStringLiteral("vpn")][QStringLiteral("timeout")] = 7U;
    before[QStringLiteral("ipv4")][QStringLiteral("never-default")] = true;
    const auto after = withTunnelFields(before, uuid, tunnel(), user);
    EXPECT_EQ(after, before);
}

TEST(NetworkManagerConnectionSettings, somebodyElsesVPNIsReadAsFarAsItGoes)
{
    const NetworkManagerStringMap data{{QStringLiteral("remote"), QStringLiteral("vpn.example")}};
    const NetworkManagerConnectionSettings settings{
        {QStringLiteral("connection"),
         {{QStringLiteral("type"), QStringLiteral("vpn")}, {QStringLiteral("id"), QStringLiteral("Office")}}},
        {QStringLiteral("vpn"),
         {{QStringLiteral("service-type"), QStringLiteral("org.example.vpn")},
          {QStringLiteral("data"), QVariant::fromValue(data)}}},
    };
    const auto fields = tunnelFields(settings);
    EXPECT_EQ(fields.localizedDescription, QStringLiteral("Office"));
    EXPECT_TRUE(fields.isEnabled);
    EXPECT_EQ(fields.protocolConfiguration->providerBundleIdentifier, QStringLiteral("org.example.vpn"));
    EXPECT_EQ(fields.protocolConfiguration->serverAddress, QString());
    const QVariantMap expected{{QStringLiteral("remote"), QStringLiteral("vpn.example")}};
    EXPECT_EQ(fields.protocolConfiguration->providerConfiguration, expected);
}

TEST(NetworkManagerConnectionSettings, otherConnectionsAreNoVPN)
{
    EXPECT_FALSE(isVPN({}));
    EXPECT_FALSE(isVPN({{QStringLiteral("connection"), {{QStringLiteral("type"), QStringLiteral("wireguard")}}}}));
}

} // namespace

} // namespace tarnwik
