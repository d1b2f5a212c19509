#include "support/ModelFixture.h"

#include <QJsonDocument>

#include <sodium.h>

namespace tarnwik::test {

namespace {

class Connect : public ModelTest
{
protected:
    Connect()
    {
        storeSession();
        m_answers[m_postDevice] = {201, "{\"device\":" + device(42, "macos") + R"(,"private_key":"never-used"})"};
        setProfileAnswer(42);
        setProfileAnswer(1);
        setProfileAnswer(2);
    }

    static QString profilesOf(int deviceID)
    {
        return QStringLiteral("POST /api/customer/v1/devices/%1/node-profiles").arg(deviceID);
    }

    void setProfileAnswer(int deviceID, int status = 201, const QByteArray &body = sampleJSON<DeviceProfileResponse>())
    {
        m_answers[profilesOf(deviceID)] = {status, body};
    }

    void setDevices(const QByteArrayList &list)
    {
        m_answers[m_getDevices] = {200, devices(list)};
        run(m_model.refresh());
        forgetRequests();
    }

    void storeKey(int deviceID)
    {
        m_platform.keychain->items.insert(QStringLiteral("tarnwik-device-%1-private-key").arg(deviceID), "key");
    }

    QString usedKeyReference() const
    {
        return m_platform.tunnelManager->created.front()
            ->protocolConfiguration->providerConfiguration[text("client_private_key_ref")]
            .toString();
    }

