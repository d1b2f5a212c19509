#include "TarnwikctlFixture.h"

#include <gmock/gmock.h>

#include <QFile>

#include <vector>

namespace tarnwik {

namespace {

using test::ProgramResult;
using test::text;
using test::words;

class TarnwikctlDemo : public test::TarnwikctlFixture
{
protected:
    static QStringList keys(const QJsonValue &value) { return value.toObject().keys(); }

    /// The tunnel's status in words, as a process of its own sees it.
    QString tunnel() { return json("--demo status")[u"vpn"][u"label"].toString(); }

    static constexpr auto tunnelFile = "data/tarnwik/demo/vpn/tunnel.json";
};

TEST_F(TarnwikctlDemo, doesTheWholeJob)
{
    EXPECT_EQ(signIntoDemo(), (ProgramResult{0, "Signed in as demo@tarnwik.example.\n", ""}));
    EXPECT_EQ(run(words("--demo connect --node") << text("Rotterdam 1")),
              (ProgramResult{0, "Connected through Rotterdam 1.\n", ""}));
    EXPECT_EQ(tunnel(), text("Connected"));
    EXPECT_EQ(run("--demo disconnect"), (ProgramResult{0, "Disconnected.\n", ""}));
    EXPECT_EQ(tunnel(), text("Disconnected"));
    EXPECT_EQ(run("--demo sign-out"), (ProgramResult{0, "Signed out.\n", ""}));
    EXPECT_EQ(run("--demo nodes"), failure("Not signed in.", 3));
}

TEST_F(TarnwikctlDemo, showsStatusAsATable)
{
    EXPECT_EQ(run("--demo status"),
              (ProgramResult{0,
                             "Tunnel   Not configured\n"
                             "Server   https://demo.tarnwik.example\n"
                             "Account  not signed in\n",
                             ""}));
    signIntoDemo();
    EXPECT_THAT(run("--demo status").output.toStdString(),
                testing::MatchesRegex("Tunnel         Not configured\n"
                                      "Server         https://demo.tarnwik.example\n"
                                      "Account        demo@tarnwik.example\n"
                                      "Usage          [0-9.]+ .B of [0-9.]+ GB used\n"
                                      "Selected node  Helsinki 1\n"));
    run(words("--demo connect --node 3"));
    const QByteArray connected = run("--demo status").output;
    EXPECT_TRUE(connected.startsWith("Tunnel         Connected\nThrough        Zurich 1\n")) << connected.constData();
}

TEST_F(TarnwikctlDemo, hasStatusAsOneObject)
{
    const QStringList statusKeys = {text("account"), text("selected_node"), text("server_url"), text("signed_in"),
                                    text("vpn")};
    const QJsonDocument before = json("--demo status");
    EXPECT_EQ(before.object().keys(), statusKeys);
    EXPECT_EQ(before[u"signed_in"], QJsonValue(false));
    EXPECT_TRUE(before[u"account"].isNull());
    EXPECT_TRUE(before[u"selected_node"].isNull());
    EXPECT_EQ(before[u"vpn"].toObject(), (QJsonObject{{text("status"), 0}, {text("label"), text("Not configured")}}));

    const QJsonDocument signedIn = json("--demo sign-in --email demo@tarnwik.example", "demo\n");
    EXPECT_EQ(signedIn.object().keys(), statusKeys);
    EXPECT_EQ(signedIn, json("--demo status"));
    EXPECT_EQ(signedIn[u"signed_in"], QJsonValue(true));
    EXPECT_EQ(signedIn[u"server_url"].toString(), text("https://demo.tarnwik.example"));
    EXPECT_EQ(signedIn[u"account"].toObject(), json("--demo account").object());
    QJsonObject first = json("--demo nodes")[0].toObject();
    EXPECT_EQ(first.take(text("selected")), QJsonValue(true));
    EXPECT_EQ(signedIn[u"selected_node"].toObject(), first);
}

TEST_F(TarnwikctlDemo, hasRecordsUnderTheirWireKeys)
{
    signIntoDemo();
    const QJsonDocument account = json("--demo account");
    EXPECT_EQ(account[u"email"].toString(), text("demo@tarnwik.example"));
    EXPECT_EQ(account[u"quota_bytes"].toInteger(), 214748364800);
    EXPECT_EQ(account[u"subscription_current_period_end"].toString(), text("2026-12-01T00:00:00Z"));

    const QJsonArray nodes = json("--demo nodes").array();
    ASSERT_EQ(nodes.size(), 5);
    for (const QJsonValue node : nodes) {
        EXPECT_EQ(keys(node), words("awg_enabled endpoint has_ipv6 id name provider region runtime selected status"));
        EXPECT_EQ(node[u"selected"].toBool(), node[u"id"].toInt() == 1);
    }

    EXPECT_EQ(json("--demo devices").array(), QJsonArray());
    EXPECT_EQ(json("--demo connect --node 5")[u"selected_node"][u"id"].toInt(), 5);
    const QJsonArray devices = json("--demo devices").array();
    ASSERT_EQ(devices.size(), 1);
    EXPECT_EQ(keys(devices[0]), words("enabled id last_selected_node_id name platform profiles public_key"));
    EXPECT_EQ(devices[0][u"profiles"][0][u"node_name"].toString(), text("Osaka 1"));
    EXPECT_EQ(json("--demo disconnect")[u"vpn"][u"label"].toString(), text("Disconnected"));
    EXPECT_EQ(json("--demo sign-out")[u"signed_in"], QJsonValue(false));
}

TEST_F(TarnwikctlDemo, marksTheSelectedNodeForPeople)
{
    signIntoDemo();
    const QList<QByteArray> lines = run("--demo nodes").output.split('\n');
    EXPECT_EQ(lines.value(0), "   ID  NAME         REGION       STATUS   IPV6");
    EXPECT_EQ(lines.value(1), "*  1   Helsinki 1   Finland      online   yes");
    EXPECT_EQ(lines.value(2), "   2   Rotterdam 1  Netherlands  online   yes");
}

TEST_F(TarnwikctlDemo, findsANodeByNumberNameAndOtherCapitals)
{
    signIntoDemo();
    for (const auto &[wanted, id] : {std::pair("3", 3), std::pair("oSAKA 1", 5)}) {
        const auto result = run(words("--demo --json connect --node") << text(wanted));
        EXPECT_EQ(result.status, 0) << wanted << result.error.constData();
        EXPECT_EQ(QJsonDocument::fromJson(result.output)[u"selected_node"][u"id"].toInt(), id) << wanted;
    }
    EXPECT_EQ(json("--demo devices").array().size(), 1) << "each connect must use the same device";
}

TEST_F(TarnwikctlDemo, refusesAnUnknownNodeAndLeavesTheTunnelAlone)
{
    signIntoDemo();
    EXPECT_EQ(run("--demo connect --node 99"), failure("There is no exit node “99”."));
    EXPECT_EQ(run(words("--demo connect --node") << text("\x1b[2JOslo")),
              failure("There is no exit node “\uFFFD[2JOslo”."));
    EXPECT_EQ(run(words("--demo connect --node") << QString()), failure("There is no exit node “”."));
    EXPECT_EQ(tunnel(), text("Not configured"));
    EXPECT_EQ(json("--demo devices").array(), QJsonArray());
}

TEST_F(TarnwikctlDemo, everyCommandThatNeedsASessionSaysSo)
{
    for (const char *command : {"account", "nodes", "devices", "connect", "watch", "sign-out"})
        EXPECT_EQ(run(words("--demo") << text(command)), failure("Not signed in.", 3)) << command;
    EXPECT_EQ(run("--demo disconnect"), (ProgramResult{0, "Disconnected.\n", ""}));
}

TEST_F(TarnwikctlDemo, refusesAWrongPasswordAndStaysSignedOut)
{
    const auto result = run("--demo sign-in --email demo@tarnwik.example", "wrong\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.error.count('\n'), 1);
    EXPECT_FALSE(result.error.contains("wrong"));
    EXPECT_EQ(json("--demo status")[u"signed_in"], QJsonValue(false));
}

TEST_F(TarnwikctlDemo, aWrongPasswordEndsNoSessionThatIsThere)
{
    signIntoDemo();
    EXPECT_EQ(run("--demo sign-in --email demo@tarnwik.example", "wrong\n").status, 1);
    EXPECT_EQ(run("--demo account").status, 0);
}

TEST_F(TarnwikctlDemo, refusesWrongUsageOnStandardErrorAlone)
{
    for (const char *line : {"", "dance", "--demo status now", "sign-in", "connect --wait 0", "status --node 1",
                             "--json=yes status", "connect --node"}) {
        const auto result = run(line);
        EXPECT_EQ(result.status, 2) << line;
        EXPECT_EQ(result.output, "") << line;
        EXPECT_TRUE(result.error.endsWith("\nTry “tarnwikctl --help”.\n")) << result.error.constData();
        EXPECT_EQ(result.error.count('\n'), 2) << line;
    }
}

TEST_F(TarnwikctlDemo, givesUpOnATunnelThatTakesTooLong)
{
    signIntoDemo();
    const auto connecting = start(words("--demo connect --wait 1"));
    const auto isGoingUp = [&] {
        const auto state = m_home.read(text(tunnelFile));
        return state && QJsonDocument::fromJson(*state)[u"going_up"].toBool();
    };
    ASSERT_TRUE(test::spinUntil(isGoingUp));
    // The embedded tunnel takes its time from the moment that it was sent up, which is put off here.
    QJsonObject state = QJsonDocument::fromJson(*m_home.read(text(tunnelFile))).object();
    state[text("sent_at_ms")] = state[text("sent_at_ms")].toInteger() + 3'600'000;
    m_home.write(text("late.json"), QJsonDocument(state).toJson());
    ASSERT_EQ(rename(qPrintable(m_home.path(text("late.json"))), qPrintable(m_home.path(text(tunnelFile)))), 0);
    EXPECT_EQ(connecting->result(), failure("The tunnel did not come up within 1 s."));
    EXPECT_EQ(tunnel(), text("Connecting"));
}

TEST_F(TarnwikctlDemo, severalProcessesAtOnceShareOneWorld)
{
    constexpr int count = 4;
    std::vector<std::unique_ptr<test::Program>> programs;
    const auto startAll = [&](const char *line, const QByteArray &input) {
        programs.clear();
        for (int i = 0; i < count; ++i)
            programs.push_back(start(words(line), input));
    };
    // The first of them make the world together.
    startAll("--demo sign-in --email demo@tarnwik.example", "demo\n");
    for (const auto &program : programs)
        EXPECT_EQ(program->result(), (ProgramResult{0, "Signed in as demo@tarnwik.example.\n", ""}));
    startAll("--demo --json nodes", {});
    for (const auto &program : programs)
        EXPECT_EQ(QJsonDocument::fromJson(program->result().output).array().size(), 5);
    startAll("--demo connect --node 2", {});
    for (const auto &program : programs)
        EXPECT_EQ(program->result(), (ProgramResult{0, "Connected through Rotterdam 1.\n", ""}));
    startAll("--demo disconnect", {});
    for (const auto &program : programs)
        EXPECT_EQ(program->result(), (ProgramResult{0, "Disconnected.\n", ""}));
}

TEST_F(TarnwikctlDemo, keepsItsWorldToItsOwner)
{
    signIntoDemo();
    run("--demo connect");
    for (const char *name : {"defaults.json", "keychain.json", "service.sqlite", "vpn/tunnel.json"}) {
        const QFile file(m_home.path(text("data/tarnwik/demo/") + text(name)));
        ASSERT_TRUE(file.exists()) << name;
        EXPECT_EQ(file.permissions() & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
                  QFile::Permissions())
            << name;
    }
}

TEST_F(TarnwikctlDemo, speaksUTF8InEveryLocale)
{
    signIntoDemo();
    m_home.environment.insert(text("LC_ALL"), text("C"));
    EXPECT_EQ(run("--demo connect --node 99"), failure("There is no exit node “99”."));
    EXPECT_EQ(run("--version").error, "");
}

} // namespace

} // namespace tarnwik
