#include "tunnel/VPNController.h"
#include "api/JSON.h"
#include "support/EventLoop.h"
#include "support/RecordSamples.h"
#include "support/TestPlatform.h"
#include "tunnel/ProviderConfiguration.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QStringList words(const char *list)
{
    return text(list).split(u' ');
}

class Controller : public testing::Test
{
protected:
    FakeTunnelManager &system() { return *m_platform.tunnelManager; }
    Task<> connect(std::stop_token token = {}) { return m_controller.connect(m_profile, m_key, token); }

    TestPlatform m_platform;
    const TunnelProfile m_profile = decode<TunnelProfile>(tunnelProfileJSON);
    const QString m_key = text("tarnwik-device-42-private-key");
    VPNController m_controller{text("org.example.tunnel"), std::nullopt};
};

} // namespace

TEST_F(Controller, isNotConfiguredAtFirst)
{
    EXPECT_EQ(m_controller.status(), VPNStatus::Invalid);
    EXPECT_EQ(m_controller.statusLabel(), text("Not configured"));
    EXPECT_EQ(m_controller.actionState(), VPNActionState::CanConnect);
    EXPECT_FALSE(m_controller.hasManager());
    EXPECT_TRUE(system().operations.isEmpty());
}

TEST_F(Controller, tellsEveryStatusInWords)
{
    const auto own = system().addSaved(text("Tarnwik"));
    const auto told = [&](int status) {
        own->currentStatus = VPNStatus(status);
        run(m_controller.refreshStatus());
        return std::pair(m_controller.statusLabel(), m_controller.actionState());
    };
    EXPECT_EQ(told(0), std::pair(text("Not configured"), VPNActionState::CanConnect));
    EXPECT_EQ(told(1), std::pair(text("Disconnected"), VPNActionState::CanConnect));
    EXPECT_EQ(told(2), std::pair(text("Connecting"), VPNActionState::InTransition));
    EXPECT_EQ(told(3), std::pair(text("Connected"), VPNActionState::CanDisconnect));
    EXPECT_EQ(told(4), std::pair(text("Connecting"), VPNActionState::InTransition));
    EXPECT_EQ(told(5), std::pair(text("Disconnecting"), VPNActionState::InTransition));
    EXPECT_EQ(told(6), std::pair(text("Unknown"), VPNActionState::InTransition));
    EXPECT_EQ(told(-1), std::pair(text("Unknown"), VPNActionState::InTransition));
}

TEST_F(Controller, writesSavesReloadsAndStarts)
{
    run(connect());
    EXPECT_EQ(system().operations, words("loadAll create save load start"));
    const auto &own = *system().created.front();
    EXPECT_EQ(own.localizedDescription, text("Tarnwik"));
    EXPECT_TRUE(own.isEnabled);
    EXPECT_EQ(own.protocolConfiguration,
              (TunnelProviderProtocol{text("org.example.tunnel"), m_profile.peer.endpoint, false,
                                      providerConfiguration(m_profile, m_key, std::nullopt)}));
    EXPECT_EQ(m_controller.status(), VPNStatus::Connecting);
}

TEST_F(Controller, keepsNothingOfAnEarlierProtocol)
{
    const auto own = system().addSaved(text("Tarnwik"));
    own->protocolConfiguration =
        TunnelProviderProtocol{text("old"), text("old"), true, {{text("old_key"), text("old")}}};
    run(connect());
    EXPECT_EQ(own->protocolConfiguration->providerBundleIdentifier, text("org.example.tunnel"));
    EXPECT_FALSE(own->protocolConfiguration->disconnectOnSleep);
    EXPECT_FALSE(own->protocolConfiguration->providerConfiguration.contains(text("old_key")));
}

TEST_F(Controller, takesTheFirstConfigurationOfItsName)
{
    system().addSaved(std::nullopt);
    const auto foreign = system().addSaved(text("Tarnwik 2"));
    const auto first = system().addSaved(text("Tarnwik"));
    const auto second = system().addSaved(text("Tarnwik"));
    run(connect());
    EXPECT_EQ(first->currentStatus, VPNStatus::Connecting);
    EXPECT_EQ(second->currentStatus, VPNStatus::Disconnected);
    EXPECT_FALSE(foreign->protocolConfiguration);
    EXPECT_TRUE(system().created.empty());
}

TEST_F(Controller, makesOneBesideThoseOfOtherNames)
{
    const auto foreign = system().addSaved(text("Work"));
    run(connect());
    EXPECT_EQ(system().created.size(), 1U);
    EXPECT_FALSE(foreign->protocolConfiguration);
    EXPECT_EQ(foreign->currentStatus, VPNStatus::Disconnected);
}

