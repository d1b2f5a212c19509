#include "api/JSON.h"
#include "api/TarnwikAPIClient.h"
#include "support/EventLoop.h"
#include "support/RecordSamples.h"
#include "support/TestPlatform.h"

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

using Headers = QList<std::pair<QByteArray, QByteArray>>;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

class APIClient : public testing::Test
{
protected:
    TarnwikAPIClient client(const char *baseURL = "https://api.example", std::optional<QString> token = text("abc"))
    {
        return TarnwikAPIClient(*URL::fromString(text(baseURL)), std::move(token));
    }

    void answer(int status, const QByteArray &body = {})
    {
        m_platform.httpSession->handler = [=](auto &exchange) { exchange.answer(status, body); };
    }

    const HTTPRequest &lastRequest() const { return m_platform.httpSession->exchanges.back()->request; }

    TestPlatform m_platform;
    const Headers m_bareHeaders{{"Accept", "application/json"}, {"Authorization", "Bearer abc"}};
    const Headers m_bodyHeaders = m_bareHeaders + Headers{{"Content-Type", "application/json"}};
};

} // namespace

TEST_F(APIClient, sendsEveryOperationToItsPlace)
{
    answer(500);
    const auto sent = [&](auto task) {
        EXPECT_THROW(run(std::move(task)), TarnwikClientError);
        return QStringList{QString::fromLatin1(lastRequest().method), lastRequest().url.absoluteString(),
                           QString::fromUtf8(lastRequest().body.value_or("no body"))};
    };
    const QString base = text("https://api.example/api/customer/v1/");
    const TarnwikAPIClient api = client();
    EXPECT_EQ(sent(api.account()), QStringList({text("GET"), base + text("session"), text("no body")}));
    EXPECT_EQ(sent(api.nodes()), QStringList({text("GET"), base + text("nodes"), text("no body")}));
    EXPECT_EQ(sent(api.devices()), QStringList({text("GET"), base + text("devices"), text("no body")}));
    EXPECT_EQ(sent(api.signOut()), QStringList({text("DELETE"), base + text("session"), text("no body")}));
    EXPECT_EQ(sent(api.tunnelProfile(7)),
              QStringList({text("GET"), base + text("device-profiles/7/tunnel-profile"), text("no body")}));
    EXPECT_EQ(
        sent(api.signIn(text("a@b"), text(" p "), text("macOS client"), text("macos"))),
        QStringList({text("POST"), base + text("session"),
                     text(R"({"device_name":"macOS client","email":"a@b","password":" p ","platform":"macos"})")}));
    EXPECT_EQ(sent(api.createDevice(text("n"), text("macos"), text("k="))),
              QStringList({text("POST"), base + text("devices"),
                           text(R"({"name":"n","platform":"macos","public_key":"k="})")}));
    EXPECT_EQ(sent(api.createProfile(12, 3)),
              QStringList({text("POST"), base + text("devices/12/node-profiles"),
                           text(R"({"node_id":3,"protocol":"amneziawg"})")}));
    EXPECT_EQ(sent(api.syncAppleTransaction(text("h.p.s"))),
              QStringList({text("POST"), base + text("subscription/apple/transactions"),
                           text(R"({"signed_transaction_jws":"h.p.s"})")}));
}

TEST_F(APIClient, writesIdentifiersInPlainDecimal)
{
    answer(500);
    EXPECT_THROW(run(client().createProfile(9223372036854775807, 1)), TarnwikClientError);
    EXPECT_TRUE(lastRequest().url.absoluteString().endsWith(text("/devices/9223372036854775807/node-profiles")));
    EXPECT_THROW(run(client().tunnelProfile(-5)), TarnwikClientError);
    EXPECT_TRUE(lastRequest().url.absoluteString().endsWith(text("/device-profiles/-5/tunnel-profile")));
}

TEST_F(APIClient, sendsExactlyTheHeadersThatBelong)
{
    answer(500);
    EXPECT_THROW(run(client().nodes()), TarnwikClientError);
    EXPECT_EQ(lastRequest().headers, m_bareHeaders);
    EXPECT_THROW(run(client().signOut()), TarnwikClientError);
    EXPECT_EQ(lastRequest().headers, m_bareHeaders);
    EXPECT_THROW(run(client().createProfile(1, 2)), TarnwikClientError);
    EXPECT_EQ(lastRequest().headers, m_bodyHeaders);
    EXPECT_EQ(lastRequest().timeout, std::chrono::seconds(60));
}

