#include "ServiceFixture.h"

namespace tarnwik::service {
namespace {

using ServiceDevices = ServiceTest;

TEST_F(ServiceDevices, aNewAccountHasNone)
{
    EXPECT_EQ(send("GET", QStringLiteral("devices"), {}, signIn()).body, R"({"devices":[]})");
}

TEST_F(ServiceDevices, aNewDeviceIsEnabledAndHasNoProfilesAndNoPrivateKey)
{
    const QString key = newKey();
    const ServiceResponse response = tryCreateDevice(signIn(), key);
    EXPECT_EQ(response.status, 201);
    const auto [device, privateKey] = decode<DeviceCreateResponse>(response.body);
    EXPECT_EQ(device.name, QStringLiteral("macOS device"));
    EXPECT_EQ(device.platform, QStringLiteral("macos"));
    EXPECT_TRUE(device.enabled);
    EXPECT_EQ(device.publicKey, key);
    EXPECT_EQ(device.lastSelectedNodeId, std::nullopt);
    EXPECT_TRUE(device.profiles.isEmpty());
    EXPECT_EQ(privateKey, std::nullopt);
}

TEST_F(ServiceDevices, areListedInTheOrderOfCreation)
{
    const QByteArray token = signIn();
    const QList<CustomerDevice> created{createDevice(token), createDevice(token), createDevice(token)};
    EXPECT_EQ(devices(token), created);
}

TEST_F(ServiceDevices, namesKeepEveryCharacter)
{
    const QByteArray token = signIn();
    const QString name = QStringLiteral("Zoë's \"Büro\" \\ 東京 🙂 <b>");
    const QJsonObject body{{QStringLiteral("name"), name},
                           {QStringLiteral("platform"), QStringLiteral("ios")},
                           {QStringLiteral("public_key"), newKey()}};
    EXPECT_EQ(send("POST", QStringLiteral("devices"), QJsonDocument(body).toJson(), token).status, 201);
    EXPECT_EQ(devices(token).first().name, name);
}

TEST_F(ServiceDevices, aKeyIsRegisteredOnceAmongAllAccounts)
{
    addOtherAccount();
    const QString key = newKey();
    const QByteArray token = signIn();
    EXPECT_EQ(tryCreateDevice(token, key).status, 201);
    EXPECT_EQ(outcome(tryCreateDevice(token, key)), "409 public_key_already_registered");
    EXPECT_EQ(outcome(tryCreateDevice(signIn("other@tarnwik.example", "other"), key)),
              "409 public_key_already_registered");
}

TEST_F(ServiceDevices, anAccountHasTenAtMost)
{
    const QByteArray token = signIn();
    for (int count = 0; count < 10; ++count)
        createDevice(token);
    EXPECT_EQ(outcome(tryCreateDevice(token, newKey())), "409 device_limit_reached");
    EXPECT_EQ(devices(token).size(), 10);
}

TEST_F(ServiceDevices, areSeenByTheirOwnAccountOnly)
{
    addOtherAccount();
    createDevice(signIn());
    EXPECT_TRUE(devices(signIn("other@tarnwik.example", "other")).isEmpty());
}

} // namespace
} // namespace tarnwik::service
