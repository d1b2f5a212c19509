#include "cli/Options.h"
#include "cli/Report.h"
#include "cli/Terminal.h"
#include "support/ModelFixture.h"

namespace tarnwik::test {

namespace {

using namespace cli;

std::variant<Options, Answer> parse(const char *line)
{
    return parseCommandLine(text(line).split(u' ', Qt::SkipEmptyParts));
}

Options optionsOf(const char *line)
{
    const auto parsed = parse(line);
    if (const auto *options = std::get_if<Options>(&parsed))
        return *options;
    ADD_FAILURE() << line;
    return {};
}

Answer answerTo(const char *line)
{
    const auto parsed = parse(line);
    if (const auto *answer = std::get_if<Answer>(&parsed))
        return *answer;
    ADD_FAILURE() << line;
    return {};
}

} // namespace

TEST(CommandLine, knowsEveryCommand)
{
    EXPECT_EQ(optionsOf("tarnwikctl sign-in --email e").command, Command::SignIn);
    EXPECT_EQ(optionsOf("tarnwikctl status").command, Command::Status);
    EXPECT_EQ(optionsOf("tarnwikctl account").command, Command::Account);
    EXPECT_EQ(optionsOf("tarnwikctl nodes").command, Command::Nodes);
    EXPECT_EQ(optionsOf("tarnwikctl devices").command, Command::Devices);
    EXPECT_EQ(optionsOf("tarnwikctl connect").command, Command::Connect);
    EXPECT_EQ(optionsOf("tarnwikctl disconnect").command, Command::Disconnect);
    EXPECT_EQ(optionsOf("tarnwikctl watch").command, Command::Watch);
    EXPECT_EQ(optionsOf("tarnwikctl sign-out").command, Command::SignOut);
    EXPECT_EQ(optionsOf("tarnwikctl subscriptions").command, Command::Subscriptions);
    EXPECT_EQ(optionsOf("tarnwikctl subscribe monthly").command, Command::Subscribe);
    EXPECT_EQ(optionsOf("tarnwikctl restore-purchases").command, Command::RestorePurchases);
    EXPECT_EQ(optionsOf("tarnwikctl --demo store purchase monthly").command, Command::StorePurchase);
    EXPECT_EQ(optionsOf("tarnwikctl --demo store renew monthly").command, Command::StoreRenew);
    EXPECT_EQ(optionsOf("tarnwikctl --demo store revoke monthly").command, Command::StoreRevoke);
    EXPECT_EQ(optionsOf("tarnwikctl --demo store approve").command, Command::StoreApprove);
}

TEST(CommandLine, takesAPlanByItsName)
{
    EXPECT_EQ(optionsOf("tarnwikctl subscribe monthly").plan, AppStoreSubscriptionPlan::monthly);
    EXPECT_EQ(optionsOf("tarnwikctl --json subscribe yearly --demo").plan, AppStoreSubscriptionPlan::yearly);
    EXPECT_EQ(optionsOf("tarnwikctl store --demo renew --json yearly").plan, AppStoreSubscriptionPlan::yearly);
    EXPECT_EQ(optionsOf("tarnwikctl subscriptions").plan, std::nullopt);
    EXPECT_EQ(optionsOf("tarnwikctl --demo store approve").plan, std::nullopt);
}

TEST(CommandLine, saysWhatIsWrongWithAPlan)
{
    for (const char *line : {"tarnwikctl subscribe", "tarnwikctl subscribe Monthly", "tarnwikctl subscribe weekly",
                             "tarnwikctl subscribe monthly yearly", "tarnwikctl subscribe tarnwik.sub.monthly"}) {
        EXPECT_EQ(answerTo(line).status, ExitStatus::WrongUsage) << line;
        EXPECT_TRUE(answerTo(line).text.startsWith(text("“subscribe” takes a plan: monthly or yearly.\n"))) << line;
    }
    EXPECT_TRUE(answerTo("tarnwikctl --demo store revoke")
                    .text.startsWith(text("“store revoke” takes a plan: monthly or yearly.\n")));
}

TEST(CommandLine, changesTheDemosStoreOnly)
{
    for (const char *change : {"purchase monthly", "renew monthly", "revoke yearly", "approve"}) {
        const QString line = text("tarnwikctl store ") + text(change);
        const Answer answer = answerTo(line.toUtf8().constData());
        EXPECT_EQ(answer.status, ExitStatus::WrongUsage) << change;
        EXPECT_TRUE(answer.text.contains(text("needs --demo"))) << answer.text.toStdString();
        EXPECT_TRUE(optionsOf((line + text(" --demo")).toUtf8().constData()).isDemo) << change;
    }
}

TEST(CommandLine, namesWhatAnIncompleteCommandTakes)
{
    for (const char *line : {"tarnwikctl --demo store", "tarnwikctl --demo store dance"}) {
        EXPECT_EQ(answerTo(line).status, ExitStatus::WrongUsage) << line;
        EXPECT_TRUE(
            answerTo(line).text.startsWith(text("“store” takes one of “purchase”, “renew”, “revoke”, “approve”.\n")))
            << answerTo(line).text.toStdString();
    }
}

TEST(CommandLine, takesOptionsBeforeAndBehindTheCommand)
{
    const Options options = optionsOf("tarnwikctl --demo connect --json --node Oslo --wait 5");
    EXPECT_TRUE(options.isDemo);
    EXPECT_TRUE(options.isJSON);
    EXPECT_EQ(options.node, text("Oslo"));
    EXPECT_EQ(options.wait, std::chrono::seconds(5));
    EXPECT_EQ(optionsOf("tarnwikctl connect").wait, std::chrono::seconds(30));
    EXPECT_EQ(optionsOf("tarnwikctl connect").node, std::nullopt);
    const Options signIn = optionsOf("tarnwikctl sign-in --email=a@b --server https://h");
    EXPECT_EQ(signIn.email, text("a@b"));
    EXPECT_EQ(signIn.serverURL, text("https://h"));
}

TEST(CommandLine, refusesWrongUsage)
{
    for (const char *line :
         {"tarnwikctl", "tarnwikctl dance", "tarnwikctl status now", "tarnwikctl sign-in", "tarnwikctl --nodes",
          "tarnwikctl sign-in --email", "tarnwikctl status --node 3", "tarnwikctl nodes --wait 3",
          "tarnwikctl connect --email e", "tarnwikctl connect --wait 0", "tarnwikctl connect --wait -1",
          "tarnwikctl subscriptions monthly", "tarnwikctl restore-purchases monthly",
          "tarnwikctl --demo store approve monthly", "tarnwikctl subscribe monthly --wait 3",
          "tarnwikctl connect --wait soon", "tarnwikctl connect --wait 86401", "tarnwikctl connect --wait 1.5"})
        EXPECT_EQ(answerTo(line).status, ExitStatus::WrongUsage) << line;
}

TEST(CommandLine, takesNoPasswordAndRepeatsNone)
{
    for (const char *line :
         {"tarnwikctl sign-in --email e secret-word", "tarnwikctl sign-in --email e --password=secret-word"}) {
        const Answer answer = answerTo(line);
        EXPECT_EQ(answer.status, ExitStatus::WrongUsage);
        EXPECT_FALSE(answer.text.contains(text("secret-word"))) << answer.text.toStdString();
    }
}

TEST(CommandLine, explainsItself)
{
    const Answer help = answerTo("tarnwikctl --help");
    EXPECT_EQ(help.status, ExitStatus::Done);
    for (const char *word : {"sign-in", "status", "account", "nodes", "devices", "connect", "disconnect", "watch",
                             "sign-out", "subscriptions", "subscribe monthly|yearly", "restore-purchases", "--json",
                             "--demo", "--email", "--server", "--node", "--wait", "Exit status"})
        EXPECT_TRUE(help.text.contains(text(word))) << word;
    const QString demoCommands = help.text.section(text("\nDemo only:\n"), 1).section(text("\nOptions:\n"), 0, 0);
    EXPECT_EQ(demoCommands.count(text("  store ")), 4);
    EXPECT_EQ(help.text.count(text("  store ")), 4);
    EXPECT_EQ(answerTo("tarnwikctl -h").text, help.text);
    EXPECT_TRUE(answerTo("tarnwikctl --version").text.startsWith(text("tarnwikctl ")));
}

TEST(PlainText, keepsWordsOfAllLanguages)
{
    for (const char *word : {"Reykjavík", "東京", "القاهرة", "🐧", "a b"})
        EXPECT_EQ(plainText(text(word)), text(word));
}

TEST(PlainText, disarmsWhatTerminalsObey)
{
    EXPECT_EQ(plainText(text("a\x1b[2Jb\nc\td\r\x7f")), text("a\uFFFD[2Jb\uFFFDc\uFFFDd\uFFFD\uFFFD"));
    EXPECT_EQ(plainText(text("\u009b31m\u202Eevil\u2066")), text("\uFFFD31m\uFFFDevil\uFFFD"));
}

using Reports = ModelTest;

TEST_F(Reports, tellOfASignedOutClient)
{
    const AppModel model;
    const QJsonObject json = statusJSON(model);
    EXPECT_EQ(
        json.keys(),
        QStringList({text("account"), text("selected_node"), text("server_url"), text("signed_in"), text("vpn")}));
    EXPECT_EQ(json[text("signed_in")], QJsonValue(false));
    EXPECT_EQ(json[text("server_url")], text("https://api.tarnwik.example"));
    EXPECT_EQ(json[text("vpn")], (QJsonObject{{text("label"), text("Not configured")}, {text("status"), 0}}));
    EXPECT_TRUE(json[text("account")].isNull());
    EXPECT_TRUE(json[text("selected_node")].isNull());
    EXPECT_TRUE(statusText(model).contains(text("not signed in")));
}

TEST_F(Reports, tellOfASession)
{
    AppModel model;
    run(model.signIn(text("e"), text("p")));
    const QJsonObject json = statusJSON(model);
    EXPECT_EQ(json[text("signed_in")], QJsonValue(true));
    EXPECT_EQ(json[text("account")], QJsonValue(toJSON(decode<Account>(accountJSON))));
    EXPECT_EQ(json[text("selected_node")][text("id")], 5);
    EXPECT_FALSE(statusText(model).contains(text("secret-token")));
    EXPECT_TRUE(statusText(model).contains(text("4.7 GB of 100.0 GB used"))) << statusText(model).toStdString();
    EXPECT_TRUE(accountText(*model.account()).contains(text("$4.99")));
}

TEST_F(Reports, tellThroughWhichNodeTheTunnelRuns)
{
    m_answers[text("POST /api/customer/v1/devices")] = {201, "{\"device\":" + device(1, "macos") + "}"};
    m_answers[text("POST /api/customer/v1/devices/1/node-profiles")] = {201, sampleJSON<DeviceProfileResponse>()};
    AppModel model;
    run(model.signIn(text("e"), text("p")));
    EXPECT_FALSE(statusText(model).contains(text("Through")));
    run(model.connect());
    EXPECT_TRUE(statusText(model).contains(text("Through        Reykjavík"))) << statusText(model).toStdString();
    run(model.disconnect());
    EXPECT_FALSE(statusText(model).contains(text("Through")));
}

TEST_F(Reports, markTheSelectedNode)
{
    AppModel model;
    run(model.signIn(text("e"), text("p")));
    model.setSelectedNodeID(9);
    const QStringList lines = nodesText(model).split(u'\n');
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[1].startsWith(text("   5 ")));
    EXPECT_TRUE(lines[2].startsWith(text("*  9 ")));
    EXPECT_EQ(nodesJSON(model)[0][text("selected")], QJsonValue(false));
    EXPECT_EQ(nodesJSON(model)[1][text("selected")], QJsonValue(true));
    EXPECT_EQ(nodesJSON(model)[1][text("awg_enabled")], QJsonValue(true));
}

TEST_F(Reports, showServerStringsAsPlainText)
{
    m_answers[m_getNodes] = {200, QByteArray(nodes({5})).replace("Reykjavík", "\\u001b[31mred\\n")};
    AppModel model;
    run(model.signIn(text("e"), text("p")));
    EXPECT_FALSE(nodesText(model).contains(QChar(0x1b)));
    EXPECT_EQ(nodesText(model).count(u'\n'), 1);
}

} // namespace tarnwik::test
