#include "service/server/HTTPServer.h"

#include "service/ServiceError.h"

#include <QHostAddress>
#include <QUrl>

#include <httplib.h>

#include <algorithm>
#include <cstdio>

namespace tarnwik::service {

namespace {

constexpr time_t keepAliveSeconds = 60;
constexpr std::size_t mostRequestsOfOneConnection = 1'000'000;
/// Each open connection holds a thread, idle or not.
constexpr std::size_t threadCount = 64;
/// All that the service answers has this header, and nothing that the HTTP library answers by itself.
const char *const cacheControl = "Cache-Control";

QByteArray header(const httplib::Request &request, const char *name)
{
    return QByteArray::fromStdString(request.get_header_value(name));
}

void send(const ServiceResponse &answer, httplib::Response &response)
{
    response.status = answer.status;
    // Answers hold tokens and pre-shared keys.
    response.set_header(cacheControl, "no-store");
    for (const auto &[name, value] : answer.headers)
        response.set_header(name.constData(), value.toStdString());
    if (answer.body.isEmpty())
        return;
    // What a provider gives is sent as it is. A text would be compressed with Brotli at its slowest, which takes seconds
    // for a long list.
    response.set_content_provider(static_cast<std::size_t>(answer.body.size()), "application/json",
                                  [body = answer.body](std::size_t offset, std::size_t length, auto &sink) {
                                      return sink.write(body.constData() + offset, length);
                                  });
}

/// The error code for a request that the HTTP library refused by itself.
const char *codeForStatus(int status)
{
    switch (status) {
    case 404:
        return "not_found";
    case 413:
        return "payload_too_large";
    case 414:
        return "uri_too_long";
    case 500:
        return "internal_error";
    default:
        return "bad_request";
    }
}

void log(const httplib::Request &request, int status)
{
    // Encoded, so that no request can forge a line.
    const QByteArray method = QUrl::toPercentEncoding(QString::fromStdString(request.method));
    const QByteArray path = QUrl::toPercentEncoding(QString::fromStdString(request.path), "/");
    std::fprintf(stderr, "%s %s %d\n", method.constData(), path.constData(), status);
}

std::unique_ptr<httplib::Server> makeServer(const std::optional<HTTPServerOptions::Identity> &identity)
{
    if (!identity)
        return std::make_unique<httplib::Server>();
    auto server = std::make_unique<httplib::SSLServer>(identity->certificatePath.toLocal8Bit().constData(),
                                                       identity->keyPath.toLocal8Bit().constData());
    if (!server->is_valid()) {
        throw HTTPServerError(QStringLiteral("The certificate %1 with the key %2 cannot be used.")
                                  .arg(identity->certificatePath, identity->keyPath));
    }
    return server;
}

/// Whether this thread is between the beginning of a request and the end of its answer.
thread_local bool isInRequest = false;

} // namespace

HTTPServer::HTTPServer(CustomerService &service, const HTTPServerOptions &options)
    : m_service(service)
    , m_server(makeServer(options.identity))
    , m_isVerbose(options.isVerbose)
{
    configure();
    listen(options);
}

HTTPServer::~HTTPServer() = default;

void HTTPServer::configure()
{
    m_server->new_task_queue = [] { return new httplib::ThreadPool(threadCount); };
    m_server->set_keep_alive_timeout(keepAliveSeconds);
    m_server->set_keep_alive_max_count(mostRequestsOfOneConnection);
    m_server->set_payload_max_length(std::size_t(largestBody));
    m_server->set_tcp_nodelay(true);
    // The library's own choice, SO_REUSEPORT, would let two servers share a port.
    m_server->set_socket_options([](socket_t socket) {
        const int yes = 1;
        ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });

    // The service has routes of its own.
    const auto withBody = [this](const auto &request, auto &response, const auto &reader) {
        answerWithBody(request, response, reader);
    };
    const auto withoutBody = [this](const auto &request, auto &response) { answer(request, response, {}); };
    m_server->Get(".*", withoutBody);
    m_server->Options(".*", withoutBody);
    m_server->Post(".*", withBody);
    m_server->Put(".*", withBody);
    m_server->Patch(".*", withBody);
    m_server->Delete(".*", withBody);

    m_server->set_pre_routing_handler([this](const auto &, auto &) {
        requestBegan();
        return httplib::Server::HandlerResponse::Unhandled;
    });
    m_server->set_logger([this](const auto &request, const auto &response) {
        if (m_isVerbose)
            log(request, response.status);
        requestEnded();
    });
    m_server->set_error_handler([](const auto &, auto &response) {
        if (!response.has_header(cacheControl))
            send(ServiceError(response.status, codeForStatus(response.status)).response(), response);
    });
    // Without one, the library tells the client what() in a header.
    m_server->set_exception_handler([](const auto &, auto &response, std::exception_ptr) { response.status = 500; });
}

void HTTPServer::listen(const HTTPServerOptions &options)
{
    const std::string host = options.address.toStdString();
    int port = options.port;
    if (port == 0)
        port = m_server->bind_to_any_port(host);
    else if (!m_server->bind_to_port(host, port))
        port = -1;
    if (port < 0) {
        throw HTTPServerError(QStringLiteral("Port %1 of %2 is taken or may not be used.")
                                  .arg(QString::number(options.port), options.address));
    }
    const bool isIpv6 = QHostAddress(options.address).protocol() == QAbstractSocket::IPv6Protocol;
    m_origin = QStringLiteral("%1://%2:%3")
                   .arg(options.identity ? QStringLiteral("https") : QStringLiteral("http"),
                        isIpv6 ? QString(u'[' + options.address + u']') : options.address, QString::number(port));
}

void HTTPServer::answer(const httplib::Request &request, httplib::Response &response, const QByteArray &body)
{
    send(m_service.handle({.method = QByteArray::fromStdString(request.method),
                           .path = QString::fromStdString(request.path),
                           .authorization = header(request, "Authorization"),
                           .contentType = header(request, "Content-Type"),
                           .body = body}),
         response);
}

void HTTPServer::answerWithBody(const httplib::Request &request, httplib::Response &response,
                                const httplib::ContentReader &reader)
{
    // The library's own limit looks at the announced length, which a body in chunks does not have, and not at what a
    // compressed one grows to. Of these, one byte more than is allowed is kept, by which the service sees that it was too
    // much; the rest is read and dropped, so that the next request is found behind it.
    QByteArray body;
    const auto receive = [&](const char *data, std::size_t size) {
        body.append(data, std::min(qsizetype(size), largestBody + 1 - body.size()));
        return true;
    };
    const bool isComplete =
        request.is_multipart_form_data() ? reader([](const auto &) { return true; }, receive) : reader(receive);
    if (isComplete)
        answer(request, response, body);
}

void HTTPServer::requestBegan()
{
    const std::lock_guard lock(m_mutex);
    isInRequest = true;
    ++m_openRequests;
}

void HTTPServer::requestEnded()
{
    // What the library refuses by itself ends without having begun.
    if (!std::exchange(isInRequest, false))
        return;
    const std::lock_guard lock(m_mutex);
    if (--m_openRequests == 0)
        m_allEnded.notify_all();
}

void HTTPServer::run()
{
    m_server->listen_after_bind();
}

void HTTPServer::stop(std::chrono::milliseconds patience)
{
    m_server->stop();
    std::unique_lock lock(m_mutex);
    m_allEnded.wait_for(lock, patience, [this] { return m_openRequests == 0; });
}

} // namespace tarnwik::service
