#include "platform/qt/QtHTTPSession.h"

#include "async/Gate.h"
#include "platform/qt/HTTPPolicy.h"
#include "platform/qt/QtNetworkError.h"
#include "platform/qt/SingleUseBody.h"
#include "platform/qt/StallTimer.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSslConfiguration>

#include <algorithm>
#include <utility>

namespace tarnwik {

namespace {

constexpr int maximumRedirects = 20;

/// No answer of a service comes near it; one that never ends would take all memory.
constexpr qint64 largestAnswer = 64LL * 1024 * 1024;

QSslConfiguration sslConfiguration(const QList<QSslCertificate> &authorities)
{
    auto configuration = QSslConfiguration::defaultConfiguration();
    const QString file = qEnvironmentVariable("SSL_CERT_FILE");
    if (authorities.isEmpty() && file.isEmpty())
        return configuration;
    // Naming any authority turns off the loading of the system's on demand.
    configuration.setCaCertificates(
        (file.isEmpty() ? QSslConfiguration::systemCaCertificates() : QSslCertificate::fromPath(file)) + authorities);
    return configuration;
}

bool hasHeader(const HTTPRequest &request, QByteArrayView name)
{
    return std::any_of(request.headers.begin(), request.headers.end(),
                       [name](const auto &header) { return header.first.compare(name, Qt::CaseInsensitive) == 0; });
}

} // namespace

/// What requests need of the session; they share it, so that it outlives them.
struct QtHTTPSession::Network
{
    std::shared_ptr<async::Clock> clock;
    QList<QSslCertificate> authorities;
    // Made for the first request: it brings up a good part of the network stack.
    std::unique_ptr<QNetworkAccessManager> manager;
    QSslConfiguration sslConfiguration;

    std::unique_ptr<QNetworkReply> send(const HTTPRequest &request, const QUrl &url);
};

std::unique_ptr<QNetworkReply> QtHTTPSession::Network::send(const HTTPRequest &request, const QUrl &url)
{
    if (!manager) {
        manager = std::make_unique<QNetworkAccessManager>();
        sslConfiguration = tarnwik::sslConfiguration(authorities);
    }

    // Qt would answer a server's challenge with a name and password from the URL.
    QNetworkRequest message(url.adjusted(QUrl::RemoveUserInfo));
    message.setSslConfiguration(sslConfiguration);
    message.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    message.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    message.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    message.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    // HTTP/2 would gain nothing for a handful of small answers, and would write the headers' names in its own way.
    message.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    for (const auto &[name, value] : request.headers) {
        if (isHeaderValue(value))
            message.setRawHeader(name, value);
    }
    if (!hasHeader(request, "User-Agent"))
        message.setRawHeader("User-Agent", "Tarnwik/" TARNWIK_VERSION);

    if (request.method == "GET")
        return std::unique_ptr<QNetworkReply>(manager->get(message));
    // Never post(): without a body it would send the URL's query as one.
    const QByteArray body = request.body.value_or(QByteArray());
    auto upload = std::make_unique<SingleUseBody>(body);
    message.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
    message.setHeader(QNetworkRequest::ContentLengthHeader, body.size());
    std::unique_ptr<QNetworkReply> reply(manager->sendCustomRequest(message, request.method, upload.get()));
    upload.release()->setParent(reply.get());
    return reply;
}

QtHTTPSession::QtHTTPSession(std::shared_ptr<async::Clock> clock, QList<QSslCertificate> authorities)
    : m_network(std::make_shared<Network>(Network{std::move(clock), std::move(authorities), {}, {}}))
{
}

QtHTTPSession::~QtHTTPSession() = default;

Task<URLResponse> QtHTTPSession::data(HTTPRequest request, std::stop_token token)
{
    return exchange(m_network, std::move(request), std::move(token));
}

Task<URLResponse> QtHTTPSession::exchange(std::shared_ptr<Network> network, HTTPRequest request, std::stop_token token)
{
    if (token.stop_requested())
        throw URLError(URLError::Cancelled);
    QUrl url = sendableURL(request.url);

    for (int redirects = 0; redirects <= maximumRedirects; ++redirects) {
        // Destroying a reply that has not finished aborts it.
        const auto reply = network->send(request, url);
        async::Gate gate;
        StallTimer stallTimer(*network->clock, request.timeout, [&gate] { gate.open(); });
        QList<QSslError> sslErrors;
        QObject::connect(reply.get(), &QNetworkReply::sslErrors, &gate,
                         [&sslErrors](const QList<QSslError> &errors) { sslErrors += errors; });
        QObject::connect(reply.get(), &QNetworkReply::uploadProgress, &stallTimer, &StallTimer::touch);
        QObject::connect(reply.get(), &QNetworkReply::metaDataChanged, &stallTimer, &StallTimer::touch);
        QObject::connect(reply.get(), &QNetworkReply::readyRead, &stallTimer, &StallTimer::touch);
        QObject::connect(reply.get(), &QNetworkReply::finished, &gate, [&gate] { gate.open(); });
        QObject::connect(reply.get(), &QNetworkReply::readyRead, &gate, [&] {
            if (reply->bytesAvailable() > largestAnswer)
                gate.open();
        });

        try {
            co_await gate.wait(token);
        } catch (const async::Cancelled &) {
            throw URLError(URLError::Cancelled);
        }
        if (reply->bytesAvailable() > largestAnswer)
            throw URLError(URLError::CannotParseResponse);
        if (!reply->isFinished())
            throw URLError(URLError::TimedOut);
        if (const auto error = transportError(*reply, sslErrors))
            throw *error;

        const auto status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        const auto next = redirectTarget(url, status.toInt(), reply->rawHeader("Location"));
        if (!next)
            co_return URLResponse{status.isValid() ? std::optional(status.toInt()) : std::nullopt, reply->readAll()};
        request = redirected(std::move(request), status.toInt());
        url = *next;
    }
    throw URLError(URLError::HTTPTooManyRedirects);
}

} // namespace tarnwik
