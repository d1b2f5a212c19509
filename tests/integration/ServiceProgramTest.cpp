#include "ServiceProcess.h"

#include <QFile>
#include <QSet>
#include <QTcpServer>
#include <QTcpSocket>

#include <csignal>

namespace tarnwik::service {
namespace {

/// What the program says when it is started with \a arguments and does not serve: exit status and standard error.
std::pair<std::optional<int>, std::string> failure(const QStringList &arguments)
{
    ServiceProcess service(arguments);
    const auto status = service.waitForExit();
    EXPECT_EQ(service.process().readAllStandardOutput(), "");
    return {status, service.errorText()};
}

using Failure = std::pair<std::optional<int>, std::string>;

TEST(ServiceProgram, printsOneLineWhenItIsReady)
{
    ServiceProcess service;
    const QUrl url(service.waitForOrigin());
    EXPECT_EQ(url.scheme(), QStringLiteral("http"));
    EXPECT_EQ(url.host(), QStringLiteral("127.0.0.1"));
    EXPECT_GT(url.port(), 0);
    service.process().terminate();
    EXPECT_EQ(service.waitForExit(), 0);
    EXPECT_EQ(service.process().readAllStandardOutput(), "");
}

TEST(ServiceProgram, listensOnTheIPv6LoopbackToo)
{
    ServiceProcess service({QStringLiteral("--address"), QStringLiteral("::1")});
    EXPECT_TRUE(service.waitForOrigin().startsWith(QLatin1String("http://[::1]:")));
    EXPECT_EQ(service.trySignIn().status, 200);
}

TEST(ServiceProgram, listensOnLoopbackOnly)
{
    for (const char *address : {"0.0.0.0", "::", "192.0.2.1", "localhost", ""}) {
        const std::string text =
            "--address must be a loopback address such as 127.0.0.1 or ::1, not \"" + std::string(address) + "\".\n";
        EXPECT_EQ(failure({QStringLiteral("--address"), QLatin1String(address)}), Failure(2, text));
    }
}

TEST(ServiceProgram, bothSignalsEndItWithinAMomentWhileConnectionsAreIdle)
{
    for (const int signal : {SIGTERM, SIGINT}) {
        ServiceProcess service;
        service.waitForOrigin();
        EXPECT_EQ(service.trySignIn().status, 200);
        QElapsedTimer timer;
        timer.start();
        ::kill(pid_t(service.process().processId()), signal);
        EXPECT_EQ(service.waitForExit(), 0);
        EXPECT_LT(timer.elapsed(), 1500);
    }
}

TEST(ServiceProgram, aRequestThatIsBeingAnsweredIsFinishedFirst)
{
    ServiceProcess service;
    const QUrl url(service.waitForOrigin());
    const QByteArray body =
        R"({"email":"demo@tarnwik.example","password":"demo","device_name":"Desk","platform":"ios"})";
    QTcpSocket socket;
    socket.connectToHost(url.host(), quint16(url.port()));
    ASSERT_TRUE(socket.waitForConnected());
    socket.write("POST /api/customer/v1/session HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/json\r\n"
                 "Content-Length: "
                 + QByteArray::number(body.size()) + "\r\n\r\n");
    socket.flush();
    // The server is at work on the request by then, and waits for the body.
    test::spinFor(std::chrono::milliseconds(100));
    service.process().terminate();
    test::spinFor(std::chrono::milliseconds(100));
    socket.write(body);
    QByteArray answer;
    test::spinUntil([&] {
        answer += socket.readAll();
        return answer.contains("token") || socket.state() == QAbstractSocket::UnconnectedState;
    });
    EXPECT_TRUE(answer.startsWith("HTTP/1.1 200 ")) << answer.constData();
    EXPECT_EQ(service.waitForExit(), 0);
}

TEST(ServiceProgram, aPortThatIsTakenIsToldInOneSentence)
{
    QTcpServer taken;
    ASSERT_TRUE(taken.listen(QHostAddress::LocalHost));
    const QString port = QString::number(taken.serverPort());
    EXPECT_EQ(failure({QStringLiteral("--port"), port}),
              Failure(1, "Port " + port.toStdString() + " of 127.0.0.1 is taken or may not be used.\n"));
}

TEST(ServiceProgram, twoOfThemDoNotShareAPort)
{
    ServiceProcess first;
    const QString port = QString::number(QUrl(first.waitForOrigin()).port());
    EXPECT_EQ(failure({QStringLiteral("--port"), port}).first, 1);
}

TEST(ServiceProgram, wrongUsageIsExitStatusTwo)
{
    EXPECT_EQ(failure({QStringLiteral("--port"), QStringLiteral("70000")}),
              Failure(2, "--port must be a number from 0 to 65535, not \"70000\".\n"));
    EXPECT_EQ(failure({QStringLiteral("--port"), QStringLiteral("-1")}).first, 2);
    EXPECT_EQ(failure({QStringLiteral("--certificate"), QStringLiteral("c.pem")}),
              Failure(2, "--certificate and --key belong together.\n"));
    EXPECT_EQ(failure({QStringLiteral("--frobnicate")}).first, 2);
    EXPECT_EQ(failure({QStringLiteral("extra")}), Failure(2, "Unexpected argument \"extra\".\n"));
}

TEST(ServiceProgram, whatCannotBeUsedIsToldInOneSentence)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("junk"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("{\"accounts\":5}" + QByteArray(5000, ' '));
    file.close();
    const std::string name = path.toStdString();

    EXPECT_EQ(failure({QStringLiteral("--database"), path}),
              Failure(1, "The database " + name + " cannot be opened: it is damaged or no database at all.\n"));
    EXPECT_EQ(failure({QStringLiteral("--seed"), path}),
              Failure(1, name + ": The seed is refused: accounts is of the wrong type.\n"));
    EXPECT_EQ(failure({QStringLiteral("--certificate"), path, QStringLiteral("--key"), path}),
              Failure(1, "The certificate " + name + " with the key " + name + " cannot be used.\n"));
}

TEST(ServiceProgram, tellsItsVersionAndItsOptions)
{
    ServiceProcess version({QStringLiteral("--version")});
    EXPECT_EQ(version.waitForExit(), 0);
    EXPECT_TRUE(version.process().readAllStandardOutput().startsWith("tarnwik-service "));
    ServiceProcess help({QStringLiteral("--help")});
    EXPECT_EQ(help.waitForExit(), 0);
    EXPECT_TRUE(help.process().readAllStandardOutput().contains("--certificate FILE"));
}

TEST(ServiceProgram, twoProcessesServeOneDatabase)
{
    const QTemporaryDir folder;
    const QStringList arguments{QStringLiteral("--database"), folder.filePath(QStringLiteral("service.db"))};
    ServiceProcess first(arguments);
    ServiceProcess second(arguments);
    ASSERT_FALSE(first.waitForOrigin().isEmpty()) << first.errorText();
    ASSERT_FALSE(second.waitForOrigin().isEmpty()) << second.errorText();

    const QByteArray token = first.signIn();
    QSet<QString> addresses;
    for (int index = 0; index < 6; ++index) {
        ServiceProcess &service = index % 2 ? first : second;
        const QByteArray key = QByteArray(32, char(10 + index)).toBase64();
        const auto device = service.send("POST", QStringLiteral("/api/customer/v1/devices"),
                                         R"({"name":"Desk","platform":"ios","public_key":")" + key + R"("})", token);
        const int id = device.body.value(QLatin1String("device")).toObject().value(QLatin1String("id")).toInt();
        const auto profile = service.send("POST", QStringLiteral("/api/customer/v1/devices/%1/node-profiles").arg(id),
                                          R"({"node_id":1,"protocol":"amneziawg"})", token);
        addresses.insert(
            profile.body.value(QLatin1String("profile")).toObject().value(QLatin1String("assigned_ip")).toString());
    }
    EXPECT_EQ(addresses.size(), 6);
    EXPECT_EQ(first.send("GET", QStringLiteral("/api/customer/v1/devices"), {}, token).bytes.count("public_key"), 6);
}

TEST(ServiceProgram, aSessionOutlivesTheProcess)
{
    const QTemporaryDir folder;
    const QStringList arguments{QStringLiteral("--database"), folder.filePath(QStringLiteral("service.db"))};
    QByteArray token;
    {
        ServiceProcess service(arguments);
        service.waitForOrigin();
        token = service.signIn();
        // Not even a chance to clean up.
        service.process().kill();
        service.waitForExit();
    }
    ServiceProcess service(arguments);
    service.waitForOrigin();
    EXPECT_EQ(service.send("GET", QStringLiteral("/api/customer/v1/session"), {}, token).status, 200);
}

} // namespace
} // namespace tarnwik::service
