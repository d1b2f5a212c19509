#include "TarnwikctlFixture.h"
#include "support/ScriptedServer.h"

#include <gmock/gmock.h>

#include <csignal>

namespace tarnwik {

namespace {

using test::ProgramResult;
using test::text;
using test::words;

class TarnwikctlWatch : public test::TarnwikctlFixture
{
};

TEST_F(TarnwikctlWatch, printsWhatAnotherProcessDoes)
{
    signIntoDemo();
    // Nobody has connected here before: there is no trace of a tunnel yet.
    const auto watch = start(words("--demo watch"));
    ASSERT_TRUE(watch->waitForOutput("used\n"));
    EXPECT_EQ(run("--demo connect").status, 0);
    ASSERT_TRUE(watch->waitForOutput("\nConnected, "));
    EXPECT_EQ(run("--demo disconnect").status, 0);
    ASSERT_TRUE(test::spinUntil([&] { return watch->output().count("\nDisconnected, ") == 2; }));
    watch->sendSignal(SIGINT);
    const ProgramResult result = watch->result();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_THAT(result.output.toStdString(),
                testing::MatchesRegex("Not configured, [^\n]* used\n"
                                      "Disconnected, [^\n]* used\n"
                                      "Connecting, [^\n]* used\n"
                                      "Connected, [^\n]* used\n"
                                      "Disconnecting, [^\n]* used\n"
                                      "Disconnected, [^\n]* used\n"));
}

TEST_F(TarnwikctlWatch, endsWellOnBothSignals)
{
    signIntoDemo();
    for (const int signal : {SIGINT, SIGTERM}) {
        const auto watch = start(words("--demo watch"));
        ASSERT_TRUE(watch->waitForOutput("used\n"));
        watch->sendSignal(signal);
        const ProgramResult result = watch->result();
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.output.count('\n'), 1);
        EXPECT_EQ(result.error, "");
    }
}

TEST_F(TarnwikctlWatch, isOneJSONObjectALine)
{
    signIntoDemo();
    const auto watch = start(words("--demo --json watch"));
    ASSERT_TRUE(watch->waitForOutput("\n"));
    EXPECT_EQ(run("--demo connect").status, 0);
    ASSERT_TRUE(watch->waitForOutput("\"Connected\""));
    watch->sendSignal(SIGTERM);
    QByteArray output = watch->result().output;
    ASSERT_TRUE(output.endsWith('\n'));
    output.chop(1);
    QStringList labels;
    for (const QByteArray &line : output.split('\n')) {
        const QJsonDocument status = QJsonDocument::fromJson(line);
        EXPECT_EQ(status.object().keys(), words("account selected_node server_url signed_in vpn"));
        labels << status[u"vpn"][u"label"].toString();
    }
    EXPECT_EQ(labels,
              QStringList({text("Not configured"), text("Disconnected"), text("Connecting"), text("Connected")}));
}

TEST_F(TarnwikctlWatch, endsInTheMiddleOfARequestWithoutAWord)
{
    test::ScriptedServer server;
    m_home.write(
        text("config/tarnwik/defaults.json"),
        QJsonDocument(QJsonObject{{text("TarnwikServerURL"), server.origin()}, {text("TarnwikAuthToken"), text("abc")}})
            .toJson());
    for (const int signal : {SIGINT, SIGTERM}) {
        server.enqueue(test::ScriptedReply::silence());
        const auto received = server.requests().size();
        const auto watch = start(words("watch"));
        ASSERT_TRUE(test::spinUntil([&] { return server.requests().size() > received; }));
        watch->sendSignal(signal);
        EXPECT_EQ(watch->result(), (ProgramResult{0, "", ""}));
    }
}

TEST_F(TarnwikctlWatch, endsWhenNobodyReadsIt)
{
    signIntoDemo();
    // The pipe behind "head -1" breaks at the second line.
    test::Program piped(text("bash"), {text("-c"), text("\"$0\" --demo watch | head -1"), text(TARNWIKCTL_PROGRAM)},
                        {m_home.environment, {}, nullptr, {}});
    ASSERT_TRUE(piped.waitForOutput("used\n"));
    EXPECT_TRUE(piped.isRunning());
    EXPECT_EQ(run("--demo connect").status, 0);
    EXPECT_EQ(piped.result().status, 0);
}

} // namespace

} // namespace tarnwik
