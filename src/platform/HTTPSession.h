#pragma once

#include "async/Task.h"
#include "platform/LocalizedError.h"
#include "platform/URL.h"

#include <QByteArray>
#include <QList>

#include <chrono>
#include <optional>
#include <utility>

namespace tarnwik {

/// One HTTP request. Headers are sent in this order, names as they are spelt here.
struct HTTPRequest
{
    URL url;
    QByteArray method;
    QList<std::pair<QByteArray, QByteArray>> headers = {};
    std::optional<QByteArray> body = {};
    /// How long the exchange may stand still: any traffic starts the time anew.
    std::chrono::milliseconds timeout = std::chrono::seconds(60);
};

/// A whole answer.
struct URLResponse
{
    /// The HTTP status, or nothing when what answered was not HTTP.
    std::optional<int> statusCode;
    QByteArray body;
};

/// A failure to get any answer, with the loading system's code and its text for that code.
class URLError final : public LocalizedError
{
public:
    /// NSURLErrorDomain's codes, of which these occur.
    enum Code {
        Cancelled = -999,
        BadURL = -1000,
        TimedOut = -1001,
        UnsupportedURL = -1002,
        CannotFindHost = -1003,
        CannotConnectToHost = -1004,
        NetworkConnectionLost = -1005,
        HTTPTooManyRedirects = -1007,
        NotConnectedToInternet = -1009,
        CannotParseResponse = -1017,
        AppTransportSecurityRequiresSecureConnection = -1022,
        SecureConnectionFailed = -1200,
        ServerCertificateUntrusted = -1202,
    };

    /// \a host (without port) is named by the texts of certificate errors.
    explicit URLError(Code code, const QString &host = {});

    Code code() const noexcept { return m_code; }

private:
    Code m_code;
};

/// What sends requests. Lives on the main thread; any number of requests may be under way.
class HTTPSession
{
public:
    virtual ~HTTPSession() = default;

    /// Sends \a request and waits for the whole answer, whatever its status. Redirects are followed on the same origin
    /// only; any other is delivered as it came. Clear text goes to loopback only. Throws URLError when there is no
    /// answer, Cancelled among them: a pulled \a token aborts the request.
    virtual Task<URLResponse> data(HTTPRequest request, std::stop_token token = {}) = 0;
};

} // namespace tarnwik
