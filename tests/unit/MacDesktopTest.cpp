#include "platform/macos/MacDesktop.h"

#include "MacAdapterStandIns.h"
#include "support/EventLoop.h"

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

using Calls = std::vector<std::string>;

class MacDesktopTest : public testing::Test
{
protected:
    MacDesktopTest() { MacStandIns::current() = {}; }

    static const Calls &calls() { return MacStandIns::current().desktopCalls; }

    MacDesktop m_desktop;
};

TEST_F(MacDesktopTest, opensTheWebAndMail)
{
    EXPECT_TRUE(m_desktop.openURL(QStringLiteral("https://billing.tarnwik.example/7?session=a%20b")));
    EXPECT_TRUE(m_desktop.openURL(QStringLiteral("http://localhost:8080/é")));
    EXPECT_TRUE(m_desktop.openURL(QStringLiteral("mailto:support@tarnwik.example")));
    EXPECT_EQ(calls(),
              Calls({"open https://billing.tarnwik.example/7?session=a%20b", "open http://localhost:8080/%C3%A9",
                     "open mailto:support@tarnwik.example"}));
}

TEST_F(MacDesktopTest, opensNothingElse)
{
    for (const char *url :
         {"", "file:///etc/passwd", "javascript:alert(1)", "ftp://tarnwik.example/", "tarnwik:x",
          "x-apple.systempreferences:", "https://", "https:", "http:///path", "mailto:", "//tarnwik.example",
          "tarnwik.example", "https://exa mple.com", " https://tarnwik.example", "https://h/%zz"})
        EXPECT_FALSE(m_desktop.openURL(QString::fromUtf8(url))) << url;
    EXPECT_EQ(calls(), Calls());
}

TEST_F(MacDesktopTest, makesItselfAnOrdinaryApplicationInFront)
{
    m_desktop.setRegularActivationPolicy();
    m_desktop.activateIgnoringOtherApps();
    EXPECT_EQ(calls(), Calls({"setRegularActivationPolicy", "activateIgnoringOtherApps"}));
}

TEST_F(MacDesktopTest, endsTheProgramWhenTheEventLoopComesRound)
{
    m_desktop.terminate();
    EXPECT_EQ(calls(), Calls());
    settleEvents();
    EXPECT_EQ(calls(), Calls({"terminate"}));
}

} // namespace

} // namespace tarnwik::test
