#include "platform/macos/MacTunnelManager.h"

#include "MacNetworkExtensionStandIn.h"
#include "api/JSON.h"
#include "platform/PlatformServices.h"
#include "support/EventLoop.h"
#include "support/ManualClock.h"
#include "support/RecordSamples.h"
#include "tunnel/VPNController.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

class MacTunnelManagerTest : public testing::Test
{
protected:
    std::shared_ptr<MacNetworkExtensionStandIn> m_system = std::make_shared<MacNetworkExtensionStandIn>();
    std::shared_ptr<MacTunnelManager> m_manager = std::make_shared<MacTunnelManager>(m_system);
};

TEST_F(MacTunnelManagerTest, listsWhatIsSavedInTheOrderOfTheSystem)
{
    m_system->addSaved("Tarnwik");
    m_system->addSaved(std::nullopt);
    m_system->addSaved("Žluť");
    const auto configurations = run(m_manager->loadAllFromPreferences());
    ASSERT_TRUE(configurations);
    ASSERT_EQ(configurations->size(), 3u);
    EXPECT_EQ(configurations->at(0)->localizedDescription, QStringLiteral("Tarnwik"));
    EXPECT_EQ(configurations->at(1)->localizedDescription, std::nullopt);
    EXPECT_EQ(configurations->at(2)->localizedDescription, QStringLiteral("Žluť"));
}

TEST_F(MacTunnelManagerTest, anEmptyListIsNotAMissingOne)
{
    EXPECT_EQ(run(m_manager->loadAllFromPreferences())->size(), 0u);
    m_system->hasList = false;
    EXPECT_EQ(run(m_manager->loadAllFromPreferences()), std::nullopt);
}

TEST_F(MacTunnelManagerTest, aListThatCannotBeReadFailsInTheWordsOfTheSystem)
{
    m_system->loadError = mac::PlatformError{"NEVPNErrorDomain", 5, "IPC failed"};
    try {
        run(m_manager->loadAllFromPreferences());
        FAIL() << "nothing was thrown";
    } catch (const TunnelError &error) {
        EXPECT_EQ(error.localizedDescription(), QStringLiteral("IPC failed"));
    }
}

TEST_F(MacTunnelManagerTest, aListThatComesAfterTheManagerHasGoneIsStillToldToWhoeverWaits)
{
    m_system->addSaved("Tarnwik");
    m_system->isHolding = true;
    Running<std::optional<TunnelManager::Configurations>> loading(m_manager->loadAllFromPreferences());
    m_manager.reset();
    settleEvents();
    EXPECT_FALSE(loading.hasEnded());
    std::thread(m_system->held.front()).join();
    EXPECT_EQ(loading.result()->size(), 1u);
}

TEST_F(MacTunnelManagerTest, tellsOfEveryStatusChangeUntilItsEnd)
{
    const QSignalSpy changes(m_manager.get(), &TunnelManager::statusDidChange);
    m_system->notify();
    m_system->notify();
    EXPECT_EQ(changes.count(), 2);
    const auto late = m_system->observers.front().lock();
    m_manager.reset();
    EXPECT_EQ(m_system->observers.front().use_count(), 1) << "it is observed no more";
    (*late)(); // One that was already on its way.
    EXPECT_EQ(changes.count(), 2);
}

/// The program's controller over these adapters.
class MacTunnelControllerTest : public MacTunnelManagerTest
{
protected:
    PlatformServices services() const
    {
        PlatformServices services;
        services.tunnelManager = m_manager;
        services.clock = std::make_shared<ManualClock>();
        return services;
    }

    const TunnelProfile m_profile = decode<TunnelProfile>(tunnelProfileJSON);
    const ScopedPlatform m_platform{services()};
    VPNController m_controller{QStringLiteral("example.tarnwik.client.tunnel"), QStringLiteral("TEAM.group")};
};

TEST_F(MacTunnelControllerTest, connectsByANewConfigurationBesideTheOthers)
{
    const auto other = m_system->addSaved("Another", 3);
    run(m_controller.connect(m_profile, QStringLiteral("tarnwik-device-42-private-key")));

    ASSERT_EQ(m_system->created.size(), 1u);
    const auto own = m_system->created.front();
    EXPECT_EQ(own->calls, std::vector<std::string>({"setFields", "save", "load", "start"}));
    EXPECT_EQ(other->calls, std::vector<std::string>());
    EXPECT_EQ(m_controller.status(), VPNStatus::Connecting);

    EXPECT_EQ(own->saved.localizedDescription, "Tarnwik");
    EXPECT_TRUE(own->saved.isEnabled);
    const auto &protocol = own->saved.protocolConfiguration.value();
    EXPECT_EQ(protocol.providerBundleIdentifier, "example.tarnwik.client.tunnel");
    EXPECT_EQ(protocol.serverAddress, m_profile.peer.endpoint.toStdString());
    EXPECT_FALSE(protocol.disconnectOnSleep);
    const auto &configuration = protocol.providerConfiguration;
    EXPECT_EQ(configuration.size(), 5u);
    EXPECT_TRUE(std::holds_alternative<std::string>(configuration.at("tunnel_profile_json")));
    EXPECT_EQ(configuration.at("client_private_key_ref"),
              mac::PropertyValue(std::string("tarnwik-device-42-private-key")));
    EXPECT_EQ(configuration.at("keychain_service"), mac::PropertyValue(std::string("Tarnwik")));
    EXPECT_EQ(configuration.at("metadata_only"), mac::PropertyValue(true));
    EXPECT_EQ(configuration.at("keychain_access_group"), mac::PropertyValue(std::string("TEAM.group")));
}

TEST_F(MacTunnelControllerTest, usesTheFirstConfigurationOfItsName)
{
    m_system->addSaved("Another");
    const auto own = m_system->addSaved("Tarnwik");
    const auto second = m_system->addSaved("Tarnwik");
    run(m_controller.connect(m_profile, QStringLiteral("key")));
    EXPECT_EQ(own->currentStatus, 2);
    EXPECT_TRUE(second->calls.empty());
    EXPECT_TRUE(m_system->created.empty());
}

TEST_F(MacTunnelControllerTest, failsInTheWordsOfTheSystemAtEachStep)
{
    const auto own = m_system->addSaved("Tarnwik");
    const mac::PlatformError refused{"NEVPNErrorDomain", 5, "permission denied"};
    for (auto error : {&MacManagerStandIn::saveError, &MacManagerStandIn::loadError, &MacManagerStandIn::startError}) {
        (*own).*error = refused;
        try {
            run(m_controller.connect(m_profile, QStringLiteral("key")));
            FAIL() << "nothing was thrown";
        } catch (const TunnelError &failure) {
            EXPECT_EQ(failure.localizedDescription(), QStringLiteral("permission denied"));
        }
        ((*own).*error).reset();
        EXPECT_EQ(m_controller.status(), VPNStatus::Disconnected);
    }
    EXPECT_EQ(own->calls,
              std::vector<std::string>(
                  {"setFields", "save", "setFields", "save", "load", "setFields", "save", "load", "start"}));
}

TEST_F(MacTunnelControllerTest, followsItsTunnelWhosesoeverStatusChanged)
{
    const auto own = m_system->addSaved("Tarnwik");
    run(m_controller.refreshStatus());
    EXPECT_EQ(m_controller.status(), VPNStatus::Disconnected);
    for (const long status : {2L, 3L, 4L, 5L, 9L}) {
        own->currentStatus = status;
        m_system->notify();
        settleEvents();
        EXPECT_EQ(long(m_controller.status()), status);
    }
}

} // namespace

} // namespace tarnwik::test