    AppModel m_model;
};

/// The public key of a private one, both in base64.
QByteArray publicKeyOf(const QByteArray &privateKey)
{
    const QByteArray scalar = QByteArray::fromBase64(privateKey);
    QByteArray point(crypto_scalarmult_curve25519_BYTES, '\0');
    crypto_scalarmult_curve25519_base(reinterpret_cast<unsigned char *>(point.data()),
                                      reinterpret_cast<const unsigned char *>(scalar.constData()));
    return point.toBase64();
}

} // namespace

TEST_F(Connect, needsANode)
{
    m_answers[m_getNodes] = {200, nodes({})};
    run(m_model.refresh());
    forgetRequests();
    run(m_model.connect());
    EXPECT_EQ(m_model.errorMessage(), text("No exit nodes are available."));
    EXPECT_TRUE(requests().isEmpty());
    EXPECT_FALSE(m_model.isLoading());
}

TEST_F(Connect, registersThisComputerTheFirstTime)
{
    setDevices({});
    run(m_model.connect());
    EXPECT_EQ(m_model.errorMessage(), std::nullopt);
    EXPECT_EQ(requests(), QStringList({m_postDevice, profilesOf(42), m_getAccount, m_getNodes, m_getDevices}));

    const auto body = QJsonDocument::fromJson(*m_platform.httpSession->exchanges[0]->request.body).object();
    EXPECT_EQ(body[text("name")], text("macOS device"));
    EXPECT_EQ(body[text("platform")], text("macos"));
    const QByteArray privateKey = m_platform.keychain->items.value(text("tarnwik-device-42-private-key"));
    EXPECT_EQ(privateKey.size(), 44);
    EXPECT_EQ(body[text("public_key")].toString().toLatin1(), publicKeyOf(privateKey));
    EXPECT_EQ(usedKeyReference(), text("tarnwik-device-42-private-key"));
    EXPECT_EQ(*m_platform.httpSession->exchanges[1]->request.body, R"({"node_id":5,"protocol":"amneziawg"})");
}

TEST_F(Connect, showsANewDeviceBeforeAnyRefresh)
{
    setDevices({});
    m_answers.remove(profilesOf(42));
    Running running(m_model.connect());
    ASSERT_TRUE(spinUntil([&] { return m_platform.httpSession->isWaiting(profilesOf(42)); }));
    EXPECT_TRUE(m_model.isLoading());
    ASSERT_EQ(m_model.devices().size(), 1);
    EXPECT_EQ(m_model.devices().first().id, 42);
    m_platform.httpSession->waiting(profilesOf(42)).answer(503);
    running.result();
    EXPECT_EQ(m_model.devices().size(), 1) << "a device registered before the failure stays";
    EXPECT_EQ(m_model.errorMessage(), text("Server returned HTTP 503."));
    EXPECT_TRUE(m_platform.tunnelManager->operations.isEmpty());
}

TEST_F(Connect, appendsANewDeviceToTheOthers)
{
    setDevices({device(1, "macos")});
    m_answers.remove(profilesOf(42));
    Running running(m_model.connect());
    ASSERT_TRUE(spinUntil([&] { return m_platform.httpSession->isWaiting(profilesOf(42)); }));
    ASSERT_EQ(m_model.devices().size(), 2);
    EXPECT_EQ(m_model.devices()[0].id, 1);
    EXPECT_EQ(m_model.devices()[1].id, 42);
    m_platform.httpSession->waiting(profilesOf(42)).answer(503);
    running.result();
}

TEST_F(Connect, usesTheDeviceWhoseKeyIsHere)
{
    setDevices({device(1, "macos")});
    storeKey(1);
    run(m_model.connect());
    EXPECT_EQ(requests(), QStringList({profilesOf(1), m_getAccount, m_getNodes, m_getDevices}));
    EXPECT_EQ(usedKeyReference(), text("tarnwik-device-1-private-key"));
}

TEST_F(Connect, registersASecondDeviceWhenTheKeyWasMadeElsewhere)
{
    setDevices({device(1, "macos")});
    run(m_model.connect());
    EXPECT_EQ(requests().first(), m_postDevice);
    EXPECT_EQ(usedKeyReference(), text("tarnwik-device-42-private-key"));
}

TEST_F(Connect, usesADeviceOfAnotherPlatformWhoseKeyIsHere)
{
    setDevices({device(1, "ios")});
    storeKey(1);
    run(m_model.connect());
    EXPECT_EQ(requests().first(), profilesOf(1));
}

TEST_F(Connect, prefersADeviceOfThisPlatform)
{
    setDevices({device(1, "ios"), device(2, "macos")});
    storeKey(1);
    storeKey(2);
    run(m_model.connect());
    EXPECT_EQ(requests().first(), profilesOf(2));
}

TEST_F(Connect, comparesPlatformsExactly)
{
    setDevices({device(1, "macOS"), device(2, "macos")});
    storeKey(1);
    storeKey(2);
    run(m_model.connect());
    EXPECT_EQ(requests().first(), profilesOf(2));
}

TEST_F(Connect, triesNoLaterDevice)
{
    setDevices({device(1, "macos"), device(2, "macos")});
    storeKey(2);
    run(m_model.connect());
    EXPECT_EQ(requests().first(), m_postDevice);
}

TEST_F(Connect, takesAnyReadFailureForAMissingKey)
{
    setDevices({device(1, "macos")});
    storeKey(1);
    m_platform.keychain->failures.insert(text("read"), errSecInteractionNotAllowed);
    run(m_model.connect());
    EXPECT_EQ(requests(), QStringList({m_postDevice, profilesOf(42)}));
    EXPECT_EQ(m_model.errorMessage(), text("Keychain operation failed with status -25308."));
}

TEST_F(Connect, failsWithoutATunnelProfile)
{
    setDevices({});
    setProfileAnswer(42, 200, R"({"profile":)" + deviceProfileJSON + "}");
    run(m_model.connect());
    EXPECT_EQ(m_model.errorMessage(), text("Tunnel profile was missing from the server response."));
    EXPECT_FALSE(m_model.isLoading());
    EXPECT_EQ(requests(), QStringList({m_postDevice, profilesOf(42)})) << "no other endpoint is asked";
}

TEST_F(Connect, failsWhenTheKeyHasGoneMeanwhile)
{
    setDevices({device(1, "macos")});
    storeKey(1);
    m_answers.remove(profilesOf(1));
    Running running(m_model.connect());
    ASSERT_TRUE(spinUntil([&] { return m_platform.httpSession->isWaiting(profilesOf(1)); }));
    m_platform.keychain->items.clear();
    m_platform.httpSession->waiting(profilesOf(1)).answer(200, sampleJSON<DeviceProfileResponse>());
    running.result();
    EXPECT_EQ(m_model.errorMessage(), text("Keychain operation failed with status -25300."));
    EXPECT_TRUE(m_platform.tunnelManager->operations.isEmpty());
}

TEST_F(Connect, doesNotShowADeviceWhoseKeyCouldNotBeSaved)
{
    setDevices({});
    m_platform.keychain->failures.insert(text("add"), errSecInteractionNotAllowed);
    run(m_model.connect());
    EXPECT_EQ(m_model.errorMessage(), text("Keychain operation failed with status -25308."));
    EXPECT_TRUE(m_model.devices().isEmpty());
    EXPECT_EQ(requests(), QStringList({m_postDevice}));
}

TEST_F(Connect, showsWhatTheServerSaysToANewDeviceOrProfile)
{
    setDevices({});
    setProfileAnswer(42, 403, R"({"error":"quota_exceeded"})");
    run(m_model.connect());
    EXPECT_EQ(m_model.errorMessage(), text("quota exceeded"));
    m_answers[m_postDevice] = {409, R"({"error":"device_limit_reached"})"};
    m_platform.keychain->items.clear();
    run(m_model.connect());
    EXPECT_EQ(m_model.errorMessage(), text("device limit reached"));
}

TEST_F(Connect, showsWhatTheTunnelSays)
{
    setDevices({});
    m_platform.tunnelManager->failures.insert(text("start"), text("The VPN service is not installed."));
    run(m_model.connect());
    EXPECT_EQ(m_model.errorMessage(), text("The VPN service is not installed."));
    EXPECT_EQ(requests(), QStringList({m_postDevice, profilesOf(42)})) << "refreshed after a failure";
}

TEST_F(Connect, pinsTheNodeOnlyAfterItsRefresh)
{
    setDevices({});
    m_model.setSelectedNodeID(std::nullopt);
    m_answers[m_getAccount] = {500, {}};
    run(m_model.connect());
    EXPECT_EQ(m_model.errorMessage(), text("Server returned HTTP 500."));
    EXPECT_EQ(m_model.selectedNodeID(), std::nullopt);
    EXPECT_EQ(m_model.vpnController()->status(), VPNStatus::Connecting) << "the tunnel was stopped";
    m_answers[m_getAccount] = {200, sampleJSON<AccountResponse>()};
    m_model.setSelectedNodeID(3);
    run(m_model.connect());
    EXPECT_EQ(m_model.selectedNodeID(), 5) << "the stale choice was not pinned to the node that was used";
}

TEST_F(Connect, tellsTheTunnelTheAccountOfTheKeyAndNeverTheKey)
{
    setDevices({});
    run(m_model.connect());
    const QByteArray key = m_platform.keychain->items.value(text("tarnwik-device-42-private-key"));
    const auto configuration = m_platform.tunnelManager->created.front()->protocolConfiguration->providerConfiguration;
    for (const QVariant &value : configuration)
        EXPECT_FALSE(value.toString().contains(QString::fromLatin1(key)));
    for (const auto &exchange : m_platform.httpSession->exchanges)
        EXPECT_FALSE(exchange->request.body.value_or("").contains(key));
}

TEST_F(Connect, mayRunTwiceAtOnceAndRegistersTwoDevices)
{
    setDevices({});
    Running first(m_model.connect());
    Running second(m_model.connect());
    first.result();
    second.result();
    EXPECT_EQ(requests().count(m_postDevice), 2);
}

TEST_F(Connect, goesOnThroughASignOutInItsMiddle)
{
    setDevices({});
    m_answers.remove(profilesOf(42));
    Running connecting(m_model.connect());
    ASSERT_TRUE(spinUntil([&] { return m_platform.httpSession->isWaiting(profilesOf(42)); }));
    run(m_model.signOut());
    EXPECT_FALSE(m_model.isSignedIn());
    // Nothing orders the two: the server, which has ended the session, is what stops the connect.
    m_platform.httpSession->waiting(profilesOf(42)).answer(401, R"({"error":"unauthorized"})");
    connecting.result();
    EXPECT_EQ(m_model.errorMessage(), text("unauthorized"));
    EXPECT_FALSE(m_platform.tunnelManager->operations.contains(text("start")));
    EXPECT_FALSE(m_model.isLoading());
}

TEST_F(Connect, endsWithoutAMessageWhenStopped)
{
    setDevices({});
    m_platform.tunnelManager->held = QStringList{text("save")};
    std::stop_source stop;
    Running running(m_model.connect(stop.get_token()));
    ASSERT_TRUE(spinUntil([&] { return m_platform.tunnelManager->operations.contains(text("save")); }));
    stop.request_stop();
    running.result();
    EXPECT_EQ(m_model.errorMessage(), std::nullopt);
    EXPECT_FALSE(m_model.isLoading());
    m_platform.tunnelManager->release();
    settleEvents();
    EXPECT_FALSE(m_platform.tunnelManager->operations.contains(text("start")));
}

TEST_F(Connect, endsQuietlyWhenTheModelGoes)
{
    auto model = std::make_unique<AppModel>();
    run(model->refresh());
    m_answers.remove(m_postDevice);
    Running running(model->connect());
    ASSERT_TRUE(spinUntil([&] { return m_platform.httpSession->isWaiting(m_postDevice); }));
    model.reset();
    m_platform.httpSession->waiting(m_postDevice).answer(201, "{\"device\":" + device(42, "macos") + "}");
    running.result();
    EXPECT_TRUE(m_platform.keychain->items.isEmpty());
}

TEST_F(Connect, disconnectStopsTheTunnelAndKeepsEverythingElse)
{
    setDevices({});
    run(m_model.connect());
    forgetRequests();
    run(m_model.disconnect());
    EXPECT_EQ(m_platform.tunnelManager->operations.last(), text("stop"));
    EXPECT_TRUE(requests().isEmpty());
    EXPECT_EQ(m_model.selectedNodeID(), 5);
    EXPECT_EQ(m_platform.keychain->items.size(), 1);
    EXPECT_FALSE(m_model.isLoading());
}

TEST_F(Connect, disconnectShowsWhatTheTunnelSays)
{
    m_platform.tunnelManager->failures.insert(text("loadAll"), text("NetworkManager is not running."));
    run(m_model.disconnect());
    EXPECT_EQ(m_model.errorMessage(), text("NetworkManager is not running."));
}

} // namespace tarnwik::test
