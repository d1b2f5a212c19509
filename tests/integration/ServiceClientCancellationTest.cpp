#include "ServiceClientFixture.h"

namespace tarnwik {

namespace {

using namespace std::chrono_literals;
using test::run;
using test::ScriptedReply;

class ServiceClientCancellation : public test::ServiceClientFixture
{
protected:
    test::Running<QList<ExitNode>> start() { return test::Running(client().nodes(m_source.get_token())); }

    /// Stops the request, which lets go of its connection; the next one goes through.
    void expectCancelled(const test::Running<QList<ExitNode>> &running)
    {
        EXPECT_FALSE(running.hasEnded());
        m_source.request_stop();
        EXPECT_FALSE(running.hasEnded()) << "it must not end inside request_stop()";
        EXPECT_EQ(failureOf(running), "cancelled");
        EXPECT_TRUE(test::spinUntil([this] { return m_server.openConnectionCount() == 0; }));
        m_server.enqueue(ScriptedReply::http(200, R"({"nodes":[]})"));
        EXPECT_EQ(run(client().nodes()), QList<ExitNode>());
    }

    std::stop_source m_source;
};

TEST_F(ServiceClientCancellation, beforeTheStartSendsNothing)
{
    m_source.request_stop();
    EXPECT_EQ(failureOf(start()), "cancelled");
    EXPECT_EQ(m_server.connectionCount(), 0);
}

TEST_F(ServiceClientCancellation, beforeTheConnectionStands)
{
    const auto running = start();
    m_source.request_stop();
    EXPECT_EQ(failureOf(running), "cancelled");
    test::spinFor(20ms);
    EXPECT_TRUE(m_server.requests().empty());
}

TEST_F(ServiceClientCancellation, whileWaitingForTheHeaders)
{
    m_server.enqueue(ScriptedReply::silence());
    const auto running = start();
    ASSERT_TRUE(hasReceived());
    expectCancelled(running);
}

TEST_F(ServiceClientCancellation, inTheMiddleOfTheBody)
{
    m_server.enqueue({{"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"nodes\":", "never"}});
    const auto running = start();
    ASSERT_TRUE(hasReceived());
    test::spinFor(20ms);
    expectCancelled(running);
}

TEST_F(ServiceClientCancellation, comesByItselfAfterAMinuteOfSilence)
{
    m_server.enqueue(ScriptedReply::silence());
    const auto running = start();
    ASSERT_TRUE(hasReceived());
    m_clock->advance(59'999ms);
    test::spinFor(10ms);
    EXPECT_FALSE(running.hasEnded());
    m_clock->advance(1ms);
    EXPECT_EQ(failureOf(running), "The request timed out.");
    EXPECT_TRUE(test::spinUntil([this] { return m_server.openConnectionCount() == 0; }));
}

} // namespace

} // namespace tarnwik
