#include "platform/embedded/EmbeddedHTTPSession.h"

#include "async/Clock.h"
#include "service/CustomerService.h"

#include <QUrl>

namespace tarnwik {

namespace {

QByteArray header(const HTTPRequest &request, const QByteArray &name)
{
    for (const auto &[key, value] : request.headers) {
        if (key == name)
            return value;
    }
    return {};
}

} // namespace

EmbeddedHTTPSession::EmbeddedHTTPSession(QString host, ServiceSource service)
    : m_host(std::move(host))
    , m_service(std::move(service))
{
}

Task<URLResponse> EmbeddedHTTPSession::data(HTTPRequest request, std::stop_token token)
{
    return exchange(m_host, m_service, std::move(request), std::move(token));
}

Task<URLResponse> EmbeddedHTTPSession::exchange(QString host, ServiceSource service, HTTPRequest request,
                                                std::stop_token token)
{
    try {
        co_await async::yield(token);
    } catch (const async::Cancelled &) {
        throw URLError(URLError::Cancelled);
    }
    const QUrl url(request.url.absoluteString());
    if (url.scheme() != QStringLiteral("https"))
        throw URLError(URLError::UnsupportedURL);
    if (url.host() != host)
        throw URLError(URLError::CannotFindHost);

    const service::ServiceRequest call{.method = request.method,
                                       .path = url.path(),
                                       .authorization = header(request, "Authorization"),
                                       .contentType = header(request, "Content-Type"),
                                       .body = request.body.value_or(QByteArray())};
    const service::ServiceResponse answer = service()->handle(call);
    co_return URLResponse{answer.status, answer.body};
}

} // namespace tarnwik
