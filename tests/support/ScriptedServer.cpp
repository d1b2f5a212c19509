#include "support/ScriptedServer.h"

#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>

#include <sys/socket.h>

#include <algorithm>
#include <stdexcept>

namespace tarnwik::test {

namespace {

/// The first whole request in \a input, or nothing if more bytes are needed.
std::optional<ReceivedRequest> firstRequest(const QByteArray &input)
{
    const auto headEnd = input.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return std::nullopt;

    ReceivedRequest request;
    auto lines = input.left(headEnd).split('\n');
    const auto firstLine = lines.takeFirst().trimmed().split(' ');
    request.method = firstLine.value(0);
    request.target = firstLine.value(1);
    qsizetype bodySize = 0;
    for (const auto &line : lines) {
        const auto colon = line.indexOf(':');
        const auto &[name, value] = request.headers.emplace_back(line.left(colon), line.mid(colon + 1).trimmed());
        if (name.compare("content-length", Qt::CaseInsensitive) == 0)
            bodySize = value.toLongLong();
    }
    if (input.size() < headEnd + 4 + bodySize)
        return std::nullopt;
    request.body = input.mid(headEnd + 4, bodySize);
    request.bytes = input.left(headEnd + 4 + bodySize);
    return request;
}

/// Tears the connection down with a reset in place of an orderly end.
void reset(QTcpSocket &socket)
{
    const linger atOnce{.l_onoff = 1, .l_linger = 0};
    setsockopt(int(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    socket.abort();
}

} // namespace

std::optional<QByteArray> ReceivedRequest::header(const QByteArray &name) const
{
    const auto found = std::find_if(headers.begin(), headers.end(), [&](const auto &h) { return h.first == name; });
    return found == headers.end() ? std::nullopt : std::optional(found->second);
}

ScriptedReply ScriptedReply::http(int status, const QByteArray &body, const QByteArray &headers)
{
    return {{"HTTP/1.1 " + QByteArray::number(status)
             + " Scripted\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n" + headers + "\r\n" + body}};
}

ScriptedServer::ScriptedServer(std::optional<Certificate> certificate, const QHostAddress &address)
    : m_certificate(std::move(certificate))
{
    if (!listen(address))
        throw std::runtime_error("The scripted server cannot listen: " + errorString().toStdString());
}

QString ScriptedServer::origin(const QString &host) const
{
    QString name = host.isEmpty() ? serverAddress().toString() : host;
    if (name.contains(u':'))
        name = u'[' + name + u']';
    return (m_certificate ? QStringLiteral("https://") : QStringLiteral("http://")) + name + u':'
        + QString::number(serverPort());
}

bool ScriptedServer::sendNextPart()
{
    bool hasSent = false;
    // A copy: a connection that ends leaves the list.
    for (const auto &connection : std::vector(m_connections)) {
        if (connection->reply) {
            send(*connection);
            hasSent = true;
        }
    }
    return hasSent;
}

void ScriptedServer::incomingConnection(qintptr handle)
{
    auto *socket = new QSslSocket(this);
    socket->setSocketDescriptor(handle);
    const auto connection = std::make_shared<Connection>();
    connection->socket = socket;
    m_connections.push_back(connection);
    ++m_connectionCount;
    ++m_openConnectionCount;

    connect(socket, &QTcpSocket::readyRead, this, [this, connection] { read(*connection); });
    connect(socket, &QTcpSocket::disconnected, this, [this, connection, socket] {
        std::erase(m_connections, connection);
        --m_openConnectionCount;
        socket->deleteLater();
    });
    if (m_certificate) {
        auto configuration = socket->sslConfiguration();
        configuration.setLocalCertificate(QSslCertificate(m_certificate->certificate));
        configuration.setPrivateKey(QSslKey(m_certificate->privateKey, QSsl::Ec));
        socket->setSslConfiguration(configuration);
        socket->startServerEncryption();
    }
}

void ScriptedServer::read(Connection &connection)
{
    connection.input += connection.socket->readAll();
    // A client may send its next request before this one is answered.
    while (!connection.reply) {
        auto request = firstRequest(connection.input);
        if (!request)
            return;
        connection.input.remove(0, request->bytes.size());
        m_requests.push_back(std::move(*request));
        connection.sentParts = 0;
        if (!m_replies.empty()) {
            connection.reply = std::move(m_replies.front());
            m_replies.pop_front();
        } else if (m_handler) {
            connection.reply = m_handler(m_requests.back());
        } else {
            connection.reply = ScriptedReply::http(500, "no answer was scripted");
        }
        send(connection);
    }
}

void ScriptedServer::send(Connection &connection)
{
    const auto &parts = connection.reply->parts;
    if (connection.sentParts < parts.size()) {
        connection.socket->write(parts[connection.sentParts++]);
        connection.socket->flush();
    }
    if (connection.sentParts < parts.size())
        return;

    switch (connection.reply->end) {
    case ScriptedReply::End::KeepOpen:
        // A silent server never comes to its next request.
        if (!parts.empty())
            connection.reply.reset();
        break;
    case ScriptedReply::End::Close:
        connection.socket->disconnectFromHost();
        break;
    case ScriptedReply::End::Reset:
        reset(*connection.socket);
        break;
    }
}

} // namespace tarnwik::test
