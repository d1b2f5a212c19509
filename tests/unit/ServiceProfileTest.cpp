#include "ServiceFixture.h"

namespace tarnwik::service {
namespace {

class ServiceProfiles : public ServiceTest
{
protected:
    ServiceResponse tryReadTunnelProfile(const QByteArray &token, qint64 id)
    {
        return send("GET", QStringLiteral("device-profiles/%1/tunnel-profile").arg(id), {}, token);
    }

    NodeTunnel &seedTunnel(qsizetype index = 0) { return m_seed.nodes[index].tunnel; }
    ExitNode &seedNode(qsizetype index = 0) { return m_seed.nodes[index].node; }
};

TEST_F(ServiceProfiles, aNewOneHoldsWhatItTakesToBringTheTunnelUp)
{
    const QByteArray token = signIn();
    const ServiceResponse response = tryCreateProfile(token, createDevice(token).id, 1);
    EXPECT_EQ(response.status, 201);
    const auto answer = decode<DeviceProfileResponse>(response.body);
    EXPECT_EQ(answer.created, true);

    const DeviceProfile &profile = answer.profile;
    EXPECT_EQ(profile.nodeId, 1);
    EXPECT_EQ(profile.nodeName, seedNode().name);
    EXPECT_EQ(profile.region, seedNode().region);
    EXPECT_EQ(profile.protocolName, QStringLiteral("amneziawg"));
    EXPECT_EQ(profile.assignedIp, QStringLiteral("10.64.0.2"));
    EXPECT_EQ(profile.assignedIpv6, QStringLiteral("fd00:64::2"));
    EXPECT_TRUE(profile.enabled);
    EXPECT_EQ(profile.lastHandshakeAt, std::nullopt);

    const TunnelProfile tunnel = answer.tunnelProfile.value();
    EXPECT_EQ(tunnel.id, profile.id);
    EXPECT_EQ(tunnel.interface.addresses,
              QList<QString>({QStringLiteral("10.64.0.2/32"), QStringLiteral("fd00:64::2/128")}));
    EXPECT_EQ(tunnel.interface.dns, seedTunnel().dns);
    EXPECT_EQ(tunnel.interface.mtu, seedTunnel().mtu);
    EXPECT_EQ(tunnel.interface.privateKey, std::nullopt);
    EXPECT_EQ(tunnel.peer.publicKey, seedTunnel().publicKey);
    EXPECT_EQ(tunnel.peer.endpoint, seedTunnel().endpoint);
    EXPECT_EQ(tunnel.peer.allowedIps, seedTunnel().allowedIps);
    EXPECT_EQ(tunnel.peer.persistentKeepalive, seedTunnel().persistentKeepalive);
    EXPECT_EQ(QByteArray::fromBase64(tunnel.peer.presharedKey.toLatin1()).size(), 32);
    EXPECT_EQ(tunnel.amneziawg, seedTunnel().amneziawg);
    EXPECT_EQ(tunnel.node.id, 1);
    EXPECT_EQ(tunnel.node.status, QStringLiteral("online"));
}

TEST_F(ServiceProfiles, theConfigurationTextSaysTheSame)
{
    seedTunnel().presharedKeys = false;
    seedTunnel().publicKey = QString::fromLatin1(QByteArray(32, 9).toBase64());
    seedTunnel().amneziawg = {{QStringLiteral("jc"), 4}, {QStringLiteral("h1"), 4294967295}};
    const QByteArray token = signIn();
    EXPECT_EQ(createProfile(token, createDevice(token).id, 1).config, QStringLiteral(R"([Interface]
Address = 10.64.0.2/32, fd00:64::2/128
DNS = 10.64.0.1, fd00:64::1
MTU = 1420
H1 = 4294967295
Jc = 4

[Peer]
PublicKey = CQkJCQkJCQkJCQkJCQkJCQkJCQkJCQkJCQkJCQkJCQk=
AllowedIPs = 0.0.0.0/0, ::/0
Endpoint = 192.0.2.11:51820
PersistentKeepalive = 25
)"));
}

TEST_F(ServiceProfiles, withoutPresharedKeysTheKeyIsEmpty)
{
    seedTunnel().presharedKeys = false;
    const QByteArray token = signIn();
    EXPECT_EQ(createProfile(token, createDevice(token).id, 1).tunnelProfile->peer.presharedKey, QString());
}

TEST_F(ServiceProfiles, withoutIPv6TheSecondAddressIsEmpty)
{
    const QByteArray token = signIn();
    const DeviceProfileResponse answer = createProfile(token, createDevice(token).id, 3);
    EXPECT_EQ(answer.profile.assignedIpv6, QString());
    EXPECT_EQ(answer.tunnelProfile->interface.addresses, QList<QString>({QStringLiteral("10.66.0.2/32")}));
}

TEST_F(ServiceProfiles, theSecondRequestGivesTheSameOneAgain)
{
    const QByteArray token = signIn();
    const qint64 device = createDevice(token).id;
    const DeviceProfileResponse first = createProfile(token, device, 1);
    const ServiceResponse response = tryCreateProfile(token, device, 1);
    EXPECT_EQ(response.status, 200);
    auto second = decode<DeviceProfileResponse>(response.body);
    EXPECT_EQ(second.created, false);
    second.created = true;
    EXPECT_EQ(second, first);
}

TEST_F(ServiceProfiles, theTunnelProfileCanBeReadAgain)
{
    const QByteArray token = signIn();
    const DeviceProfileResponse made = createProfile(token, createDevice(token).id, 2);
    const ServiceResponse response = tryReadTunnelProfile(token, made.profile.id);
    EXPECT_EQ(response.status, 200);
    const auto read = decode<DeviceProfileResponse>(response.body);
    EXPECT_EQ(read.profile, made.profile);
    EXPECT_EQ(read.tunnelProfile, made.tunnelProfile);
    EXPECT_EQ(read.config, made.config);
    EXPECT_EQ(read.created, std::nullopt);
}

TEST_F(ServiceProfiles, theLatestIsTheDevicesActiveOne)
{
    const QByteArray token = signIn();
    const qint64 device = createDevice(token).id;
    const qint64 first = createProfile(token, device, 1).profile.id;
    createProfile(token, device, 2);
    const auto enabled = [&] {
        QList<bool> flags;
        const QList<DeviceProfile> profiles = devices(token).first().profiles;
        for (const DeviceProfile &profile : profiles)
            flags.append(profile.enabled);
        return flags;
    };
    EXPECT_EQ(enabled(), QList<bool>({false, true}));
    EXPECT_EQ(devices(token).first().lastSelectedNodeId, 2);
    EXPECT_EQ(tryReadTunnelProfile(token, first).status, 200);
    EXPECT_EQ(enabled(), QList<bool>({true, false}));
    EXPECT_EQ(devices(token).first().lastSelectedNodeId, 1);
}

TEST_F(ServiceProfiles, activatingOneLeavesOtherDevicesAlone)
{
    const QByteArray token = signIn();
    const qint64 first = createDevice(token).id;
    const qint64 second = createDevice(token).id;
    createProfile(token, first, 1);
    createProfile(token, second, 2);
    EXPECT_TRUE(devices(token)[0].profiles.first().enabled);
    EXPECT_TRUE(devices(token)[1].profiles.first().enabled);
}

TEST_F(ServiceProfiles, eachDeviceGetsTheLowestFreeAddressOfTheNode)
{
    addOtherAccount();
    const QByteArray token = signIn();
    const QByteArray other = signIn("other@tarnwik.example", "other");
    EXPECT_EQ(createProfile(token, createDevice(token).id, 1).profile.assignedIp, QStringLiteral("10.64.0.2"));
    EXPECT_EQ(createProfile(other, createDevice(other).id, 1).profile.assignedIp, QStringLiteral("10.64.0.3"));
    const qint64 third = createDevice(token).id;
    EXPECT_EQ(createProfile(token, third, 1).profile.assignedIpv6, QStringLiteral("fd00:64::4"));
    EXPECT_EQ(createProfile(token, third, 2).profile.assignedIp, QStringLiteral("10.65.0.2"));
}

TEST_F(ServiceProfiles, aPoolThatIsUsedUpRefusesNewOnesAndKeepsTheOld)
{
    // Room for the node itself and one device.
    seedTunnel().ipv4Pool = QStringLiteral("10.64.0.0/30");
    const QByteArray token = signIn();
    const qint64 first = createDevice(token).id;
    const qint64 second = createDevice(token).id;
    createProfile(token, first, 1);
    EXPECT_EQ(outcome(tryCreateProfile(token, second, 1)), "409 address_pool_exhausted");
    EXPECT_EQ(tryCreateProfile(token, first, 1).status, 200);
    EXPECT_EQ(tryCreateProfile(token, second, 2).status, 201);
}

TEST_F(ServiceProfiles, anotherAccountsDeviceOrProfileIsNotFound)
{
    addOtherAccount();
    const QByteArray token = signIn();
    const qint64 device = createDevice(token).id;
    const qint64 profile = createProfile(token, device, 1).profile.id;
    const QByteArray other = signIn("other@tarnwik.example", "other");
    EXPECT_EQ(outcome(tryCreateProfile(other, device, 1)), "404 device_not_found");
    EXPECT_EQ(outcome(tryReadTunnelProfile(other, profile)), "404 profile_not_found");
}

TEST_F(ServiceProfiles, unknownNumbersAreNotFound)
{
    const QByteArray token = signIn();
    const qint64 device = createDevice(token).id;
    EXPECT_EQ(outcome(tryCreateProfile(token, 99, 1)), "404 device_not_found");
    EXPECT_EQ(outcome(tryCreateProfile(token, device, 99)), "404 node_not_found");
    EXPECT_EQ(outcome(tryCreateProfile(token, device, -1)), "404 node_not_found");
    EXPECT_EQ(outcome(tryReadTunnelProfile(token, 99)), "404 profile_not_found");
    EXPECT_EQ(outcome(send("GET", QStringLiteral("device-profiles/99999999999999999999/tunnel-profile"), {}, token)),
              "404 profile_not_found");
}

TEST_F(ServiceProfiles, aNodeThatIsOfflineGetsNone)
{
    const QByteArray token = signIn();
    EXPECT_EQ(outcome(tryCreateProfile(token, createDevice(token).id, 4)), "409 node_offline");
}

TEST_F(ServiceProfiles, aNodeWithoutAmneziaWGGetsNone)
{
    seedNode().awgEnabled = false;
    const QByteArray token = signIn();
    EXPECT_EQ(outcome(tryCreateProfile(token, createDevice(token).id, 1)), "409 protocol_not_supported");
}

TEST_F(ServiceProfiles, aBlockedAccountSeesItsDataAndGetsNone)
{
    seedAccount().serviceEnabled = false;
    seedAccount().serviceBlockReason = QStringLiteral("payment_overdue");
    const QByteArray token = signIn();
    const ServiceResponse response = tryCreateProfile(token, createDevice(token).id, 1);
    EXPECT_EQ(outcome(response), "403 service_blocked");
    EXPECT_EQ(decode<APIErrorEnvelope>(response.body).account, seedAccount());
    EXPECT_EQ(account(token).serviceBlockReason, QStringLiteral("payment_overdue"));
}

TEST_F(ServiceProfiles, anAccountWhoseQuotaIsUsedUpGetsNone)
{
    seedAccount().cycleUsedBytes = seedAccount().cycleQuotaBytes;
    const QByteArray token = signIn();
    EXPECT_EQ(outcome(tryCreateProfile(token, createDevice(token).id, 1)), "403 quota_exceeded");
    EXPECT_TRUE(account(token).serviceEnabled);
}

TEST_F(ServiceProfiles, withoutACycleTheWholeQuotaCounts)
{
    seedAccount().cycleUsedBytes.reset();
    seedAccount().cycleQuotaBytes.reset();
    seedAccount().usedBytes = seedAccount().quotaBytes;
    const QByteArray token = signIn();
    EXPECT_EQ(outcome(tryCreateProfile(token, createDevice(token).id, 1)), "403 quota_exceeded");
}

} // namespace
} // namespace tarnwik::service
