#include "HTTPSessionFixture.h"

#include <cstdlib>
#include <ostream>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarnwik {

namespace {

using End = test::ScriptedReply::End;
using test::ScriptedReply;
using HTTPSessionFailure = test::HTTPSessionFixture;

TEST_F(HTTPSessionFailure, nobodyListens)
{
    m_server.close();
    EXPECT_EQ(failureOf({url(QStringLiteral("http://127.0.0.1:1/")), "GET", {}, {}}), URLError::CannotConnectToHost);
}

TEST_F(HTTPSessionFailure, anUnknownHost)
{
    const int code = failureOf({url(QStringLiteral("https://no-such-host.invalid/")), "GET", {}, {}});
    // On a machine without any network the reason is the network.
    EXPECT_TRUE(code == URLError::CannotFindHost || code == URLError::NotConnectedToInternet) << code;
}

TEST_F(HTTPSessionFailure, clearTextBeyondTheMachineIsRefusedBeforeAnythingIsSent)
{
    EXPECT_EQ(failureOf({url(QStringLiteral("http://192.0.2.1/")), "GET", {}, {}}),
              URLError::AppTransportSecurityRequiresSecureConnection);
    EXPECT_EQ(m_clock->pendingCount(), 0);
}

TEST_F(HTTPSessionFailure, whatIsNoHTTPURLIsRefused)
{
    EXPECT_EQ(failureOf({url(QStringLiteral("not a url")), "GET", {}, {}}), URLError::UnsupportedURL);
}

struct Script
{
    const char *name;
    ScriptedReply reply;
    int code;
};

void PrintTo(const Script &script, std::ostream *stream)
{
    *stream << script.name;
}

class HTTPSessionBadAnswer : public HTTPSessionFailure, public testing::WithParamInterface<Script>
{
};

TEST_P(HTTPSessionBadAnswer, fails)
{
    m_server.setHandler([](const auto &) { return GetParam().reply; });
    for (const char *method : {"GET", "POST", "DELETE"})
        EXPECT_EQ(failureOf(request(QStringLiteral("/a"), method)), GetParam().code) << method;
}

TEST_P(HTTPSessionBadAnswer, isNotAskedForTwiceWhereThatMightDoSomethingTwice)
{
    m_server.setHandler([](const auto &) { return GetParam().reply; });
    auto message = request(QStringLiteral("/a"), "POST");
    message.body = "{}";
    EXPECT_EQ(failureOf(message), GetParam().code);
    message.body.reset();
    EXPECT_EQ(failureOf(message), GetParam().code);
    EXPECT_EQ(failureOf(request(QStringLiteral("/a"), "DELETE")), GetParam().code);
    test::spinFor(std::chrono::milliseconds(5));
    EXPECT_EQ(m_server.requests().size(), 3U);
}

// Qt's network stack does not tell an answer that is no HTTP from a connection that was closed without one.
INSTANTIATE_TEST_SUITE_P(
    Every, HTTPSessionBadAnswer,
    testing::Values(
        Script{"closed", {{}, End::Close}, -1005}, Script{"reset", {{}, End::Reset}, -1005},
        Script{"endsInTheStatusLine", {{"HTTP/1.1 20"}, End::Close}, -1005},
        Script{"endsInTheHeaders", {{"HTTP/1.1 200 OK\r\nContent-Le"}, End::Close}, -1005},
        Script{"endsInTheBody", {{"HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nabc"}, End::Close}, -1005},
        Script{"endsInTheBodyOfAnError", {{"HTTP/1.1 404 No\r\nContent-Length: 10\r\n\r\nabc"}, End::Close}, -1005},
        Script{"garbage", {{"\x01\xff garbage\r\n\r\n"}, End::Close}, -1005},
        Script{"garbageOnAConnectionThatStays", {{"garbage garbage garbage\r\n\r\n"}, End::KeepOpen}, -1005},
        Script{"badStatus", {{"HTTP/1.1 abc OK\r\nContent-Length: 2\r\n\r\nab"}, End::KeepOpen}, -1005},
        Script{"brokenCompression",
               {{"HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: 20\r\n\r\nabcdefghijabcdefghij"},
                End::KeepOpen},
               -1017}),
    [](const auto &info) { return info.param.name; });

/// Whether this machine lets a process leave every network.
bool canLeaveNetworks()
{
    const pid_t child = fork();
    if (child == 0)
        _exit(unshare(CLONE_NEWUSER | CLONE_NEWNET) == 0 ? EXIT_SUCCESS : EXIT_FAILURE);
    int status = 0;
    return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

TEST(HTTPSessionOffline, saysSo)
{
    if (!canLeaveNetworks())
        GTEST_SKIP() << "This machine does not allow namespaces.";
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    // In a process of its own, which leaves every network for a namespace that has none.
    EXPECT_EXIT(
        {
            unshare(CLONE_NEWUSER | CLONE_NEWNET);
            QtHTTPSession session(std::make_shared<async::SystemClock>());
            int code = 0;
            try {
                test::run(session.data({*URL::fromString(QStringLiteral("https://192.0.2.1/")), "GET", {}, {}}));
            } catch (const URLError &error) {
                code = error.code();
            }
            std::_Exit(code == URLError::NotConnectedToInternet ? EXIT_SUCCESS : EXIT_FAILURE);
        },
        testing::ExitedWithCode(EXIT_SUCCESS), "");
}

} // namespace

} // namespace tarnwik
