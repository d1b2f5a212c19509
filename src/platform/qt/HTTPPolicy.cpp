#include "platform/qt/HTTPPolicy.h"

#include <QHostAddress>

#include <algorithm>
#include <array>
#include <string_view>

namespace tarnwik {

namespace {

int portOf(const QUrl &url)
{
    return url.port(url.scheme() == u"https" ? 443 : 80);
}

bool haveSameOrigin(const QUrl &a, const QUrl &b)
{
    return a.scheme() == b.scheme() && a.host() == b.host() && portOf(a) == portOf(b);
}

} // namespace

bool isLoopback(const QUrl &url)
{
    const QString host = url.host();
    return host == u"localhost" || QHostAddress(host).isLoopback();
}

QUrl sendableURL(const URL &url)
{
    const QUrl result(url.absoluteString(), QUrl::StrictMode);
    const bool isHTTP = result.scheme() == u"https" || result.scheme() == u"http";
    if (!result.isValid() || !isHTTP || result.host().isEmpty())
        throw URLError(URLError::UnsupportedURL);
    if (result.scheme() == u"http" && !isLoopback(result))
        throw URLError(URLError::AppTransportSecurityRequiresSecureConnection);
    return result;
}

bool isHeaderValue(const QByteArray &value)
{
    constexpr std::string_view breaks("\r\n\0", 3);
    return std::none_of(value.begin(), value.end(), [&](char c) { return breaks.find(c) != std::string_view::npos; });
}

std::optional<QUrl> redirectTarget(const QUrl &url, int statusCode, const QByteArray &location)
{
    constexpr std::array redirects = {301, 302, 303, 307, 308};
    if (std::find(redirects.begin(), redirects.end(), statusCode) == redirects.end() || location.isEmpty())
        return std::nullopt;
    const QUrl reference = QUrl::fromEncoded(location, QUrl::StrictMode);
    if (!reference.isValid())
        return std::nullopt;
    const QUrl target = url.resolved(reference);
    return haveSameOrigin(url, target) ? std::optional(target) : std::nullopt;
}

HTTPRequest redirected(HTTPRequest request, int statusCode)
{
    const bool becomesGet = statusCode == 303 || ((statusCode == 301 || statusCode == 302) && request.method == "POST");
    if (!becomesGet)
        return request;
    request.method = "GET";
    request.body.reset();
    request.headers.removeIf(
        [](const auto &header) { return header.first.compare("content-type", Qt::CaseInsensitive) == 0; });
    return request;
}

} // namespace tarnwik
