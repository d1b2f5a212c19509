#pragma once

#include "support/Certificate.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace tarnwik::test {

/// A request as it came over the wire.
struct ReceivedRequest
{
    /// Everything, byte for byte.
    QByteArray bytes;
    QByteArray method;
    QByteArray target;
    /// In the order and spelling of the wire.
    std::vector<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;

    /// The value of the header of exactly this spelling, or nothing.
    std::optional<QByteArray> header(const QByteArray &name) const;
};

/// What the server sends back for one request: the first part at once, each further one when the test calls
/// sendNextPart(), then the end.
struct ScriptedReply
{
    enum class End {
        KeepOpen,
        Close,
        /// The connection is torn down by a reset.
        Reset,
    };

    std::vector<QByteArray> parts;
    End end = End::KeepOpen;

    /// A well-formed answer. \a headers are whole lines, each ending in CR LF.
    static ScriptedReply http(int status, const QByteArray &body = {}, const QByteArray &headers = {});
    /// Nothing at all: the server reads the request and falls silent.
    static ScriptedReply silence() { return {}; }
};

/// A real HTTP server on loopback, in the test's own event loop, which answers what the test tells it to.
class ScriptedServer final : public QTcpServer
{
    Q_OBJECT

public:
    using Handler = std::function<ScriptedReply(const ReceivedRequest &)>;

    /// Listens on a free port of \a address: for clear text, or for TLS with \a certificate.
    explicit ScriptedServer(std::optional<Certificate> certificate = {},
                            const QHostAddress &address = QHostAddress::LocalHost);

    /// "http://127.0.0.1:PORT", or https; \a host instead of the address if it is given.
    QString origin(const QString &host = {}) const;

    /// The answer to the next request that has none yet.
    void enqueue(ScriptedReply reply) { m_replies.push_back(std::move(reply)); }
    /// Who answers once nothing is enqueued. Without one these requests get a 500.
    void setHandler(Handler handler) { m_handler = std::move(handler); }
    /// Sends the next part of every answer that has one left. False when none had.
    bool sendNextPart();

    const std::vector<ReceivedRequest> &requests() const noexcept { return m_requests; }
    /// How many connections were accepted since the server was made, and how many of them are open.
    int connectionCount() const noexcept { return m_connectionCount; }
    int openConnectionCount() const noexcept { return m_openConnectionCount; }

protected:
    void incomingConnection(qintptr handle) override;

private:
    struct Connection
    {
        QTcpSocket *socket = nullptr;
        QByteArray input;
        std::optional<ScriptedReply> reply;
        std::size_t sentParts = 0;
    };

    void read(Connection &connection);
    void send(Connection &connection);

    std::optional<Certificate> m_certificate;
    Handler m_handler;
    std::deque<ScriptedReply> m_replies;
    std::vector<ReceivedRequest> m_requests;
    std::vector<std::shared_ptr<Connection>> m_connections;
    int m_connectionCount = 0;
    int m_openConnectionCount = 0;
};

} // namespace tarnwik::test
