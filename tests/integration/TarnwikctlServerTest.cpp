#include "ServiceProcess.h"
#include "TarnwikctlFixture.h"
#include "support/Certificate.h"

#include <QFile>

namespace tarnwik {

namespace {

using service::ServiceProcess;
using test::ProgramResult;
using test::text;
using test::words;

class TarnwikctlServer : public test::TarnwikctlFixture
{
protected:
    ProgramResult signIn(const QString &server, const QByteArray &password = "demo\n")
    {
        return run(words("sign-in --email demo@tarnwik.example --server") << server, password);
    }

    /// Starts a service and signs in.
    std::unique_ptr<ServiceProcess> signedIn()
    {
        auto service = std::make_unique<ServiceProcess>();
        EXPECT_EQ(signIn(service->waitForOrigin()), (ProgramResult{0, "Signed in as demo@tarnwik.example.\n", ""}));
        return service;
    }

    std::optional<QByteArray> defaults() { return m_home.read(text(defaultsFile)); }

    static constexpr auto defaultsFile = "config/tarnwik/defaults.json";
};

TEST_F(TarnwikctlServer, servesASessionFromSignInToSignOut)
{
    const auto service = signedIn();
    EXPECT_EQ(json("account")[u"email"].toString(), text("demo@tarnwik.example"));
    EXPECT_EQ(json("nodes").array().size(), 5);
    EXPECT_EQ(json("devices").array(), QJsonArray());
    const QJsonDocument status = json("status");
    EXPECT_EQ(status[u"account"].toObject(), json("account").object());
    EXPECT_EQ(status[u"vpn"][u"label"].toString(), text("Not configured"));
    EXPECT_EQ(run("sign-out"), (ProgramResult{0, "Signed out.\n", ""}));
    EXPECT_EQ(run("nodes"), failure("Not signed in.", 3));
}

TEST_F(TarnwikctlServer, signsOutAtTheServerToo)
{
    const auto service = signedIn();
    const QByteArray token = QJsonDocument::fromJson(*defaults())[u"TarnwikAuthToken"].toString().toLatin1();
    EXPECT_EQ(service->send("GET", text("/api/customer/v1/session"), {}, token).status, 200);
    run("sign-out");
    EXPECT_EQ(service->send("GET", text("/api/customer/v1/session"), {}, token).status, 401);
    EXPECT_EQ(QJsonDocument::fromJson(*defaults()).object().keys(), words("TarnwikServerURL"));
}

TEST_F(TarnwikctlServer, remembersTheServer)
{
    const auto service = signedIn();
    run("sign-out");
    EXPECT_EQ(run("sign-in --email demo@tarnwik.example", "demo\n").status, 0);
}

TEST_F(TarnwikctlServer, keepsTheTokenInAFileOfItsOwnersOnly)
{
    const auto service = signedIn();
    const QFile file(m_home.path(text(defaultsFile)));
    EXPECT_EQ(file.permissions() & ~(QFile::ReadUser | QFile::WriteUser), QFile::ReadOwner | QFile::WriteOwner);
    const QString token = QJsonDocument::fromJson(*defaults())[u"TarnwikAuthToken"].toString();
    ASSERT_FALSE(token.isEmpty());
    for (const char *line : {"status", "status --json", "account --json", "devices --json"})
        EXPECT_FALSE(run(line).output.contains(token.toLatin1())) << line;
}

TEST_F(TarnwikctlServer, refusesAWrongPasswordInTheServersWords)
{
    ServiceProcess service;
    EXPECT_EQ(signIn(service.waitForOrigin(), "wrong\n"), failure("invalid credentials"));
    EXPECT_EQ(defaults(), std::nullopt);
}

TEST_F(TarnwikctlServer, thatIsDeadIsToldAndTheSessionStays)
{
    auto service = signedIn();
    const auto before = defaults();
    service.reset();
    for (const char *command : {"account", "nodes", "devices", "connect", "watch"})
        EXPECT_EQ(run(command), failure("Could not connect to the server.")) << command;
    const auto status = run("status");
    EXPECT_EQ(status.status, 1);
    EXPECT_EQ(status.error, "Could not connect to the server.\n");
    EXPECT_TRUE(status.output.contains(" Not configured\n")) << status.output.constData();
    EXPECT_EQ(defaults(), before);
    EXPECT_EQ(run("sign-out"), (ProgramResult{0, "Signed out.\n", ""}));
    EXPECT_EQ(run("nodes").status, 3);
}

TEST_F(TarnwikctlServer, thatForgotTheSessionIsToldAndTheTokenStays)
{
    const auto service = signedIn();
    const QByteArray token = QJsonDocument::fromJson(*defaults())[u"TarnwikAuthToken"].toString().toLatin1();
    EXPECT_EQ(service->send("DELETE", text("/api/customer/v1/session"), {}, token).status, 204);
    const auto before = defaults();
    EXPECT_EQ(run("nodes"), failure("unauthorized"));
    EXPECT_EQ(defaults(), before);
    EXPECT_EQ(signIn(QString::fromLatin1("http://127.0.0.1:1")), failure("Could not connect to the server."));
    EXPECT_EQ(defaults(), before);
}

TEST_F(TarnwikctlServer, isNeverSpokenToInClearTextAcrossTheNetwork)
{
    const QByteArray sentence = "The resource could not be loaded because the App Transport Security policy requires "
                                "the use of a secure connection.";
    for (const char *url : {"http://192.0.2.1", "http://api.tarnwik.example/", "http://127.0.0.1.tarnwik.example"})
        EXPECT_EQ(signIn(text(url)), failure(sentence)) << url;
    EXPECT_EQ(defaults(), std::nullopt);
}

TEST_F(TarnwikctlServer, withAnAddressThatIsNoneIsRefused)
{
    EXPECT_EQ(signIn(text("https://[nonsense")), failure("Enter a valid Tarnwik server URL."));
    EXPECT_EQ(signIn(QString()), failure("Enter a valid Tarnwik server URL."));
    EXPECT_EQ(signIn(text("tarnwik")), failure("unsupported URL"));
    EXPECT_EQ(signIn(text("ftp://127.0.0.1/")), failure("unsupported URL"));
    EXPECT_EQ(signIn(text("https://nowhere.invalid")).status, 1);
    EXPECT_EQ(defaults(), std::nullopt);
}

TEST_F(TarnwikctlServer, withACertificateOfItsOwnMakingIsNotTrusted)
{
    const auto certificate = test::makeSelfSignedCertificate(text("127.0.0.1"));
    m_home.write(text("certificate.pem"), certificate.certificate);
    m_home.write(text("key.pem"), certificate.privateKey);
    ServiceProcess service(
        {text("--certificate"), m_home.path(text("certificate.pem")), text("--key"), m_home.path(text("key.pem"))});
    EXPECT_EQ(signIn(service.waitForOrigin()),
              failure("The certificate for this server is invalid. You might be connecting to a server that is "
                      "pretending to be “127.0.0.1” which could put your confidential information at risk."));
    EXPECT_EQ(defaults(), std::nullopt);
}

TEST_F(TarnwikctlServer, isNoUseWithoutAKeyringToConnect)
{
    const auto service = signedIn();
    EXPECT_EQ(run("connect"), failure("Keychain operation failed with status -25291."));
    EXPECT_EQ(json("status")[u"signed_in"], QJsonValue(true));
}

TEST_F(TarnwikctlServer, isNotNeededToSeeThatThereIsNoNetworkManager)
{
    EXPECT_EQ(run("disconnect"), failure("The system message bus cannot be reached."));
    EXPECT_EQ(json("status")[u"vpn"][u"label"].toString(), text("Not configured"));
    m_home.environment.insert(text("DBUS_SYSTEM_BUS_ADDRESS"), text("disabled:"));
    EXPECT_EQ(run("disconnect"), failure("The system message bus cannot be reached."));
}

} // namespace

} // namespace tarnwik
