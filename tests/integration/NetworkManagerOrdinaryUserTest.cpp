#include "support/EventLoop.h"
#include "support/networkmanager/NetworkManagerFixture.h"

#include <unistd.h>

namespace tarnwik {

namespace {

using test::run;
using test::StatusLog;

/// Run as a user who is not root, by as-ordinary-user.sh: it has installed the provider in its mode "secrets", and
/// saved a VPN connection named "Root's own" that only root may see.
class NetworkManagerOrdinaryUser : public testing::Test
{
protected:
    void SetUp() override { ASSERT_NE(getuid(), 0U) << "Run this test by as-ordinary-user.sh."; }

    std::shared_ptr<test::InMemoryKeychain> keychain = std::make_shared<test::InMemoryKeychain>();
    NetworkManagerTunnelManager manager{keychain};
};

TEST_F(NetworkManagerOrdinaryUser, savesConnectsAndDisconnectsAndSeesNobodyElsesConnections)
{
    EXPECT_TRUE(run(manager.loadAllFromPreferences())->empty());

    keychain->put(QStringLiteral("Tarnwik"), test::keyAccount, test::privateKey);
    const auto configuration = manager.create();
    configuration->localizedDescription = QStringLiteral("Tarnwik");
    configuration->isEnabled = true;
    TunnelProviderProtocol protocol;
    protocol.providerBundleIdentifier = test::providerService;
    protocol.providerConfiguration = {{QStringLiteral("client_private_key_ref"), test::keyAccount},
                                      {QStringLiteral("keychain_service"), QStringLiteral("Tarnwik")}};
    configuration->protocolConfiguration = protocol;
    run(configuration->saveToPreferences());
    run(configuration->saveToPreferences());
    run(configuration->loadFromPreferences());
    EXPECT_EQ(configuration->protocolConfiguration, protocol);

    const StatusLog log(manager, configuration);
    run(configuration->startVPNTunnel());
    ASSERT_TRUE(log.waitFor(VPNStatus::Connected));
    EXPECT_EQ(keychain->lookUps, 1);
    EXPECT_EQ(run(manager.loadAllFromPreferences())->size(), 1U);
    run(configuration->stopVPNTunnel());
    EXPECT_TRUE(log.waitFor(VPNStatus::Disconnected));
}

} // namespace

} // namespace tarnwik
