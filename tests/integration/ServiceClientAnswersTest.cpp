#include "ServiceClientFixture.h"

namespace tarnwik {

namespace {

using test::run;
using test::ScriptedReply;
using test::text;

class ServiceClientAnswers : public test::ServiceClientFixture
{
};

TEST_F(ServiceClientAnswers, ofAnySuccessEndTheSession)
{
    for (const auto &reply : {ScriptedReply::http(204), ScriptedReply::http(200), ScriptedReply::http(200, "<html>"),
                              ScriptedReply::http(299, "{\"error\":\"x\"}")}) {
        m_server.enqueue(reply);
        EXPECT_NO_THROW(run(client().signOut()));
    }
}

TEST_F(ServiceClientAnswers, withoutARecordFailWhereOneIsWanted)
{
    const std::string unreadable = "The data couldn’t be read because it isn’t in the correct format.";
    m_server.enqueue(ScriptedReply::http(204));
    EXPECT_EQ(failureOf(client().nodes()), unreadable);
    m_server.enqueue(ScriptedReply::http(200, "junk"));
    EXPECT_EQ(failureOf(client().account()), unreadable);
}

TEST_F(ServiceClientAnswers, thatRefuseGiveTheirErrorBodyOrTheirStatus)
{
    m_server.enqueue(ScriptedReply::http(401, R"({"error":"token_expired"})"));
    EXPECT_EQ(failureOf(client().nodes()), "envelope token_expired");
    m_server.enqueue(ScriptedReply::http(401));
    EXPECT_EQ(failureOf(client().nodes()), "Server returned HTTP 401.");
    m_server.enqueue(ScriptedReply::http(403, "<h1>Forbidden</h1>"));
    EXPECT_EQ(failureOf(client().nodes()), "Server returned HTTP 403.");
    m_server.enqueue(ScriptedReply::http(302, R"({"error":"moved_away"})", "Location: https://other.example/\r\n"));
    EXPECT_EQ(failureOf(client().nodes()), "envelope moved_away");
}

TEST_F(ServiceClientAnswers, thatBreakOffAreALostConnection)
{
    m_server.enqueue({{"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"nodes\":"}, ScriptedReply::End::Close});
    EXPECT_EQ(failureOf(client().nodes()), "The network connection was lost.");
    // A request that changes something is not sent again.
    const auto before = m_server.requests().size();
    m_server.enqueue({{""}, ScriptedReply::End::Reset});
    EXPECT_EQ(failureOf(client().createDevice(text("n"), text("macos"), text("k"))),
              "The network connection was lost.");
    EXPECT_EQ(m_server.requests().size(), before + 1);
}

TEST_F(ServiceClientAnswers, thatNobodyGivesAreNoServer)
{
    const QString origin = m_server.origin();
    m_server.close();
    EXPECT_EQ(failureOf(clientAt(origin).nodes()), "Could not connect to the server.");
}

TEST_F(ServiceClientAnswers, areTakenInPieces)
{
    const QByteArray whole = ScriptedReply::http(200, test::sampleJSON<NodeListResponse>()).parts.at(0);
    ScriptedReply reply;
    for (qsizetype at = 0; at < whole.size(); at += 50)
        reply.parts.push_back(whole.mid(at, 50));
    m_server.enqueue(reply);
    test::Running<QList<ExitNode>> running(client().nodes());
    ASSERT_TRUE(hasReceived());
    for (std::size_t part = 1; part < reply.parts.size(); ++part) {
        EXPECT_FALSE(running.hasEnded());
        m_server.sendNextPart();
        test::settleEvents();
    }
    EXPECT_EQ(running.result(), QList<ExitNode>{decode<ExitNode>(test::nodeJSON)});
}

} // namespace

} // namespace tarnwik
