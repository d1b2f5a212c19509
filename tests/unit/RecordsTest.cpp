#include "api/JSON.h"
#include "api/Requests.h"
#include "support/RecordSamples.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

DecodingError failureOf(const QByteArray &json)
{
    try {
        decode<NodeListResponse>(json);
    } catch (const DecodingError &error) {
        return error;
    }
    ADD_FAILURE() << "it decoded";
    return DecodingError(DecodingError::Kind::DataCorrupted);
}

QByteArray nested(int levels)
{
    return "{\"nodes\":[],\"deep\":" + QByteArray(levels - 1, '[') + QByteArray(levels - 1, ']') + "}";
}

} // namespace

TEST(Account, decodesWithoutCycleCounters)
{
    QJsonObject object = toJSON(decode<Account>(accountJSON));
    object.remove(QStringLiteral("cycle_used_bytes"));
    object.remove(QStringLiteral("cycle_quota_bytes"));
    const auto account = decode<Account>(QJsonDocument(object).toJson());
    EXPECT_EQ(account.cycleUsedBytes, std::nullopt);
    EXPECT_EQ(account.cycleQuotaBytes, std::nullopt);
}

TEST(Account, keepsByteCountersBeyondThirtyTwoBits)
{
    EXPECT_EQ(decode<Account>(accountJSON).usedBytes, 5000000000);
}

TEST(Account, mayHaveAnEmptyBillingPortal)
{
    QByteArray json = accountJSON;
    json.replace("https://billing.example.com/7", "");
    EXPECT_EQ(decode<Account>(json).billingPortalUrl, QString());
}

TEST(ErrorEnvelope, mayHoldTheErrorAlone)
{
    const auto envelope = decode<APIErrorEnvelope>(R"({"error":"invalid_credentials"})");
    EXPECT_EQ(envelope.error, QStringLiteral("invalid_credentials"));
    EXPECT_EQ(envelope.status, std::nullopt);
    EXPECT_EQ(envelope.subscriptionStatus, std::nullopt);
    EXPECT_EQ(envelope.account, std::nullopt);
}

TEST(ErrorEnvelope, isNoneWithoutTheErrorKey)
{
    EXPECT_THROW(decode<APIErrorEnvelope>(R"({"status":"active"})"), DecodingError);
}

TEST(EmptyResponse, isWrittenAsAnEmptyObject)
{
    EXPECT_EQ(encode(EmptyResponse()), "{}");
}

TEST(Device, mayHaveNoLastNodeAndNoProfiles)
{
    const auto device = decode<CustomerDevice>(
        R"({"id":1,"name":"n","platform":"ios","enabled":false,"public_key":"k","profiles":[]})");
    EXPECT_EQ(device.lastSelectedNodeId, std::nullopt);
    EXPECT_TRUE(device.profiles.isEmpty());
}

TEST(DeviceProfile, keepsCountersBeyondThirtyTwoBitsAndAnEmptyIPv6Address)
{
    const auto profile = decode<DeviceProfile>(deviceProfileJSON);
    EXPECT_EQ(profile.rxBytes, 4294967297);
    EXPECT_EQ(profile.txBytes, 8589934593);
    EXPECT_EQ(profile.assignedIpv6, QString());
}

TEST(TunnelProfile, keepsParameterNamesAsTheyCame)
{
    const auto profile = decode<TunnelProfile>(tunnelProfileJSON);
    EXPECT_EQ(profile.amneziawg.keys(),
              QStringList(
                  {QStringLiteral("S1"), QStringLiteral("jMax_2"), QStringLiteral("jc"), QStringLiteral("some_key")}));
    EXPECT_EQ(toJSON(profile).value(QStringLiteral("amneziawg")).toObject().keys(), profile.amneziawg.keys());
}

TEST(TunnelProfile, needsItsParametersButNotAnyOfThem)
{
    const auto withParameters = [](const QByteArray &parameters) {
        return QByteArray(tunnelProfileJSON).replace(R"({"jc":4,"S1":0,"some_key":-5,"jMax_2":1000})", parameters);
    };
    EXPECT_TRUE(decode<TunnelProfile>(withParameters("{}")).amneziawg.isEmpty());
    EXPECT_THROW(decode<TunnelProfile>(withParameters(R"({"jc":"4"})")), DecodingError);
    EXPECT_THROW(decode<TunnelProfile>(withParameters(R"({"jc":4.5})")), DecodingError);
    EXPECT_THROW(decode<TunnelProfile>(withParameters(R"({"jc":null})")), DecodingError);
    EXPECT_EQ(decode<TunnelProfile>(withParameters(R"({"jc":4,"jc":9})")).amneziawg.value(QStringLiteral("jc")), 4);
}

TEST(TunnelProfile, isReadUnderProtocolAndWrittenUnderItAgain)
{
    const auto profile = decode<TunnelProfile>(tunnelProfileJSON);
    EXPECT_EQ(profile.protocolName, QStringLiteral("amneziawg"));
    EXPECT_TRUE(toJSON(profile).contains(QStringLiteral("protocol")));
    EXPECT_FALSE(toJSON(profile).contains(QStringLiteral("protocol_name")));
}