TEST_F(Controller, readsTheListOnce)
{
    run(m_controller.refreshStatus());
    run(connect());
    run(m_controller.disconnect());
    run(m_controller.refreshStatus());
    EXPECT_EQ(system().operations.count(text("loadAll")), 1);
    EXPECT_EQ(system().operations.count(text("create")), 1);
}

TEST_F(Controller, readsTheListAgainAfterAFailure)
{
    system().failures.insert(text("loadAll"), text("NetworkManager is not running."));
    run(m_controller.refreshStatus());
    system().failures.clear();
    system().addSaved(text("Tarnwik"));
    run(m_controller.refreshStatus());
    EXPECT_EQ(m_controller.status(), VPNStatus::Disconnected);
}

TEST_F(Controller, countsAnAbsentListAsEmpty)
{
    system().saved.reset();
    run(m_controller.refreshStatus());
    EXPECT_TRUE(m_controller.hasManager());
    EXPECT_EQ(m_controller.status(), VPNStatus::Invalid);
}

TEST_F(Controller, makesOneConfigurationForTwoOperationsAtOnce)
{
    system().held = words("loadAll");
    Running first(m_controller.refreshStatus());
    Running second(connect());
    system().release();
    first.result();
    second.result();
    EXPECT_EQ(system().created.size(), 1U);
}

TEST_F(Controller, isNotConfiguredWhenTheListCannotBeRead)
{
    system().failures.insert(text("loadAll"), text("NetworkManager is not running."));
    EXPECT_NO_THROW(run(m_controller.refreshStatus()));
    EXPECT_EQ(m_controller.status(), VPNStatus::Invalid);
    EXPECT_THROW(run(connect()), TunnelError);
    EXPECT_THROW(run(m_controller.disconnect()), TunnelError);
}

TEST_F(Controller, passesEveryFailureOnAndLeavesTheStatus)
{
    for (const QString &operation : {text("save"), text("load"), text("start")}) {
        const auto own = system().addSaved(text("Tarnwik"));
        VPNController controller;
        run(controller.refreshStatus());
        system().operations.clear();
        system().failures = {{operation, text("It does not work.")}};
        own->currentStatus = VPNStatus::Reasserting;
        try {
            run(controller.connect(m_profile, m_key));
            FAIL() << operation.toStdString();
        } catch (const TunnelError &error) {
            EXPECT_EQ(error.localizedDescription(), text("It does not work."));
        }
        EXPECT_EQ(system().operations.last(), operation);
        EXPECT_EQ(controller.status(), VPNStatus::Disconnected);
        system().failures.clear();
        system().saved->clear();
    }
}

TEST_F(Controller, disconnectsWithoutAConfiguration)
{
    run(m_controller.disconnect());
    EXPECT_EQ(system().operations, words("loadAll create stop"));
    EXPECT_EQ(m_controller.status(), VPNStatus::Invalid);
}

TEST_F(Controller, followsEveryNotificationToItsOwnStatus)
{
    const auto own = system().addSaved(text("Tarnwik"));
    run(m_controller.refreshStatus());
    QSignalSpy changes(&m_controller, &VPNController::statusChanged);
    own->currentStatus = VPNStatus::Connected;
    Q_EMIT system().statusDidChange();
    EXPECT_EQ(m_controller.status(), VPNStatus::Disconnected) << "taken inside the notification";
    settleEvents();
    EXPECT_EQ(m_controller.status(), VPNStatus::Connected);
    Q_EMIT system().statusDidChange();
    settleEvents();
    EXPECT_EQ(changes.count(), 1) << "an equal status was told";
}

TEST_F(Controller, ignoresNotificationsBeforeItHasAConfiguration)
{
    system().addSaved(text("Tarnwik"))->currentStatus = VPNStatus::Connected;
    Q_EMIT system().statusDidChange();
    settleEvents();
    EXPECT_EQ(m_controller.status(), VPNStatus::Invalid);
}

TEST_F(Controller, mayGoBeforeANotificationArrives)
{
    auto controller = std::make_unique<VPNController>();
    run(controller->refreshStatus());
    Q_EMIT system().statusDidChange();
    QSignalSpy told(&system(), &TunnelManager::statusDidChange);
    controller.reset();
    Q_EMIT system().statusDidChange();
    settleEvents();
    EXPECT_EQ(told.count(), 1);
}

TEST_F(Controller, tellsOfItsConfigurationOnce)
{
    QSignalSpy found(&m_controller, &VPNController::managerChanged);
    run(m_controller.refreshStatus());
    run(connect());
    EXPECT_EQ(found.count(), 1);
}