TEST_F(APIClient, sendsNoAuthorizationWithoutATokenAndABareOneWithAnEmptyToken)
{
    answer(500);
    EXPECT_THROW(run(client("https://api.example", std::nullopt).nodes()), TarnwikClientError);
    EXPECT_EQ(lastRequest().headers, Headers({{"Accept", "application/json"}}));
    EXPECT_THROW(run(client("https://api.example", QString()).nodes()), TarnwikClientError);
    EXPECT_EQ(lastRequest().headers, Headers({{"Accept", "application/json"}, {"Authorization", "Bearer "}}));
    EXPECT_THROW(run(client("https://api.example", text(" t ")).nodes()), TarnwikClientError);
    EXPECT_EQ(lastRequest().headers.last().second, "Bearer  t ");
}

TEST_F(APIClient, appendsPathsToAnyBaseURL)
{
    answer(500);
    const auto url = [&](const char *base) {
        EXPECT_THROW(run(client(base).nodes()), TarnwikClientError);
        return lastRequest().url.absoluteString();
    };
    EXPECT_EQ(url("https://h"), text("https://h/api/customer/v1/nodes"));
    EXPECT_EQ(url("https://h/"), text("https://h/api/customer/v1/nodes"));
    EXPECT_EQ(url("https://h/prefix"), text("https://h/prefix/api/customer/v1/nodes"));
    EXPECT_EQ(url("https://h/prefix/"), text("https://h/prefix/api/customer/v1/nodes"));
    EXPECT_EQ(url("https://h:8443/p?x=1#f"), text("https://h:8443/p/api/customer/v1/nodes?x=1#f"));
}

TEST_F(APIClient, makesACopyForAnotherServerOrTokenOnTheSameSession)
{
    answer(500);
    const TarnwikAPIClient first = client();
    const TarnwikAPIClient second = first.with(*URL::fromString(text("https://other.example")), std::nullopt);
    EXPECT_EQ(first.token(), text("abc"));
    EXPECT_EQ(first.baseURL().absoluteString(), text("https://api.example"));
    EXPECT_EQ(second.token(), std::nullopt);
    EXPECT_THROW(run(second.nodes()), TarnwikClientError);
    EXPECT_EQ(lastRequest().url.absoluteString(), text("https://other.example/api/customer/v1/nodes"));
}

TEST_F(APIClient, takesEveryStatusFromTwoHundredToTwoHundredAndNinetyNine)
{
    for (const int status : {200, 201, 202, 206, 299}) {
        answer(status, R"({"nodes":[]})");
        EXPECT_TRUE(run(client().nodes()).isEmpty());
    }
    for (const int status : {100, 199, 300, 304, 404, 503}) {
        answer(status, R"({"nodes":[]})");
        try {
            run(client().nodes());
            FAIL() << status;
        } catch (const TarnwikClientError &error) {
            EXPECT_EQ(error.statusCode(), status);
        }
    }
}

TEST_F(APIClient, doesNotLookAtABodyThatIsNotWanted)
{
    for (const QByteArray &body : {"", "{}", "<html>", "\xff\xfe"}) {
        answer(200, body);
        EXPECT_NO_THROW(run(client().signOut()));
        answer(204, body);
        EXPECT_NO_THROW(run(client().signOut()));
    }
}

TEST_F(APIClient, cannotDecodeAnEmptyAnswerWhereARecordIsWanted)
{
    answer(204);
    EXPECT_THROW(run(client().account()), DecodingError);
}

TEST_F(APIClient, throwsTheServersErrorBodyItself)
{
    for (const int status : {302, 400, 401, 403, 500}) {
        answer(status, R"({"error":"account_suspended","status":"suspended","account":null})");
        try {
            run(client().nodes());
            FAIL() << status;
        } catch (const APIErrorEnvelope &envelope) {
            EXPECT_EQ(envelope.error, text("account_suspended"));
            EXPECT_EQ(envelope.status, text("suspended"));
        }
    }
}

