#include "platform/qt/HTTPPolicy.h"
#include "platform/qt/StallTimer.h"

#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <ostream>

namespace tarnwik {

namespace {

using namespace std::chrono_literals;

struct Sending
{
    const char *url;
    int code; // 0 where it may be sent
};

void PrintTo(const Sending &row, std::ostream *stream)
{
    *stream << row.url;
}

class HTTPSessionSends : public testing::TestWithParam<Sending>
{
};

TEST_P(HTTPSessionSends, whatIsSafeAndPossible)
{
    const auto url = URL::fromString(QString::fromUtf8(GetParam().url));
    ASSERT_TRUE(url);
    try {
        EXPECT_EQ(sendableURL(*url).host().isEmpty(), false);
        EXPECT_EQ(GetParam().code, 0);
    } catch (const URLError &error) {
        EXPECT_EQ(int(error.code()), GetParam().code);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Every, HTTPSessionSends,
    testing::Values(Sending{"https://h", 0}, Sending{"HTTPS://H/a?b", 0}, Sending{"https://h:/", 0},
                    Sending{"https://münchen.de", 0}, Sending{"http://localhost", 0},
                    Sending{"http://LOCALHOST:80/a", 0}, Sending{"http://a.localhost", -1022},
                    Sending{"http://127.0.0.1", 0}, Sending{"http://127.255.1.2", 0}, Sending{"http://[::1]:8080/", 0},
                    // Clear text that would leave the machine.
                    Sending{"http://h", -1022}, Sending{"HTTP://h", -1022}, Sending{"http://localhost.example", -1022},
                    Sending{"http://notlocalhost", -1022}, Sending{"http://127.0.0.1.example", -1022},
                    Sending{"http://128.0.0.1", -1022}, Sending{"http://10.0.0.1", -1022},
                    Sending{"http://0.0.0.0", -1022}, Sending{"http://[::]", -1022}, Sending{"http://[fe80::1]", -1022},
                    Sending{"http://[::ffff:10.0.0.1]", -1022}, Sending{"http://localhost@h", -1022},
                    // What HTTP cannot be sent to at all.
                    Sending{"https:", -1002}, Sending{"https://", -1002}, Sending{"https:/x", -1002},
                    Sending{"://", -1002}, Sending{"//x", -1002}, Sending{"api.example.com", -1002},
                    Sending{"api.example.com:8443", -1002}, Sending{"localhost:8080/x", -1002},
                    Sending{"not a url", -1002}, Sending{"ftp://h", -1002}, Sending{"file:///etc/passwd", -1002},
                    Sending{"data:,x", -1002}, Sending{"mailto:a@b", -1002}, Sending{"https://h:99999/", -1002},
                    Sending{"https://a..b", -1002}, Sending{"http://", -1002}));

struct Redirection
{
    const char *url;
    int status;
    const char *location;
    const char *target; // null where it is not followed
};

void PrintTo(const Redirection &row, std::ostream *stream)
{
    *stream << row.url << ' ' << row.status << ' ' << row.location;
}

class HTTPSessionFollows : public testing::TestWithParam<Redirection>
{
};

TEST_P(HTTPSessionFollows, redirectsOnTheSameOriginOnly)
{
    const auto &[url, status, location, expected] = GetParam();
    const auto target = redirectTarget(QUrl(QString::fromUtf8(url)), status, location);
    ASSERT_EQ(target.has_value(), expected != nullptr);
    if (target)
        EXPECT_EQ(target->toEncoded().toStdString(), expected);
}

INSTANTIATE_TEST_SUITE_P(Every, HTTPSessionFollows,
                         testing::Values(Redirection{"https://h/a/b", 301, "/c", "https://h/c"},
                                         Redirection{"https://h/a/b", 302, "c?d", "https://h/a/c?d"},
                                         Redirection{"https://h/a/b", 303, "https://h/c", "https://h/c"},
                                         Redirection{"https://h/a/b", 307, "https://H:443/c", "https://h:443/c"},
                                         Redirection{"https://h:443/a/b", 308, "//h/c", "https://h/c"},
                                         Redirection{"https://h/a/b", 300, "/c", nullptr},
                                         Redirection{"https://h/a/b", 304, "/c", nullptr},
                                         Redirection{"https://h/a/b", 305, "/c", nullptr},
                                         Redirection{"https://h/a/b", 200, "/c", nullptr},
                                         Redirection{"https://h/a/b", 302, "", nullptr},
                                         Redirection{"https://h/a/b", 302, "http://[", nullptr},
                                         Redirection{"https://h/a/b", 302, "http://h/c", nullptr},
                                         Redirection{"https://h/a/b", 302, "https://h:8443/c", nullptr},
                                         Redirection{"https://h/a/b", 302, "https://other/c", nullptr},
                                         Redirection{"https://h/a/b", 302, "//other/c", nullptr},
                                         Redirection{"https://h/a/b", 302, "https://h@other/c", nullptr},
                                         Redirection{"https://h/a/b", 302, "https://h.other/c", nullptr},
                                         Redirection{"http://localhost/a", 302, "http://127.0.0.1/c", nullptr},
                                         Redirection{"http://localhost/a", 302, "https://localhost/c", nullptr},
                                         Redirection{"https://h/a/b", 302, "file:///etc/passwd", nullptr}));

class StallTimerTest : public testing::Test
{
protected:
    test::ManualClock m_clock;
    int m_stalls = 0;
    std::optional<StallTimer> m_timer{std::in_place, m_clock, 60s, [this] { ++m_stalls; }};
};

TEST_F(StallTimerTest, tellsOnceWhenNothingMoved)
{
    m_clock.advance(59s);
    EXPECT_EQ(m_stalls, 0);
    m_clock.advance(1s);
    EXPECT_EQ(m_stalls, 1);
    m_clock.advance(600s);
    EXPECT_EQ(m_stalls, 1);
}

TEST_F(StallTimerTest, startsAnewWhenSomethingMoves)
{
    for (int i = 0; i < 5; ++i) {
        m_clock.advance(59s);
        m_timer->touch();
    }
    m_clock.advance(59s);
    EXPECT_EQ(m_stalls, 0);
    m_clock.advance(1s);
    EXPECT_EQ(m_stalls, 1);
}

TEST_F(StallTimerTest, isSilentOnceItIsGone)
{
    m_timer.reset();
    EXPECT_EQ(m_clock.pendingCount(), 0);
    m_clock.advance(60s);
    EXPECT_EQ(m_stalls, 0);
}

} // namespace

} // namespace tarnwik
