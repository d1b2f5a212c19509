#include "ServiceProcess.h"

#include "support/Certificate.h"

#include <QFile>
#include <QTcpSocket>

namespace tarnwik::service {
namespace {

/// What \a socket gets until the other side falls silent for a moment or closes.
QByteArray readAnswer(QTcpSocket &socket, const QByteArray &last)
{
    QByteArray bytes;
    test::spinUntil([&] {
        bytes += socket.readAll();
        return bytes.contains(last) || socket.state() == QAbstractSocket::UnconnectedState;
    });
    return bytes;
}

std::unique_ptr<QTcpSocket> connectTo(const QString &origin)
{
    auto socket = std::make_unique<QTcpSocket>();
    const QUrl url(origin);
    socket->connectToHost(url.host(), quint16(url.port()));
    EXPECT_TRUE(socket->waitForConnected());
    return socket;
}

TEST(ServiceServer, theWholeJobRunsOverHTTP)
{
    ServiceProcess service;
    ASSERT_FALSE(service.waitForOrigin().isEmpty());
    const QString api = QStringLiteral("/api/customer/v1/");
    const QByteArray token = service.signIn();
    ASSERT_EQ(token.size(), 43);

    const auto nodes = service.send("GET", api + QStringLiteral("nodes"), {}, token);
    EXPECT_EQ(nodes.status, 200);
    EXPECT_EQ(nodes.contentType, "application/json");

    const QByteArray key = QByteArray(32, 9).toBase64();
    const auto device =
        service.send("POST", api + QStringLiteral("devices"),
                     R"({"name":"macOS device","platform":"macos","public_key":")" + key + R"("})", token);
    EXPECT_EQ(device.status, 201);
    const int deviceId = device.body.value(QLatin1String("device")).toObject().value(QLatin1String("id")).toInt();

    const auto profile = service.send("POST", api + QStringLiteral("devices/%1/node-profiles").arg(deviceId),
                                      R"({"node_id":2,"protocol":"amneziawg"})", token);
    EXPECT_EQ(profile.status, 201);
    const auto tunnel = profile.body.value(QLatin1String("tunnel_profile")).toObject();
    const auto again = service.send(
        "GET", api + QStringLiteral("device-profiles/%1/tunnel-profile").arg(tunnel.value(QLatin1String("id")).toInt()),
        {}, token);
    EXPECT_EQ(again.status, 200);
    EXPECT_EQ(again.body.value(QLatin1String("tunnel_profile")).toObject(), tunnel);

    const auto ended = service.send("DELETE", api + QStringLiteral("session"), {}, token);
    EXPECT_EQ(ended.status, 204);
    EXPECT_TRUE(ended.bytes.isEmpty());
    const auto refused = service.send("GET", api + QStringLiteral("devices"), {}, token);
    EXPECT_EQ(refused.status, 401);
    EXPECT_EQ(refused.bytes, R"({"error":"unauthorized"})");
}

TEST(ServiceServer, refusalsOfTheHTTPLayerAreErrorBodiesToo)
{
    ServiceProcess service;
    service.waitForOrigin();
    EXPECT_EQ(service.send("GET", QStringLiteral("/")).bytes, R"({"error":"not_found"})");
    EXPECT_EQ(service.send("NONSENSE", QStringLiteral("/api/customer/v1/session")).bytes, R"({"error":"bad_request"})");
    EXPECT_EQ(service.send("PUT", QStringLiteral("/api/customer/v1/session"), "{}").status, 405);
    const auto large = service.send("POST", QStringLiteral("/api/customer/v1/session"), QByteArray(100'000, ' '));
    EXPECT_EQ(large.status, 413);
    EXPECT_EQ(large.bytes, R"({"error":"payload_too_large"})");
    EXPECT_EQ(service.send("GET", u'/' + QString(9000, u'a')).status, 414);
}

TEST(ServiceServer, aBodyInChunksIsLimitedTooAndTheConnectionGoesOn)
{
    ServiceProcess service;
    const auto socket = connectTo(service.waitForOrigin());
    socket->write("POST /api/customer/v1/session HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/json\r\n"
                  "Transfer-Encoding: chunked\r\n\r\n");
    for (int chunk = 0; chunk < 20; ++chunk)
        socket->write("2000\r\n" + QByteArray(0x2000, ' ') + "\r\n");
    socket->write("0\r\n\r\n");
    EXPECT_TRUE(readAnswer(*socket, "payload_too_large").startsWith("HTTP/1.1 413 "));
    socket->write("GET /nowhere HTTP/1.1\r\nHost: localhost\r\n\r\n");
    EXPECT_TRUE(readAnswer(*socket, "not_found").startsWith("HTTP/1.1 404 "));
}

TEST(ServiceServer, aConnectionServesManyRequests)
{
    ServiceProcess service;
    const auto socket = connectTo(service.waitForOrigin());
    for (int count = 0; count < 200; ++count) {
        socket->write("GET /nowhere HTTP/1.1\r\nHost: localhost\r\n\r\n");
        ASSERT_TRUE(readAnswer(*socket, "not_found").startsWith("HTTP/1.1 404 ")) << count;
    }
    EXPECT_EQ(socket->state(), QAbstractSocket::ConnectedState);
}

TEST(ServiceServer, nothingIsCompressed)
{
    ServiceProcess service;
    const auto socket = connectTo(service.waitForOrigin());
    socket->write("GET /nowhere HTTP/1.1\r\nHost: localhost\r\nAccept-Encoding: gzip, br\r\n\r\n");
    EXPECT_FALSE(readAnswer(*socket, "{\"error\":\"not_found\"}").contains("Content-Encoding"));
}

TEST(ServiceServer, idleConnectionsDoNotKeepOthersWaiting)
{
    ServiceProcess service;
    const QString origin = service.waitForOrigin();
    std::vector<std::unique_ptr<QTcpSocket>> idle;
    idle.reserve(32);
    for (int count = 0; count < 32; ++count)
        idle.push_back(connectTo(origin));
    EXPECT_EQ(service.trySignIn().status, 200);
}

TEST(ServiceServer, verboseLogsMethodPathAndStatusAndNothingSecret)
{
    ServiceProcess service({QStringLiteral("--verbose")});
    service.waitForOrigin();
    const QByteArray token = service.signIn();
    service.send("GET", QStringLiteral("/api/customer/v1/session?token=") + QString::fromLatin1(token), {}, token);
    service.process().terminate();
    service.waitForExit();
    EXPECT_EQ(service.errorText(), "POST /api/customer/v1/session 200\nGET /api/customer/v1/session 200\n");
}

TEST(ServiceServer, withoutVerboseNothingIsLogged)
{
    ServiceProcess service;
    service.waitForOrigin();
    service.signIn();
    service.process().terminate();
    service.waitForExit();
    EXPECT_EQ(service.errorText(), "");
}

TEST(ServiceServer, servesHTTPSWithACertificate)
{
    const QTemporaryDir folder;
    const auto write = [&](const char *name, const QByteArray &bytes) {
        QFile file(folder.filePath(QLatin1String(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    };
    const auto [certificate, key] = test::makeSelfSignedCertificate(QStringLiteral("127.0.0.1"));
    ServiceProcess service({QStringLiteral("--certificate"), write("certificate.pem", certificate),
                            QStringLiteral("--key"), write("key.pem", key)});
    const QString origin = service.waitForOrigin();
    EXPECT_TRUE(origin.startsWith(QLatin1String("https://127.0.0.1:"))) << qPrintable(origin);
    EXPECT_EQ(service.trySignIn().status, 200);

    QProcess curl;
    curl.start(QStringLiteral("curl"), {QStringLiteral("-sk"), origin + QStringLiteral("/api/customer/v1/nodes")});
    ASSERT_TRUE(curl.waitForFinished());
    EXPECT_EQ(curl.readAllStandardOutput(), R"({"error":"unauthorized"})");
    // The certificate is really shown: without -k, curl refuses it.
    curl.start(QStringLiteral("curl"), {QStringLiteral("-s"), origin});
    ASSERT_TRUE(curl.waitForFinished());
    EXPECT_EQ(curl.exitCode(), 60);
}

} // namespace
} // namespace tarnwik::service
