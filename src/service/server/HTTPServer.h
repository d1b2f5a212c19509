#pragma once

#include "platform/LocalizedError.h"
#include "service/CustomerService.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>

namespace httplib {
class Server;
struct Request;
struct Response;
class ContentReader;
} // namespace httplib

namespace tarnwik::service {

/// The server cannot listen.
class HTTPServerError final : public LocalizedError
{
    using LocalizedError::LocalizedError;
};

struct HTTPServerOptions
{
    /// A certificate and its key, as PEM files.
    struct Identity
    {
        QString certificatePath;
        QString keyPath;
    };

    /// A loopback address.
    QString address = QStringLiteral("127.0.0.1");
    /// 0 for any free one.
    int port = 0;
    /// Serves https instead of http.
    std::optional<Identity> identity;
    /// Writes method, path and status of every request to the standard error, and nothing else of it.
    bool isVerbose = false;
};

/// The customer service on a port. Any number of threads serve; a connection may stay idle for a minute.
class HTTPServer
{
public:
    /// Listens at once, and accepts connections once run() is called. \a service must outlive this. Throws
    /// HTTPServerError.
    HTTPServer(CustomerService &service, const HTTPServerOptions &options);
    ~HTTPServer();

    /// "http://127.0.0.1:8080", with the port that was given or found.
    const QString &origin() const noexcept { return m_origin; }

    /// Serves until stop() is called, and then until the last connection is closed, which may take a minute.
    void run();

    /// Accepts nothing more and waits until no request is being answered, but no longer than \a patience. For any
    /// thread.
    void stop(std::chrono::milliseconds patience);

private:
    void configure();
    void listen(const HTTPServerOptions &options);
    void answer(const httplib::Request &request, httplib::Response &response, const QByteArray &body);
    void answerWithBody(const httplib::Request &request, httplib::Response &response,
                        const httplib::ContentReader &reader);
    void requestBegan();
    void requestEnded();

    CustomerService &m_service;
    std::unique_ptr<httplib::Server> m_server;
    QString m_origin;
    bool m_isVerbose;

    std::mutex m_mutex;
    std::condition_variable m_allEnded;
    int m_openRequests = 0;
};

} // namespace tarnwik::service
