#include "ServiceFixture.h"

namespace tarnwik::service {
namespace {

using ServiceRequests = ServiceTest;

TEST_F(ServiceRequests, aPathThatLeadsNowhereIsNotFound)
{
    for (const char *tail : {"", "sessions", "session/", "nodes/1", "devices/1", "devices/x/node-profiles",
                             "devices/01/node-profiles", "devices/-1/node-profiles", "devices//node-profiles",
                             "devices/1/2/node-profiles", "device-profiles/1", "Session"}) {
        EXPECT_EQ(outcome(send("GET", QLatin1String(tail))), "404 not_found") << tail;
    }
    for (const char *whole : {"/", "", "/api/customer/v2/session", "session", "/api/customer/v1"}) {
        EXPECT_EQ(
            outcome(service().handle(
                {.method = "GET", .path = QLatin1String(whole), .authorization = {}, .contentType = {}, .body = {}})),
            "404 not_found")
            << whole;
    }
}

TEST_F(ServiceRequests, aWrongMethodIsToldTheRightOnes)
{
    const auto expectAllowed = [this](const char *method, const char *tail, const QByteArray &allowed) {
        const ServiceResponse response = send(method, QLatin1String(tail));
        EXPECT_EQ(outcome(response), "405 method_not_allowed") << method << tail;
        EXPECT_EQ(headerOf(response, "Allow"), allowed);
    };
    expectAllowed("PUT", "session", "POST, GET, DELETE");
    expectAllowed("HEAD", "nodes", "GET");
    expectAllowed("DELETE", "devices", "GET, POST");
    expectAllowed("GET", "devices/7/node-profiles", "POST");
    expectAllowed("POST", "device-profiles/7/tunnel-profile", "GET");
    expectAllowed("GET", "subscription/apple/transactions", "POST");
}

TEST_F(ServiceRequests, aBodyMustSayThatItIsJSON)
{
    const auto withType = [this](const QByteArray &type) {
        return outcome(service().handle({.method = "POST",
                                         .path = QStringLiteral("/api/customer/v1/session"),
                                         .authorization = {},
                                         .contentType = type,
                                         .body = R"({"email":"demo@tarnwik.example","password":"demo",
                                                     "device_name":"Desk","platform":"macos"})"}));
    };
    EXPECT_EQ(withType("application/json"), "200 ");
    EXPECT_EQ(withType("Application/JSON; charset=utf-8"), "200 ");
    EXPECT_EQ(withType(""), "415 unsupported_media_type");
    EXPECT_EQ(withType("text/json"), "415 unsupported_media_type");
    EXPECT_EQ(withType("application/x-www-form-urlencoded"), "415 unsupported_media_type");
}

TEST_F(ServiceRequests, whatIsNoJSONObjectIsInvalidJSON)
{
    for (const char *body :
         {"{", "[]", "null", "\"text\"", "{\"email\":}", "{}{}", "{\"email\":\"\xff\"}", "{\"a\":1,}"})
        EXPECT_EQ(outcome(send("POST", QStringLiteral("session"), body)), "400 invalid_json") << body;
}

TEST_F(ServiceRequests, anEmptyBodyIsInvalidJSON)
{
    EXPECT_EQ(outcome(service().handle({.method = "POST",
                                        .path = QStringLiteral("/api/customer/v1/session"),
                                        .authorization = {},
                                        .contentType = "application/json",
                                        .body = {}})),
              "400 invalid_json");
}

TEST_F(ServiceRequests, aBodyOverTheLimitIsTooLarge)
{
    EXPECT_EQ(outcome(send("POST", QStringLiteral("session"), QByteArray(largestBody + 1, ' '))),
              "413 payload_too_large");
    EXPECT_EQ(outcome(send("POST", QStringLiteral("session"), QByteArray(largestBody, ' '))), "400 invalid_json");
}

/// A body in which one field has been replaced, or left out, and what it is refused with.
struct BadField
{
    const char *tail;
    const char *key;
    /// Nothing to leave the field out.
    QJsonValue value;
    const char *code;
};

std::ostream &operator<<(std::ostream &stream, const BadField &field)
{
    return stream << field.tail << ' ' << field.key << ' ' << field.code;
}

const QJsonValue absent = QJsonValue::Undefined;

class ServiceBadField : public ServiceTest, public testing::WithParamInterface<BadField>
{
protected:
    static QJsonObject goodBody(const QString &tail)
    {
        if (tail == QLatin1String("session")) {
            return {{QStringLiteral("email"), QStringLiteral("demo@tarnwik.example")},
                    {QStringLiteral("password"), QStringLiteral("demo")},
                    {QStringLiteral("device_name"), QStringLiteral("Desk")},
                    {QStringLiteral("platform"), QStringLiteral("macos")}};
        }
        if (tail == QLatin1String("devices")) {
            return {{QStringLiteral("name"), QStringLiteral("Desk")},
                    {QStringLiteral("platform"), QStringLiteral("ios")},
                    {QStringLiteral("public_key"), QString::fromLatin1(QByteArray(32, 9).toBase64())}};
        }
        if (tail == QLatin1String("devices/1/node-profiles"))
            return {{QStringLiteral("node_id"), 1}, {QStringLiteral("protocol"), QStringLiteral("amneziawg")}};
        return {{QStringLiteral("signed_transaction_jws"), QStringLiteral("e30.e30.AAAA")}};
    }
};

TEST_P(ServiceBadField, isNamedByTheCode)
{
    const auto &[tail, key, value, code] = GetParam();
    const QByteArray token = signIn();
    createDevice(token);

    QJsonObject body = goodBody(QLatin1String(tail));
    const QByteArray good = QJsonDocument(body).toJson();
    if (value.isUndefined())
        body.remove(QLatin1String(key));
    else
        body.insert(QLatin1String(key), value);
    EXPECT_EQ(outcome(send("POST", QLatin1String(tail), QJsonDocument(body).toJson(), token)),
              "422 invalid_" + std::string(code));
    // The rest of the body is not what was wrong.
    EXPECT_NE(outcome(send("POST", QLatin1String(tail), good, token)), "422 invalid_" + std::string(code));
}

QJsonValue text(const char *value)
{
    return QString::fromUtf8(value);
}

INSTANTIATE_TEST_SUITE_P(
    SignIn, ServiceBadField,
    testing::Values(
        BadField{"session", "email", absent, "email"}, BadField{"session", "email", QJsonValue::Null, "email"},
        BadField{"session", "email", 5, "email"}, BadField{"session", "email", text(""), "email"},
        BadField{"session", "email", text("demo"), "email"}, BadField{"session", "email", text("@example"), "email"},
        BadField{"session", "email", text("a b@example"), "email"},
        BadField{"session", "email", text("a@b@example"), "email"},
        BadField{"session", "email", text("a@example."), "email"},
        BadField{"session", "email", QString(QString(250, u'a') + QStringLiteral("@x.example")), "email"},
        BadField{"session", "password", absent, "password"}, BadField{"session", "password", text(""), "password"},
        BadField{"session", "password", true, "password"},
        BadField{"session", "password", QString(1025, u'p'), "password"},
        BadField{"session", "device_name", absent, "device_name"},
        BadField{"session", "device_name", text("  "), "device_name"},
        BadField{"session", "device_name", text("a\nb"), "device_name"},
        BadField{"session", "device_name", QString(129, u'n'), "device_name"},
        BadField{"session", "platform", absent, "platform"}, BadField{"session", "platform", text("linux"), "platform"},
        BadField{"session", "platform", text("macOS"), "platform"}));

INSTANTIATE_TEST_SUITE_P(
    Device, ServiceBadField,
    testing::Values(
        BadField{"devices", "name", absent, "name"}, BadField{"devices", "name", text(""), "name"},
        BadField{"devices", "platform", text("android"), "platform"},
        BadField{"devices", "public_key", absent, "public_key"},
        BadField{"devices", "public_key", text(""), "public_key"},
        // 31 bytes, no padding, trailing bits, base64url, zero, and one of the other points of low order.
        BadField{"devices", "public_key", text("CQkJCQkJCQkJCQkJCQkJCQkJCQkJCQkJCQkJCQkJCQ=="), "public_key"},
        BadField{"devices", "public_key", text("CQkJCQkJCQkJCQkJCQkJCQkJCQkJCQkJCQkJCQkJCQk"), "public_key"},
        BadField{"devices", "public_key", text("CQkJCQkJCQkJCQkJCQkJCQkJCQkJCQkJCQkJCQkJCQl="), "public_key"},
        BadField{"devices", "public_key", text("_QkJCQkJCQkJCQkJCQkJCQkJCQkJCQkJCQkJCQkJCQk="), "public_key"},
        BadField{"devices", "public_key", text("AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA="), "public_key"},
        BadField{"devices", "public_key", text("AQAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA="), "public_key"},
        BadField{"devices", "public_key", text("4Ot6fDtBuK4WVuP68Z/EatoJjeucMrH9hmIFFl9JuAA="), "public_key"}));

INSTANTIATE_TEST_SUITE_P(Profile, ServiceBadField,
                         testing::Values(BadField{"devices/1/node-profiles", "node_id", absent, "node_id"},
                                         BadField{"devices/1/node-profiles", "node_id", text("1"), "node_id"},
                                         BadField{"devices/1/node-profiles", "node_id", 1.5, "node_id"},
                                         BadField{"devices/1/node-profiles", "protocol", absent, "protocol"},
                                         BadField{"devices/1/node-profiles", "protocol", text("wireguard"),
                                                  "protocol"}));

INSTANTIATE_TEST_SUITE_P(Transaction, ServiceBadField,
                         testing::Values(BadField{"subscription/apple/transactions", "signed_transaction_jws", absent,
                                                  "signed_transaction_jws"},
                                         BadField{"subscription/apple/transactions", "signed_transaction_jws",
                                                  text("e30.e30"), "signed_transaction_jws"},
                                         BadField{"subscription/apple/transactions", "signed_transaction_jws",
                                                  text("e30.e30."), "signed_transaction_jws"},
                                         BadField{"subscription/apple/transactions", "signed_transaction_jws",
                                                  text("e30=.e30.AAAA"), "signed_transaction_jws"},
                                         BadField{"subscription/apple/transactions", "signed_transaction_jws",
                                                  text("AAAA.e30.AAAA"), "signed_transaction_jws"}));

TEST_F(ServiceRequests, aWellFormedTransactionIsRefusedWhereNothingVouchesForSignatures)
{
    const QByteArray token = signIn();
    EXPECT_EQ(outcome(send("POST", QStringLiteral("subscription/apple/transactions"),
                           R"({"signed_transaction_jws":"e30.e30.AAAA"})", token)),
              "422 invalid_transaction");
    EXPECT_EQ(account(token), seedAccount());
}

} // namespace
} // namespace tarnwik::service