TEST_F(Controller, endsItsWaitWhenStoppedAndLeavesTheStatus)
{
    const auto own = system().addSaved(text("Tarnwik"));
    own->currentStatus = VPNStatus::Connected;
    run(m_controller.refreshStatus());
    for (const QString &operation : {text("save"), text("load"), text("start"), text("stop")}) {
        system().held = QStringList{operation};
        std::stop_source stop;
        Running running(operation == text("stop") ? m_controller.disconnect(stop.get_token())
                                                  : connect(stop.get_token()));
        ASSERT_TRUE(spinUntil([&] { return system().operations.last() == operation; }));
        stop.request_stop();
        EXPECT_THROW(running.result(), async::Cancelled);
        EXPECT_EQ(m_controller.status(), VPNStatus::Connected);
        system().release();
        settleEvents();
    }
}

TEST_F(Controller, keepsItsStatusWhenARefreshIsStopped)
{
    const auto own = system().addSaved(text("Tarnwik"));
    system().held = words("loadAll");
    std::stop_source stop;
    Running running(m_controller.refreshStatus(stop.get_token()));
    stop.request_stop();
    EXPECT_NO_THROW(running.result());
    EXPECT_FALSE(m_controller.hasManager());
    system().release();
    settleEvents();
}

TEST_F(Controller, mayGoWhileItsOperationRuns)
{
    system().held = words("save");
    auto controller = std::make_unique<VPNController>();
    Running running(controller->connect(m_profile, m_key));
    ASSERT_TRUE(spinUntil([&] { return system().operations.last() == text("save"); }));
    controller.reset();
    system().release();
    EXPECT_THROW(running.result(), async::Cancelled);
    EXPECT_FALSE(system().operations.contains(text("start"))) << "a tunnel came up that nobody owns";
}

TEST_F(Controller, tellsWhyTheTunnelWentDown)
{
    EXPECT_EQ(m_controller.lastDisconnectError(), std::nullopt);
    system().addSaved(text("Tarnwik"))->disconnectError = text("The VPN service refused the login.");
    run(m_controller.refreshStatus());
    EXPECT_EQ(m_controller.lastDisconnectError(), text("The VPN service refused the login."));
}

TEST_F(Controller, knowsTheNodeThatItsConfigurationLeadsTo)
{
    EXPECT_EQ(m_controller.configuredNode(), std::nullopt);
    run(connect());
    EXPECT_EQ(m_controller.configuredNode(), m_profile.node);
    system().created.front()->protocolConfiguration->providerConfiguration[text("tunnel_profile_json")] = text("{}");
    EXPECT_EQ(m_controller.configuredNode(), std::nullopt);
}

TEST(ProviderConfiguration, hasFourKeysWithoutAnAccessGroup)
{
    const auto profile = decode<TunnelProfile>(tunnelProfileJSON);
    const QVariantMap configuration = providerConfiguration(profile, text("the-account"), std::nullopt);
    EXPECT_EQ(configuration.keys(),
              QStringList({text("client_private_key_ref"), text("keychain_service"), text("metadata_only"),
                           text("tunnel_profile_json")}));
    EXPECT_EQ(configuration[text("client_private_key_ref")], text("the-account"));
    EXPECT_EQ(configuration[text("keychain_service")], text("Tarnwik"));
    EXPECT_EQ(configuration[text("metadata_only")], QVariant(true));
    const QByteArray json = configuration[text("tunnel_profile_json")].toString().toUtf8();
    EXPECT_TRUE(decode<TunnelProfile>(json) == profile);
    EXPECT_FALSE(json.contains('\n'));
}

TEST(ProviderConfiguration, namesTheAccessGroupEvenAnEmptyOne)
{
    const TunnelProfile profile;
    EXPECT_EQ(providerConfiguration(profile, {}, text("TEAM.group"))[text("keychain_access_group")],
              text("TEAM.group"));
    EXPECT_EQ(providerConfiguration(profile, {}, QString())[text("keychain_access_group")],
              QVariant(QString(text(""))));
    EXPECT_TRUE(providerConfiguration(profile, {}, QString()).contains(text("keychain_access_group")));
}

TEST(ProviderConfiguration, writesAnInterfaceWithoutAKeyThatItDoesNotHave)
{
    auto profile = decode<TunnelProfile>(tunnelProfileJSON);
    profile.interface.privateKey.reset();
    const QString json = providerConfiguration(profile, {}, {})[text("tunnel_profile_json")].toString();
    const QJsonObject interface = QJsonDocument::fromJson(json.toUtf8()).object()[text("interface")].toObject();
    EXPECT_EQ(interface.keys(), words("addresses dns mtu"));
}

} // namespace tarnwik::test
