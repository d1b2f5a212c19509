#include "TarnwikctlFixture.h"
#include "support/RecordSamples.h"
#include "support/ScriptedServer.h"

#include <ostream>

namespace tarnwik {

namespace {

using test::ProgramResult;
using test::ReceivedRequest;
using test::ScriptedReply;
using test::text;
using test::words;

/// A session at a server that answers what the test wants.
class TarnwikctlAnswers : public test::TarnwikctlFixture
{
protected:
    TarnwikctlAnswers()
    {
        m_home.write(text(defaultsFile),
                     QJsonDocument(QJsonObject{{text("TarnwikServerURL"), m_server.origin()},
                                               {text("TarnwikAuthToken"), text("abc")}})
                         .toJson());
        m_server.setHandler([this](const ReceivedRequest &request) {
            if (request.target.endsWith("/nodes"))
                return m_nodes;
            if (request.target.endsWith("/devices"))
                return m_devices;
            return m_session;
        });
    }

    std::optional<QByteArray> defaults() { return m_home.read(text(defaultsFile)); }

    static constexpr auto defaultsFile = "config/tarnwik/defaults.json";
    test::ScriptedServer m_server;
    ScriptedReply m_session = ScriptedReply::http(200, test::sampleJSON<AccountResponse>());
    ScriptedReply m_nodes = ScriptedReply::http(200, test::sampleJSON<NodeListResponse>());
    ScriptedReply m_devices = ScriptedReply::http(200, test::sampleJSON<DeviceListResponse>());
};

struct BadAnswer
{
    const char *name;
    ScriptedReply reply;
    /// The sentence, where it is one of the service's texts.
    const char *sentence = nullptr;
};

void PrintTo(const BadAnswer &answer, std::ostream *stream)
{
    *stream << answer.name;
}

class TarnwikctlBadAnswer : public TarnwikctlAnswers, public testing::WithParamInterface<BadAnswer>
{
protected:
    void expectFailure(const ProgramResult &result)
    {
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.output, "");
        ASSERT_TRUE(result.error.endsWith('\n'));
        EXPECT_EQ(result.error.count('\n'), 1) << result.error.left(500).constData();
        EXPECT_GT(result.error.size(), 1);
        for (const char c : result.error.chopped(1))
            EXPECT_TRUE(c < 0 || c >= ' ') << result.error.left(500).constData();
        if (GetParam().sentence) {
            EXPECT_EQ(result.error, QByteArray(GetParam().sentence) + '\n');
        }
    }
};

TEST_P(TarnwikctlBadAnswer, isOneSentenceAndTheSessionStays)
{
    const auto before = defaults();
    m_session = GetParam().reply;
    expectFailure(run("account"));
    expectFailure(run(words("sign-in --email e --server") << m_server.origin() + u'/', "x\n"));
    m_session = ScriptedReply::http(200, test::sampleJSON<AccountResponse>());
    m_nodes = GetParam().reply;
    expectFailure(run("nodes"));
    m_nodes = ScriptedReply::http(200, test::sampleJSON<NodeListResponse>());
    m_devices = GetParam().reply;
    expectFailure(run("connect"));
    EXPECT_EQ(defaults(), before);
}

constexpr auto notRead = "The data couldn’t be read because it isn’t in the correct format.";
constexpr auto missing = "The data couldn’t be read because it is missing.";

INSTANTIATE_TEST_SUITE_P(
    Every, TarnwikctlBadAnswer,
    testing::Values(
        BadAnswer{"Garbage", {{QByteArray("\x00\x01\xfe\xff\x1b[2J garbage\r\n\r\n", 20)}, ScriptedReply::End::Close}},
        BadAnswer{"NothingAtAll", {{""}, ScriptedReply::End::Close}},
        BadAnswer{"AReset", {{""}, ScriptedReply::End::Reset}},
        BadAnswer{"HalfABody", {{"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"acc"}, ScriptedReply::End::Close}},
        BadAnswer{"HTML", ScriptedReply::http(200, "<html><body>Sign in to the Wi-Fi</body></html>"), notRead},
        BadAnswer{"EmptyBody", ScriptedReply::http(200), notRead},
        BadAnswer{"NoContent", ScriptedReply::http(204), notRead},
        BadAnswer{"AnotherObject", ScriptedReply::http(200, R"({"hello":"world"})"), missing},
        BadAnswer{"AWrongType", ScriptedReply::http(200, R"({"account":5,"nodes":"x","devices":{},"token":[]})"),
                  notRead},
        BadAnswer{"Null", ScriptedReply::http(200, R"({"account":null,"nodes":null,"devices":null})")},
        BadAnswer{"DeepNesting", ScriptedReply::http(200, QByteArray(100'000, '['))},
        BadAnswer{"InvalidUTF8", ScriptedReply::http(200, "{\"account\":\"\xff\xfe\"}"), notRead},
        BadAnswer{"TenMegabytesOfJunk", ScriptedReply::http(200, QByteArray(10'000'000, 'x')), notRead},
        BadAnswer{"ForbiddenInHTML", ScriptedReply::http(403, "<h1>Forbidden</h1>"), "Server returned HTTP 403."},
        BadAnswer{"AServerError", ScriptedReply::http(502, "bad\ngateway"), "Server returned HTTP 502."},
        BadAnswer{"AnErrorBody", ScriptedReply::http(403, R"({"error":"service_is_blocked"})"), "service is blocked"},
        BadAnswer{"AnErrorBodyOfEscapes", ScriptedReply::http(400, "{\"error\":\"a\\u001b[31m\\nb\\r<b>c</b>\"}"),
                  "a\uFFFD[31m\uFFFDb\uFFFD<b>c</b>"},
        BadAnswer{"ARedirectElsewhere", ScriptedReply::http(302, "moved", "Location: https://other.example/\r\n"),
                  "Server returned HTTP 302."}),
    [](const auto &info) { return std::string(info.param.name); });

QByteArray node(int id, const QByteArray &name)
{
    QJsonObject node = QJsonDocument::fromJson(test::nodeJSON).object();
    node[text("id")] = id;
    node[text("name")] = QString::fromUtf8(name);
    return QJsonDocument(node).toJson(QJsonDocument::Compact);
}

TEST_F(TarnwikctlAnswers, ofTenThousandNodesArePrintedWhole)
{
    QByteArray list;
    for (int id = 1; id <= 10'000; ++id)
        list += (id > 1 ? "," : "") + node(id, "Node " + QByteArray::number(id));
    m_nodes = ScriptedReply::http(200, R"({"nodes":[)" + list + "]}");
    const QJsonArray nodes = json("nodes").array();
    ASSERT_EQ(nodes.size(), 10'000);
    EXPECT_EQ(nodes.last()[u"name"].toString(), text("Node 10000"));
    const auto result = run("nodes");
    EXPECT_EQ(result.output.count('\n'), 10'001);
    EXPECT_TRUE(result.output.contains("\n   10000  Node 10000  is      online  no\n"))
        << result.output.right(200).constData();
}

TEST_F(TarnwikctlAnswers, ofNoNodesAreAnEmptyListAndNothingToConnectTo)
{
    m_nodes = ScriptedReply::http(200, R"({"nodes":[]})");
    EXPECT_EQ(json("nodes").array(), QJsonArray());
    EXPECT_TRUE(json("status")[u"selected_node"].isNull());
    EXPECT_EQ(run("connect"), failure("No exit nodes are available."));
}

TEST_F(TarnwikctlAnswers, withMarkupAndEscapeSequencesAreShownAsText)
{
    const QByteArray name = "<b>\x1b]0;owned\x07\x1b[31m\r\nOslo\u202E\u2066</b>%1";
    m_nodes = ScriptedReply::http(200, R"({"nodes":[)" + node(1, name) + "," + node(2, "%1 %2") + "]}");
    const auto result = run("nodes");
    EXPECT_EQ(result.output.count('\n'), 3);
    EXPECT_TRUE(result.output.contains("  <b>\uFFFD]0;owned\uFFFD\uFFFD[31m\uFFFD\uFFFDOslo\uFFFD\uFFFD</b>%1  "))
        << result.output.constData();
    EXPECT_TRUE(run("status").output.contains("Selected node  <b>\uFFFD]0;"));
    // JSON is for programs, which get it as it came.
    EXPECT_EQ(json("nodes")[0][u"name"].toString(), QString::fromUtf8(name));
    const auto raw = run("nodes --json").output;
    for (const char c : raw.chopped(1))
        EXPECT_TRUE(c < 0 || c >= ' ');
}

TEST_F(TarnwikctlAnswers, withNumbersBeyondThirtyTwoBitsStayExact)
{
    QJsonObject account = QJsonDocument::fromJson(test::accountJSON).object();
    account[text("used_bytes")] = qint64(9007199254740993);
    m_session =
        ScriptedReply::http(200, QJsonDocument(QJsonObject{{text("account"), account}}).toJson(QJsonDocument::Compact));
    EXPECT_TRUE(run("account --json").output.contains("\"used_bytes\":9007199254740993"));
}

} // namespace

} // namespace tarnwik