TEST_F(APIClient, tellsTheStatusWhenTheBodyIsNoErrorBody)
{
    for (const QByteArray &body :
         {"", "<html>Forbidden</html>", "{}", R"({"error":5})", R"({"error":"x","status":5})"}) {
        answer(403, body);
        try {
            run(client().nodes());
            FAIL();
        } catch (const TarnwikClientError &error) {
            EXPECT_EQ(error.errorCase(), TarnwikClientError::Case::HTTPStatus);
            EXPECT_EQ(error.localizedDescription(), text("Server returned HTTP 403."));
        }
    }
    answer(302);
    try {
        run(client().nodes());
        FAIL();
    } catch (const TarnwikClientError &error) {
        EXPECT_EQ(error.statusCode(), 302);
        EXPECT_EQ(error.localizedDescription(), text("Server returned HTTP 302."));
    }
}

TEST_F(APIClient, rejectsAnAnswerThatIsNotHTTP)
{
    m_platform.httpSession->handler = [](auto &exchange) { exchange.answerWithoutHTTP(); };
    try {
        run(client().signOut());
        FAIL();
    } catch (const TarnwikClientError &error) {
        EXPECT_EQ(error.errorCase(), TarnwikClientError::Case::InvalidResponse);
        EXPECT_EQ(error.localizedDescription(), text("Invalid server response."));
    }
}

TEST_F(APIClient, passesTransportErrorsOn)
{
    m_platform.httpSession->handler = [](auto &exchange) { exchange.fail(URLError::TimedOut); };
    try {
        run(client().nodes());
        FAIL();
    } catch (const URLError &error) {
        EXPECT_EQ(error.code(), URLError::TimedOut);
        EXPECT_EQ(error.localizedDescription(), text("The request timed out."));
    }
}

TEST_F(APIClient, handsBackWhatEachOperationIsFor)
{
    answer(200, sampleJSON<SessionResponse>());
    const auto session = run(client().signIn({}, {}, {}, {}));
    EXPECT_EQ(session.token, text("secret-token"));
    EXPECT_EQ(session.account, decode<Account>(accountJSON));
    EXPECT_EQ(run(client().account()), session.account);
    answer(200, sampleJSON<NodeListResponse>());
    EXPECT_EQ(run(client().nodes()), QList<ExitNode>({decode<ExitNode>(nodeJSON)}));
    answer(200, sampleJSON<DeviceListResponse>());
    EXPECT_EQ(run(client().devices()), QList<CustomerDevice>({decode<CustomerDevice>(deviceJSON)}));
    answer(201, sampleJSON<DeviceCreateResponse>());
    EXPECT_EQ(run(client().createDevice({}, {}, {})), decode<CustomerDevice>(deviceJSON));
    answer(201, sampleJSON<DeviceProfileResponse>());
    EXPECT_EQ(run(client().createProfile(1, 2)), decode<DeviceProfileResponse>(sampleJSON<DeviceProfileResponse>()));
    EXPECT_EQ(run(client().tunnelProfile(1)), decode<TunnelProfile>(tunnelProfileJSON));
    answer(200, sampleJSON<SubscriptionResponse>());
    EXPECT_EQ(run(client().syncAppleTransaction({})), session.account);
}

TEST_F(APIClient, missesATunnelProfileThatTheAnswerDoesNotHold)
{
    answer(200, R"({"profile":)" + deviceProfileJSON + R"(,"tunnel_profile":null})");
    try {
        run(client().tunnelProfile(7));
        FAIL();
    } catch (const TarnwikClientError &error) {
        EXPECT_EQ(error.errorCase(), TarnwikClientError::Case::MissingTunnelProfile);
        EXPECT_EQ(error.localizedDescription(), text("Tunnel profile was missing from the server response."));
    }
}

TEST_F(APIClient, wantsTheSyncedAccountUnderSubscription)
{
    answer(200, sampleJSON<AccountResponse>());
    EXPECT_THROW(run(client().syncAppleTransaction(text("a.b.c"))), DecodingError);
}

TEST_F(APIClient, neverRetries)
{
    answer(503);
    EXPECT_THROW(run(client().nodes()), TarnwikClientError);
    EXPECT_EQ(m_platform.httpSession->exchanges.size(), 1U);
}

TEST_F(APIClient, mayGoWhileItsOperationRuns)
{
    auto running = std::make_unique<Running<QList<ExitNode>>>(client().nodes());
    m_platform.httpSession->exchanges.front()->answer(200, R"({"nodes":[]})");
    EXPECT_TRUE(running->result().isEmpty());
}

TEST_F(APIClient, endsAtOnceWhenStopped)
{
    std::stop_source stop;
    Running<QList<ExitNode>> running(client().nodes(stop.get_token()));
    stop.request_stop();
    EXPECT_THROW(running.result(), URLError);
}

} // namespace tarnwik::test
