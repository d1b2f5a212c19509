#include "HTTPSessionFixture.h"

#include <gmock/gmock.h>

#include <QRegularExpression>

namespace tarnwik {

namespace {

using HTTPSessionTest = test::HTTPSessionFixture;
using test::ScriptedReply;

TEST_F(HTTPSessionTest, givesStatusAndWholeBody)
{
    const QByteArray body(300'000, 'x');
    m_server.enqueue(ScriptedReply::http(200, body));
    const auto response = send(request());
    EXPECT_EQ(response.statusCode, 200);
    EXPECT_EQ(response.body, body);
}

TEST_F(HTTPSessionTest, sendsTheHeadersAsTheyAreSpelt)
{
    m_server.enqueue(ScriptedReply::http(200));
    auto message = request(QStringLiteral("/api/v1/a%20b?c=d%2Fe"));
    message.headers = {{"Accept", "application/json"}, {"Authorization", "Bearer  abc"}, {"x-ODD-Spelling", "1"}};
    send(message);

    const auto &received = m_server.requests().at(0);
    EXPECT_TRUE(received.bytes.startsWith("GET /api/v1/a%20b?c=d%2Fe HTTP/1.1\r\n"));
    EXPECT_TRUE(received.bytes.contains("\r\nAccept: application/json\r\n"));
    EXPECT_TRUE(received.bytes.contains("\r\nAuthorization: Bearer  abc\r\n"));
    EXPECT_TRUE(received.bytes.contains("\r\nx-ODD-Spelling: 1\r\n"));
    EXPECT_TRUE(received.body.isEmpty());
}

TEST_F(HTTPSessionTest, sendsAnEmptyBearerTokenAsItStands)
{
    m_server.enqueue(ScriptedReply::http(200));
    auto message = request();
    message.headers = {{"Authorization", "Bearer "}};
    send(message);
    EXPECT_TRUE(m_server.requests().at(0).bytes.contains("\r\nAuthorization: Bearer \r\n"))
        << m_server.requests().at(0).bytes.toStdString();
}

TEST_F(HTTPSessionTest, sendsNoHeaderWhoseValueWouldBeginAnother)
{
    for (const QByteArray &value : {QByteArray("a\r\nX-Evil: 1"), QByteArray("a\nX-Evil: 1"), QByteArray("a\0b", 3)}) {
        m_server.enqueue(ScriptedReply::http(401));
        auto message = request();
        message.headers = {{"Authorization", value}, {"Accept", "application/json"}};
        EXPECT_EQ(send(message).statusCode, 401);
        EXPECT_FALSE(m_server.requests().back().bytes.contains("Evil"));
        EXPECT_FALSE(m_server.requests().back().header("Authorization"));
        EXPECT_EQ(m_server.requests().back().header("Accept"), "application/json");
    }
}

TEST_F(HTTPSessionTest, saysWhoItIsAndNothingElse)
{
    m_server.enqueue(ScriptedReply::http(200));
    send(request());
    const auto &received = m_server.requests().at(0);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^Tarnwik/\\d+\\.\\d+\\.\\d+$"))
                    .match(QString::fromLatin1(received.header("User-Agent").value_or("")))
                    .hasMatch());
    std::vector<std::string> names;
    for (const auto &[name, value] : received.headers)
        names.push_back(name.toStdString());
    EXPECT_THAT(
        names, testing::UnorderedElementsAre("Host", "Connection", "Accept-Encoding", "Accept-Language", "User-Agent"));
}

TEST_F(HTTPSessionTest, postsABodyByteForByte)
{
    m_server.enqueue(ScriptedReply::http(200));
    auto message = request(QStringLiteral("/a"), "POST");
    message.headers = {{"Content-Type", "application/json"}};
    message.body = QByteArray("{\"a\":\"\0\r\n\xc3\xbc\"}", 14);
    send(message);
    const auto &received = m_server.requests().at(0);
    EXPECT_EQ(received.method, "POST");
    EXPECT_EQ(received.body, *message.body);
    EXPECT_EQ(received.header("Content-Type"), "application/json");
}

TEST_F(HTTPSessionTest, postsAndDeletesWithoutABodyOrItsDescription)
{
    for (const QByteArray method : {"POST", "DELETE"}) {
        m_server.enqueue(ScriptedReply::http(204));
        EXPECT_EQ(send(request(QStringLiteral("/a?b=c"), method)).statusCode, 204);
        const auto &received = m_server.requests().back();
        EXPECT_TRUE(received.bytes.startsWith(QByteArray(method + " /a?b=c HTTP/1.1\r\n")));
        EXPECT_TRUE(received.body.isEmpty());
        EXPECT_EQ(received.header("Content-Type"), std::nullopt);
    }
}

class HTTPSessionStatus : public test::HTTPSessionFixture,
                          public testing::WithParamInterface<std::pair<int, const char *>>
{
};

TEST_P(HTTPSessionStatus, isAnAnswerAndNeverAFailure)
{
    const auto &[status, headers] = GetParam();
    const QByteArray body = status == 204 || status == 304 ? "" : "<html>\xff the body</html>";
    m_server.enqueue(ScriptedReply::http(status, body, headers));
    m_server.enqueue(ScriptedReply::http(status, body, headers));
    const auto response = send(request());
    EXPECT_EQ(response.statusCode, status);
    EXPECT_EQ(response.body, body);
    auto post = request(QStringLiteral("/a"), "POST");
    post.body = "{}";
    const auto second = send(post);
    EXPECT_EQ(second.statusCode, status);
    EXPECT_EQ(second.body, body);
    EXPECT_EQ(m_server.requests().size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(Every, HTTPSessionStatus,
                         testing::Values(std::pair(200, ""), std::pair(201, ""), std::pair(204, ""), std::pair(299, ""),
                                         std::pair(300, ""), std::pair(304, ""), std::pair(400, ""), std::pair(401, ""),
                                         std::pair(401, "WWW-Authenticate: Basic realm=\"r\"\r\n"),
                                         std::pair(401, "WWW-Authenticate: Bearer error=\"invalid_token\"\r\n"),
                                         std::pair(401, "WWW-Authenticate: Digest realm=\"r\", nonce=\"n\"\r\n"),
                                         std::pair(401, "WWW-Authenticate: Negotiate\r\n"), std::pair(402, ""),
                                         std::pair(403, ""), std::pair(404, ""), std::pair(405, ""), std::pair(407, ""),
                                         std::pair(407, "Proxy-Authenticate: Basic realm=\"r\"\r\n"),
                                         std::pair(409, ""), std::pair(410, ""), std::pair(418, ""), std::pair(422, ""),
                                         std::pair(429, ""), std::pair(500, ""), std::pair(501, ""), std::pair(502, ""),
                                         std::pair(503, "Retry-After: 1\r\n"), std::pair(504, ""), std::pair(599, "")),
                         [](const auto &info) {
                             return std::to_string(info.param.first) + "_" + std::to_string(info.index);
                         });

TEST_F(HTTPSessionTest, answersNoChallengeWithTheURLsNameAndPassword)
{
    const QByteArray headers = "WWW-Authenticate: Basic realm=\"r\"\r\n";
    for (const QByteArray method : {"GET", "POST"}) {
        m_server.enqueue(ScriptedReply::http(401, "who?", headers));
        auto message = request(QStringLiteral("/a"), method);
        message.url = url(m_server.origin().replace(QStringLiteral("//"), QStringLiteral("//user:secret@")));
        const auto response = send(message);
        EXPECT_EQ(response.statusCode, 401);
        EXPECT_EQ(response.body, "who?");
        EXPECT_EQ(m_server.requests().back().header("Authorization"), std::nullopt);
    }
    EXPECT_EQ(m_server.requests().size(), 2U);
}

TEST_F(HTTPSessionTest, anEmptyPostBodyIsABodyToo)
{
    m_server.enqueue(ScriptedReply::http(200));
    auto message = request(QStringLiteral("/a"), "POST");
    message.body = QByteArray();
    send(message);
    EXPECT_EQ(m_server.requests().at(0).header("Content-Length"), "0");
}

TEST_F(HTTPSessionTest, postsALargeBodyWhole)
{
    m_server.enqueue(ScriptedReply::http(200));
    auto message = request(QStringLiteral("/a"), "POST");
    message.headers = {{"Content-Type", "application/json"}};
    message.body = QByteArrayLiteral("0123456789\0xyz").repeated(20'000);
    send(message);
    EXPECT_EQ(m_server.requests().at(0).body, *message.body);
}

TEST_F(HTTPSessionTest, unpacksWhatTheServerPacked)
{
    // "packed", as gzip writes it.
    m_server.enqueue(ScriptedReply::http(200,
                                         QByteArray::fromHex("1f8b08000000000002032b484cce4e4d010010b4f62106000000"),
                                         "Content-Encoding: gzip\r\n"));
    EXPECT_EQ(send(request()).body, "packed");
}

TEST_F(HTTPSessionTest, readsChunkedBodiesAndThoseThatEndWithTheConnection)
{
    m_server.enqueue({{"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n"}});
    EXPECT_EQ(send(request()).body, "abcde");
    m_server.enqueue({{"HTTP/1.1 200 OK\r\n\r\nabcde"}, ScriptedReply::End::Close});
    EXPECT_EQ(send(request()).body, "abcde");
}

TEST_F(HTTPSessionTest, givesUpOnAnAnswerThatDoesNotEnd)
{
    // Chunk after chunk: 64 MiB and a bit, and the server would go on.
    const QByteArray chunk = "100000\r\n" + QByteArray(0x100000, 'x') + "\r\n";
    m_server.enqueue({.parts = {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + chunk.repeated(66)}});
    EXPECT_EQ(failureOf(request()), URLError::CannotParseResponse);
}

TEST_F(HTTPSessionTest, keepsNoCookies)
{
    m_server.enqueue(ScriptedReply::http(200, "1", "Set-Cookie: a=b; Path=/\r\n"));
    m_server.enqueue(ScriptedReply::http(200, "2"));
    send(request());
    send(request());
    EXPECT_FALSE(m_server.requests().at(1).bytes.toLower().contains("\r\ncookie:"));
}

TEST_F(HTTPSessionTest, keepsNoCache)
{
    const QByteArray headers = "Cache-Control: max-age=3600\r\nETag: \"e\"\r\n";
    m_server.enqueue(ScriptedReply::http(200, "1", headers));
    m_server.enqueue(ScriptedReply::http(200, "2", headers));
    EXPECT_EQ(send(request()).body, "1");
    EXPECT_EQ(send(request()).body, "2");
    EXPECT_FALSE(m_server.requests().at(1).bytes.toLower().contains("if-none-match"));
}

TEST_F(HTTPSessionTest, runsRequestsSideBySideAndReusesConnections)
{
    m_server.setHandler([](const auto &received) { return ScriptedReply::http(200, received.target); });
    std::vector<test::Running<URLResponse>> running;
    for (int i = 0; i < 20; ++i)
        running.emplace_back(m_session->data(request(u'/' + QString::number(i))));
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(running[std::size_t(i)].result().body, '/' + QByteArray::number(i));
    EXPECT_LE(m_server.connectionCount(), 6);
}

TEST_F(HTTPSessionTest, outlivesAConnectionThatTheServerClosedMeanwhile)
{
    m_server.enqueue({{"HTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\n1"}, ScriptedReply::End::Close});
    m_server.enqueue(ScriptedReply::http(200, "2"));
    EXPECT_EQ(send(request()).body, "1");
    auto post = request(QStringLiteral("/a"), "POST");
    EXPECT_EQ(send(post).body, "2");
}

TEST_F(HTTPSessionTest, requestsOutliveTheSession)
{
    m_server.enqueue({{"", ScriptedReply::http(200, "late").parts.at(0)}});
    test::Running<URLResponse> running(m_session->data(request()));
    ASSERT_TRUE(hasReceived());
    m_session.reset();
    m_server.sendNextPart();
    EXPECT_EQ(running.result().body, "late");
}

} // namespace

} // namespace tarnwik
