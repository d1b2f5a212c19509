#include "ServiceClientFixture.h"

#include <algorithm>
#include <array>
#include <functional>
#include <ostream>

namespace tarnwik {

namespace {

using test::ScriptedReply;
using test::text;

struct Operation
{
    const char *name;
    const char *requestLine;
    /// The body, where the request has one.
    const char *body;
    std::function<Task<>(TarnwikAPIClient)> send;
};

void PrintTo(const Operation &operation, std::ostream *stream)
{
    *stream << operation.name;
}

/// Waits for \a task and drops what came of it.
template<typename T>
Task<> ignoringResult(Task<T> task)
{
    co_await std::move(task);
}

const std::array operations{
    Operation{"signIn", "POST /api/customer/v1/session",
              R"({"device_name":"macOS client","email":"a@b","password":" p\"ö","platform":"macos"})",
              [](TarnwikAPIClient client) {
                  return ignoringResult(client.signIn(text("a@b"), text(" p\"ö"), text("macOS client"), text("macos")));
              }},
    Operation{"signOut", "DELETE /api/customer/v1/session", nullptr,
              [](TarnwikAPIClient client) { return client.signOut(); }},
    Operation{"account", "GET /api/customer/v1/session", nullptr,
              [](TarnwikAPIClient client) { return ignoringResult(client.account()); }},
    Operation{"nodes", "GET /api/customer/v1/nodes", nullptr,
              [](TarnwikAPIClient client) { return ignoringResult(client.nodes()); }},
    Operation{"devices", "GET /api/customer/v1/devices", nullptr,
              [](TarnwikAPIClient client) { return ignoringResult(client.devices()); }},
    Operation{"createDevice", "POST /api/customer/v1/devices",
              R"({"name":"macOS device","platform":"macos","public_key":"k="})",
              [](TarnwikAPIClient client) {
                  return ignoringResult(client.createDevice(text("macOS device"), text("macos"), text("k=")));
              }},
    Operation{"createProfile", "POST /api/customer/v1/devices/12/node-profiles",
              R"({"node_id":3,"protocol":"amneziawg"})",
              [](TarnwikAPIClient client) { return ignoringResult(client.createProfile(12, 3)); }},
    Operation{"tunnelProfile", "GET /api/customer/v1/device-profiles/7/tunnel-profile", nullptr,
              [](TarnwikAPIClient client) { return ignoringResult(client.tunnelProfile(7)); }},
    Operation{"syncAppleTransaction", "POST /api/customer/v1/subscription/apple/transactions",
              R"({"signed_transaction_jws":"a.b.c"})",
              [](TarnwikAPIClient client) { return ignoringResult(client.syncAppleTransaction(text("a.b.c"))); }}};

class ServiceClientOperation : public test::ServiceClientFixture, public testing::WithParamInterface<Operation>
{
protected:
    QByteArray requestLine() const { return QByteArray(GetParam().requestLine) + " HTTP/1.1\r\n"; }

    /// The request as it must come over the wire: every header and nothing else.
    std::string expected(const QByteArray &authorization) const
    {
        QByteArray bytes = requestLine() + "Accept: application/json\r\n" + authorization;
        if (const char *body = GetParam().body)
            bytes += "Content-Type: application/json\r\nContent-Length: " + QByteArray::number(qstrlen(body)) + "\r\n";
        else if (requestLine().startsWith("DELETE"))
            bytes += "Content-Length: 0\r\n"; // the HTTP stack's own: a DELETE might have had a body
        return (bytes + "\r\n" + GetParam().body).toStdString();
    }
};

/// A request as it came, without the lines that the session adds to every request.
std::string ownPart(const test::ReceivedRequest &request)
{
    std::string own;
    for (const QByteArray &line : request.bytes.left(request.bytes.indexOf("\r\n\r\n")).split('\n')) {
        const auto isSessions = [&](const char *name) { return line.startsWith(name); };
        const std::array names{"Host: ", "User-Agent: ", "Connection: ", "Accept-Encoding: ", "Accept-Language: "};
        if (std::none_of(names.begin(), names.end(), isSessions))
            own += (line.endsWith('\r') ? line.chopped(1) : line).toStdString() + "\r\n";
    }
    return own + "\r\n" + request.body.toStdString();
}

TEST_P(ServiceClientOperation, isOneRequestByteForByte)
{
    m_server.setHandler([](const auto &) { return ScriptedReply::http(500); });
    EXPECT_EQ(failureOf(GetParam().send(client())), "Server returned HTTP 500.");
    EXPECT_EQ(failureOf(GetParam().send(client().with(client().baseURL(), std::nullopt))), "Server returned HTTP 500.");
    EXPECT_EQ(failureOf(GetParam().send(client().with(client().baseURL(), QString()))), "Server returned HTTP 500.");
    ASSERT_EQ(m_server.requests().size(), 3U);
    EXPECT_EQ(ownPart(m_server.requests()[0]), expected("Authorization: Bearer abc\r\n"));
    EXPECT_EQ(ownPart(m_server.requests()[1]), expected(""));
    EXPECT_EQ(ownPart(m_server.requests()[2]), expected("Authorization: Bearer \r\n"));
}

TEST_P(ServiceClientOperation, keepsTheTokenFromOtherOrigins)
{
    test::ScriptedServer other;
    for (const int status : {301, 302, 303, 307, 308}) {
        m_server.enqueue(
            ScriptedReply::http(status, "moved", "Location: " + other.origin().toLatin1() + "/elsewhere\r\n"));
        EXPECT_EQ(failureOf(GetParam().send(client())), "Server returned HTTP " + std::to_string(status) + ".");
    }
    test::spinFor(std::chrono::milliseconds(20));
    EXPECT_EQ(other.connectionCount(), 0);
    EXPECT_EQ(m_server.requests().size(), 5U);
}

TEST_P(ServiceClientOperation, isAppendedToAnyBaseURL)
{
    const QByteArray target = QByteArray(GetParam().requestLine).split(' ').at(1);
    m_server.setHandler([](const auto &) { return ScriptedReply::http(500); });
    const auto targetFor = [&](const char *base) {
        failureOf(GetParam().send(client(base)));
        return m_server.requests().back().target;
    };
    EXPECT_EQ(targetFor(""), target);
    EXPECT_EQ(targetFor("/"), target);
    EXPECT_EQ(targetFor("/prefix"), "/prefix" + target);
    EXPECT_EQ(targetFor("/a%20b/"), "/a%20b" + target);
    EXPECT_EQ(targetFor("?tenant=1"), target + "?tenant=1");
    EXPECT_EQ(targetFor("/prefix/?tenant=1"), "/prefix" + target + "?tenant=1");
}

INSTANTIATE_TEST_SUITE_P(Every, ServiceClientOperation, testing::ValuesIn(operations),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace

} // namespace tarnwik
