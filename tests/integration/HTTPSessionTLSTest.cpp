#include "HTTPSessionFixture.h"

#include <QSslCertificate>
#include <QTemporaryFile>

namespace tarnwik {

namespace {

using namespace std::chrono_literals;
using test::ScriptedReply;

class HTTPSessionTLS : public test::HTTPSessionFixture
{
protected:
    HTTPRequest requestTo(const test::ScriptedServer &server, const QString &host = {}) const
    {
        return {url(server.origin(host) + QStringLiteral("/a")), "GET", {{"Authorization", "Bearer abc"}}, {}};
    }

    std::unique_ptr<QtHTTPSession> sessionTrusting(const test::Certificate &certificate) const
    {
        return std::make_unique<QtHTTPSession>(m_clock, QList{QSslCertificate(certificate.certificate)});
    }

    /// The certificate is refused by the platform's text, and the server has received nothing.
    void expectUntrusted(const test::ScriptedServer &server, const QString &host)
    {
        try {
            send(requestTo(server, host));
            ADD_FAILURE() << "the certificate was accepted";
        } catch (const URLError &error) {
            EXPECT_EQ(error.code(), URLError::ServerCertificateUntrusted);
            EXPECT_EQ(error.localizedDescription(),
                      URLError(URLError::ServerCertificateUntrusted, host).localizedDescription());
            EXPECT_TRUE(error.localizedDescription().contains(u'“' + host + u'”'));
        }
        EXPECT_TRUE(server.requests().empty());
    }

    const QString m_address = QStringLiteral("127.0.0.1");
    const test::Certificate m_certificate = test::makeSelfSignedCertificate(m_address);
};

TEST_F(HTTPSessionTLS, aCertificateThatSignsItselfIsRefused)
{
    const test::ScriptedServer server(m_certificate);
    expectUntrusted(server, m_address);
}

TEST_F(HTTPSessionTLS, aTrustedCertificateIsAccepted)
{
    test::ScriptedServer server(m_certificate);
    server.enqueue(ScriptedReply::http(200, "safe"));
    m_session = sessionTrusting(m_certificate);
    EXPECT_EQ(send(requestTo(server)).body, "safe");
    EXPECT_EQ(server.requests().at(0).header("Authorization"), "Bearer abc");
}

TEST_F(HTTPSessionTLS, aCertificateForAnotherHostIsRefused)
{
    const test::ScriptedServer server(m_certificate);
    m_session = sessionTrusting(m_certificate);
    expectUntrusted(server, QStringLiteral("localhost"));
}

TEST_F(HTTPSessionTLS, anExpiredCertificateIsRefused)
{
    const auto expired = test::makeSelfSignedCertificate(m_address, -60s);
    const test::ScriptedServer server(expired);
    m_session = sessionTrusting(expired);
    expectUntrusted(server, m_address);
}

TEST_F(HTTPSessionTLS, theEnvironmentMayNameTheAuthorities)
{
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write(m_certificate.certificate);
    file.flush();
    test::ScriptedServer server(m_certificate);
    server.enqueue(ScriptedReply::http(200, "safe"));
    qputenv("SSL_CERT_FILE", file.fileName().toUtf8());
    const auto response = send(requestTo(server));
    qunsetenv("SSL_CERT_FILE");
    EXPECT_EQ(response.body, "safe");
}

TEST_F(HTTPSessionTLS, aServerThatSpeaksClearTextFailsTheHandshake)
{
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    QObject::connect(&server, &QTcpServer::newConnection, &server, [&server] {
        auto *socket = server.nextPendingConnection();
        socket->write("HTTP/1.1 400 Bad Request\r\nContent-Length: 0\r\n\r\n");
    });
    const auto text = QStringLiteral("https://127.0.0.1:%1/").arg(server.serverPort());
    EXPECT_EQ(failureOf({url(text), "GET", {}, {}}), URLError::SecureConnectionFailed);
}

TEST_F(HTTPSessionTLS, aServerThatHangsUpDuringTheHandshakeFailsIt)
{
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    QObject::connect(&server, &QTcpServer::newConnection, &server, [&server] {
        auto *socket = server.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, &QTcpSocket::disconnectFromHost);
    });
    const auto text = QStringLiteral("https://127.0.0.1:%1/").arg(server.serverPort());
    const int code = failureOf({url(text), "GET", {}, {}});
    EXPECT_TRUE(code == URLError::NetworkConnectionLost || code == URLError::SecureConnectionFailed) << code;
}

TEST_F(HTTPSessionTLS, aTokenDoesNotFollowARedirectIntoClearText)
{
    test::ScriptedServer server(m_certificate);
    server.enqueue(ScriptedReply::http(302, "moved", "Location: " + m_server.origin().toLatin1() + "/b\r\n"));
    m_session = sessionTrusting(m_certificate);
    EXPECT_EQ(send(requestTo(server)).statusCode, 302);
    EXPECT_EQ(m_server.connectionCount(), 0);
}

TEST_F(HTTPSessionTLS, aConnectionThatIsLostInTheMiddleOfTheBodyFails)
{
    test::ScriptedServer server(m_certificate);
    server.enqueue({{"HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nabc"}, ScriptedReply::End::Close});
    m_session = sessionTrusting(m_certificate);
    EXPECT_EQ(failureOf(requestTo(server)), URLError::NetworkConnectionLost);
}

} // namespace

} // namespace tarnwik