TEST(TunnelInterface, isWrittenWithoutAPrivateKeyThatItDoesNotHave)
{
    auto interface = decode<TunnelInterface>(tunnelInterfaceJSON);
    interface.privateKey.reset();
    EXPECT_EQ(toJSON(interface).keys(),
              QStringList({QStringLiteral("addresses"), QStringLiteral("dns"), QStringLiteral("mtu")}));
}

TEST(NodeList, keepsTheServersOrder)
{
    const auto second = QByteArray(nodeJSON).replace("\"id\":3", "\"id\":1");
    const auto list = decode<NodeListResponse>("{\"nodes\":[" + nodeJSON + "," + second + "," + nodeJSON + "]}");
    ASSERT_EQ(list.nodes.size(), 3);
    EXPECT_EQ(list.nodes[0].id, 3);
    EXPECT_EQ(list.nodes[1].id, 1);
    EXPECT_EQ(list.nodes[2].id, 3);
}

TEST(RequestBodies, areWrittenUnderTheirWireKeys)
{
    const auto text = [](const char *ascii) { return QString::fromLatin1(ascii); };
    EXPECT_EQ(encode(SignInRequest{text("a@b"), text("p w"), text("macOS client"), text("macos")}),
              R"({"device_name":"macOS client","email":"a@b","password":"p w","platform":"macos"})");
    EXPECT_EQ(encode(AppleTransactionRequest{text("a.b.c")}), R"({"signed_transaction_jws":"a.b.c"})");
    EXPECT_EQ(encode(CreateDeviceRequest{text("n"), text("macos"), text("k/+=")}),
              R"({"name":"n","platform":"macos","public_key":"k/+="})");
    EXPECT_EQ(encode(CreateProfileRequest{9007199254740993, text("amneziawg")}),
              R"({"node_id":9007199254740993,"protocol":"amneziawg"})");
}

TEST(DecodingErrors, carryThePlatformsTexts)
{
    const QString missing = QStringLiteral("The data couldn’t be read because it is missing.");
    const QString malformed = QStringLiteral("The data couldn’t be read because it isn’t in the correct format.");
    EXPECT_EQ(failureOf("{}").localizedDescription(), missing);
    EXPECT_EQ(failureOf(R"({"nodes":null})").localizedDescription(), missing);
    EXPECT_EQ(failureOf(R"({"nodes":5})").localizedDescription(), malformed);
    EXPECT_EQ(failureOf("").localizedDescription(), malformed);
    EXPECT_EQ(failureOf("<html>").localizedDescription(), malformed);
}

TEST(DecodingErrors, tellDevelopersWhere)
{
    const auto broken = QByteArray(nodeJSON).replace("\"has_ipv6\":false", "\"has_ipv6\":0");
    EXPECT_EQ(failureOf("{\"nodes\":[" + nodeJSON + "," + broken + "]}").path(), QStringLiteral("nodes[1].has_ipv6"));
}

TEST(DecodingErrors, nameTheFirstDeclaredFieldOfSeveral)
{
    // "region" is of another type, "provider" is missing: the latter is declared first.
    const auto broken =
        QByteArray(nodeJSON).replace("\"region\":\"is\"", "\"region\":5").replace("\"provider\"", "\"p\"");
    const auto failure = failureOf("{\"nodes\":[" + broken + "]}");
    EXPECT_EQ(failure.kind(), DecodingError::Kind::KeyNotFound);
    EXPECT_EQ(failure.path(), QStringLiteral("nodes[0].provider"));
}

TEST(Bodies, mayNestFiveHundredAndTwelveLevelsDeep)
{
    EXPECT_NO_THROW(decode<NodeListResponse>(nested(512)));
    EXPECT_THROW(decode<NodeListResponse>(nested(513)), DecodingError);
    EXPECT_THROW(decode<NodeListResponse>(nested(1000000)), DecodingError);
}

TEST(Bodies, areNothingButOneObject)
{
    for (const QByteArray &body : {"[]", "5", "\"nodes\"", "null", "true", " ", "{\"nodes\":[]}x", "{\"nodes\":[]}{}",
                                   "{\"nodes\":[],}", "{\"nodes\":[1,]}", "{nodes:[]}", "{'nodes':[]}",
                                   "{\"nodes\":[]}/**/", "{\"nodes\":[NaN]}", "{\"nodes\":[0x1]}", "{\"nodes\":[01]}"})
        EXPECT_THROW(decode<NodeListResponse>(body), DecodingError) << body.constData();
    EXPECT_THROW(decode<NodeListResponse>(QByteArray("{\"nodes\":[]}\0", 13)), DecodingError);
    EXPECT_NO_THROW(decode<NodeListResponse>(" \t\r\n{ \"nodes\" : [ ] } \n"));
}

} // namespace tarnwik::test
