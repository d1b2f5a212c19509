#include "HTTPSessionFixture.h"

#include <ostream>

namespace tarnwik {

namespace {

using test::ScriptedReply;

ScriptedReply redirect(int status, const QByteArray &location)
{
    return ScriptedReply::http(status, "moved", "Location: " + location + "\r\n");
}

using HTTPSessionRedirect = test::HTTPSessionFixture;

TEST_F(HTTPSessionRedirect, isFollowedOnTheSameOriginWithAllHeaders)
{
    m_server.enqueue(redirect(302, "b?c"));
    m_server.enqueue(ScriptedReply::http(200, "there"));
    auto message = request(QStringLiteral("/x/a"));
    message.headers = {{"Accept", "application/json"}, {"Authorization", "Bearer abc"}};
    EXPECT_EQ(send(message).body, "there");
    const auto &received = m_server.requests().at(1);
    EXPECT_EQ(received.target, "/x/b?c");
    EXPECT_EQ(received.header("Authorization"), "Bearer abc");
    EXPECT_EQ(received.header("Accept"), "application/json");
}

TEST_F(HTTPSessionRedirect, toAnotherOriginIsDeliveredAndTheTokenStays)
{
    test::ScriptedServer other;
    m_server.enqueue(redirect(302, (other.origin() + QStringLiteral("/b")).toLatin1()));
    auto message = request();
    message.headers = {{"Authorization", "Bearer abc"}};
    const auto response = send(message);
    EXPECT_EQ(response.statusCode, 302);
    EXPECT_EQ(response.body, "moved");
    EXPECT_EQ(other.connectionCount(), 0);
}

TEST_F(HTTPSessionRedirect, toTheSameServerByAnotherNameIsDelivered)
{
    m_server.enqueue(redirect(307, (m_server.origin(QStringLiteral("localhost")) + QStringLiteral("/b")).toLatin1()));
    EXPECT_EQ(send(request()).statusCode, 307);
    EXPECT_EQ(m_server.requests().size(), 1U);
}

TEST_F(HTTPSessionRedirect, ofAPostToAnotherOriginIsDeliveredWithItsBody)
{
    auto message = request(QStringLiteral("/a"), "POST");
    message.body = "{}";
    for (const int status : {301, 302, 303, 307, 308}) {
        m_server.enqueue(redirect(status, "https://other.example/b"));
        const auto response = send(message);
        EXPECT_EQ(response.statusCode, status);
        EXPECT_EQ(response.body, "moved") << status;
    }
    EXPECT_EQ(m_server.requests().size(), 5U);
}

TEST_F(HTTPSessionRedirect, withoutALocationIsDelivered)
{
    m_server.enqueue(ScriptedReply::http(302, "moved"));
    const auto response = send(request());
    EXPECT_EQ(response.statusCode, 302);
    EXPECT_EQ(response.body, "moved");
}

struct Rewriting
{
    int status;
    const char *method;
    const char *methodThen;
    bool keepsBody;
};

void PrintTo(const Rewriting &row, std::ostream *stream)
{
    *stream << row.status << ' ' << row.method;
}

class HTTPSessionRedirectMethod : public HTTPSessionRedirect, public testing::WithParamInterface<Rewriting>
{
};

TEST_P(HTTPSessionRedirectMethod, isRewrittenAsTheStatusDemands)
{
    const auto &[status, method, methodThen, keepsBody] = GetParam();
    m_server.enqueue(redirect(status, "/b"));
    m_server.enqueue(ScriptedReply::http(200));
    auto message = request(QStringLiteral("/a"), method);
    if (message.method == "POST") {
        message.headers = {{"Content-Type", "application/json"}};
        message.body = "{}";
    }
    EXPECT_EQ(send(message).statusCode, 200);
    const auto &received = m_server.requests().at(1);
    EXPECT_EQ(received.method, methodThen);
    EXPECT_EQ(received.body, keepsBody ? "{}" : "");
    EXPECT_EQ(received.header("Content-Type").has_value(), keepsBody);
}

INSTANTIATE_TEST_SUITE_P(Every, HTTPSessionRedirectMethod,
                         testing::Values(Rewriting{301, "GET", "GET", false}, Rewriting{301, "POST", "GET", false},
                                         Rewriting{301, "DELETE", "DELETE", false},
                                         Rewriting{302, "POST", "GET", false},
                                         Rewriting{302, "DELETE", "DELETE", false},
                                         Rewriting{303, "POST", "GET", false}, Rewriting{303, "DELETE", "GET", false},
                                         Rewriting{307, "POST", "POST", true},
                                         Rewriting{307, "DELETE", "DELETE", false},
                                         Rewriting{308, "POST", "POST", true}, Rewriting{308, "GET", "GET", false}),
                         [](const auto &info) { return std::to_string(info.param.status) + info.param.method; });

TEST_F(HTTPSessionRedirect, isFollowedTwentyTimes)
{
    for (int i = 0; i < 20; ++i)
        m_server.enqueue(redirect(302, "/b"));
    m_server.enqueue(ScriptedReply::http(200, "there"));
    EXPECT_EQ(send(request()).body, "there");
}

TEST_F(HTTPSessionRedirect, isNotFollowedForEver)
{
    m_server.setHandler([](const auto &) { return redirect(302, "/a"); });
    EXPECT_EQ(failureOf(request()), URLError::HTTPTooManyRedirects);
    EXPECT_EQ(m_server.requests().size(), 21U);
}

} // namespace

} // namespace tarnwik
