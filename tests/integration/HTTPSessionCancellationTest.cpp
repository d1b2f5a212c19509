#include "HTTPSessionFixture.h"

namespace tarnwik {

namespace {

using namespace std::chrono_literals;
using test::ScriptedReply;

class HTTPSessionCancellation : public test::HTTPSessionFixture
{
protected:
    test::Running<URLResponse> start() { return start(request()); }
    test::Running<URLResponse> start(const HTTPRequest &request)
    {
        return test::Running<URLResponse>(m_session->data(request, m_source.get_token()));
    }

    /// The request fails as a stopped one does, and lets go of its connection.
    void expectCancelled(test::Running<URLResponse> running)
    {
        try {
            running.result();
            ADD_FAILURE() << "it was not stopped";
        } catch (const URLError &error) {
            EXPECT_EQ(error.code(), URLError::Cancelled);
            EXPECT_STREQ(error.what(), "cancelled");
        }
        EXPECT_TRUE(test::spinUntil([this] { return m_server.openConnectionCount() == 0; }));
        EXPECT_EQ(m_clock->pendingCount(), 0);
    }

    std::stop_source m_source;
};

TEST_F(HTTPSessionCancellation, beforeTheRequestSendsNothing)
{
    m_source.request_stop();
    expectCancelled(start());
    EXPECT_EQ(m_server.connectionCount(), 0);
}

TEST_F(HTTPSessionCancellation, rightAfterTheStart)
{
    auto running = start();
    m_source.request_stop();
    EXPECT_EQ(failureOf(running), URLError::Cancelled);
    EXPECT_EQ(m_clock->pendingCount(), 0);
}

TEST_F(HTTPSessionCancellation, beforeTheAnswer)
{
    m_server.enqueue(ScriptedReply::silence());
    auto running = start();
    ASSERT_TRUE(hasReceived());
    m_source.request_stop();
    expectCancelled(running);
}

TEST_F(HTTPSessionCancellation, betweenTheHeadersAndTheBody)
{
    m_server.enqueue({{"HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n", "never"}});
    auto running = start();
    ASSERT_TRUE(hasReceived());
    test::spinFor(20ms);
    m_source.request_stop();
    expectCancelled(running);
}

TEST_F(HTTPSessionCancellation, inTheMiddleOfTheBody)
{
    m_server.enqueue({{"HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nabc", "never"}});
    auto running = start();
    ASSERT_TRUE(hasReceived());
    test::spinFor(20ms);
    m_source.request_stop();
    expectCancelled(running);
}

TEST_F(HTTPSessionCancellation, afterARedirect)
{
    m_server.enqueue(ScriptedReply::http(302, {}, "Location: /b\r\n"));
    m_server.enqueue(ScriptedReply::silence());
    auto running = start();
    ASSERT_TRUE(hasReceived(2));
    m_source.request_stop();
    expectCancelled(running);
}

TEST_F(HTTPSessionCancellation, stopsOneRequestOnly)
{
    m_server.enqueue(ScriptedReply::silence());
    m_server.enqueue({{"", ScriptedReply::http(200, "other").parts.at(0)}});
    auto running = start();
    ASSERT_TRUE(hasReceived());
    test::Running<URLResponse> other(m_session->data(request()));
    ASSERT_TRUE(hasReceived(2));
    m_source.request_stop();
    EXPECT_EQ(failureOf(running), URLError::Cancelled);
    m_server.sendNextPart();
    EXPECT_EQ(other.result().body, "other");
}

TEST_F(HTTPSessionCancellation, afterTheEndChangesNothing)
{
    m_server.enqueue(ScriptedReply::http(200, "whole"));
    auto running = start();
    ASSERT_TRUE(test::spinUntil([&] { return running.hasEnded(); }));
    m_source.request_stop();
    EXPECT_EQ(running.result().body, "whole");
}

TEST_F(HTTPSessionCancellation, stopsRequestsThatOutliveTheSession)
{
    m_server.enqueue(ScriptedReply::silence());
    auto running = start();
    ASSERT_TRUE(hasReceived());
    m_session.reset();
    m_source.request_stop();
    expectCancelled(running);
}

class HTTPSessionTimeout : public HTTPSessionCancellation
{
protected:
    void expectTimeout(test::Running<URLResponse> running)
    {
        m_clock->advance(59'999ms);
        test::spinFor(10ms);
        ASSERT_FALSE(running.hasEnded());
        m_clock->advance(1ms);
        EXPECT_EQ(failureOf(running), URLError::TimedOut);
        EXPECT_TRUE(test::spinUntil([this] { return m_server.openConnectionCount() == 0; }));
    }

    /// Waits until the client has seen what the server sent; it tells nobody.
    void letTrafficArrive() { test::spinFor(50ms); }
};

TEST_F(HTTPSessionTimeout, endsARequestThatNobodyAnswers)
{
    m_server.enqueue(ScriptedReply::silence());
    auto running = start();
    ASSERT_TRUE(hasReceived());
    expectTimeout(running);
}

TEST_F(HTTPSessionTimeout, countsFromTheLastTraffic)
{
    m_server.enqueue({{"", "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n", "abc", "def", "ghij"}});
    auto running = start();
    ASSERT_TRUE(hasReceived());
    for (int part = 1; part < 4; ++part) {
        m_clock->advance(50s);
        m_server.sendNextPart();
        letTrafficArrive();
        ASSERT_FALSE(running.hasEnded());
    }
    expectTimeout(running);
}

TEST_F(HTTPSessionTimeout, aSlowAnswerThatKeepsComingIsNone)
{
    m_server.enqueue({{"", "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n", "abc", "def", "ghi"}});
    auto running = start();
    ASSERT_TRUE(hasReceived());
    for (int part = 1; part < 5; ++part) {
        m_clock->advance(50s);
        m_server.sendNextPart();
        letTrafficArrive();
    }
    EXPECT_EQ(running.result().body, "abcdefghi");
}

TEST_F(HTTPSessionTimeout, startsAnewAfterARedirect)
{
    m_server.enqueue({{"", ScriptedReply::http(302, {}, "Location: /b\r\n").parts.at(0)}});
    m_server.enqueue(ScriptedReply::silence());
    auto running = start();
    ASSERT_TRUE(hasReceived());
    m_clock->advance(50s);
    m_server.sendNextPart();
    ASSERT_TRUE(hasReceived(2));
    expectTimeout(running);
}

TEST_F(HTTPSessionTimeout, isTheRequestsOwn)
{
    m_server.enqueue(ScriptedReply::silence());
    auto message = request();
    message.timeout = 5s;
    auto running = start(message);
    ASSERT_TRUE(hasReceived());
    m_clock->advance(5s);
    EXPECT_EQ(failureOf(running), URLError::TimedOut);
}

TEST_F(HTTPSessionTimeout, leavesNoTimerBehind)
{
    m_server.enqueue(ScriptedReply::http(200));
    auto running = start();
    EXPECT_EQ(m_clock->nextDelay(), 60s);
    running.result();
    EXPECT_EQ(m_clock->pendingCount(), 0);
}

} // namespace

} // namespace tarnwik
