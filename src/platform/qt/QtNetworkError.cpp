#include "platform/qt/QtNetworkError.h"

#include <QNetworkInterface>

#include <algorithm>

namespace tarnwik {

namespace {

/// Whether any network beyond this machine is up.
bool hasNetwork()
{
    const auto interfaces = QNetworkInterface::allInterfaces();
    return std::any_of(interfaces.begin(), interfaces.end(), [](const QNetworkInterface &interface) {
        return interface.flags().testFlag(QNetworkInterface::IsRunning)
            && !interface.flags().testFlag(QNetworkInterface::IsLoopBack) && !interface.addressEntries().isEmpty();
    });
}

bool isAboutCertificate(const QSslError &error)
{
    return error.error() != QSslError::NoError && error.error() != QSslError::NoSslSupport
        && error.error() != QSslError::NoPeerCertificate && error.error() != QSslError::UnspecifiedError;
}

URLError::Code code(QNetworkReply::NetworkError error, bool hasAnswered)
{
    switch (error) {
    case QNetworkReply::HostNotFoundError:
    case QNetworkReply::ProxyNotFoundError:
        return hasNetwork() ? URLError::CannotFindHost : URLError::NotConnectedToInternet;
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyAuthenticationRequiredError:
    case QNetworkReply::UnknownProxyError:
        return URLError::CannotConnectToHost;
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::ContentReSendError:
        // The last of these: the connection was lost, and what was sent must not be sent twice.
        return URLError::NetworkConnectionLost;
    case QNetworkReply::TimeoutError:
    case QNetworkReply::ProxyTimeoutError:
        return URLError::TimedOut;
    case QNetworkReply::OperationCanceledError:
        return URLError::Cancelled;
    case QNetworkReply::SslHandshakeFailedError:
        return URLError::SecureConnectionFailed;
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::BackgroundRequestNotAllowedError:
        return URLError::NotConnectedToInternet;
    case QNetworkReply::UnknownNetworkError:
        // What the socket layer has no name for: no route above all.
        if (hasAnswered)
            return URLError::NetworkConnectionLost;
        return hasNetwork() ? URLError::CannotConnectToHost : URLError::NotConnectedToInternet;
    default:
        return URLError::CannotParseResponse;
    }
}

/// Whether less of \a reply's body came than it announced. Qt's network stack tells so itself most of the time, but not
/// when the last bytes and the end of the connection come together. Where it unpacked the body, it hides the length.
bool isTruncated(const QNetworkReply &reply)
{
    bool isNumber = false;
    const auto length = reply.rawHeader("Content-Length").toLongLong(&isNumber);
    return isNumber && reply.bytesAvailable() < length;
}

/// Whether \a reply's error only restates its status, which is for others to judge.
bool isStatus(QNetworkReply::NetworkError error, int status)
{
    // To repeat the body is what these redirects ask for; it fails by design, and is done anew by whoever follows them.
    if (error == QNetworkReply::ContentReSendError)
        return status == 307 || status == 308;
    // These errors lie beyond the network layer's. One of them after a good status tells of a broken body.
    return status >= 400 && error > QNetworkReply::UnknownNetworkError;
}

} // namespace

std::optional<URLError> transportError(const QNetworkReply &reply, const QList<QSslError> &sslErrors)
{
    const auto error = reply.error();
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (error == QNetworkReply::NoError || isStatus(error, status)) {
        const bool isWhole =
            status == 204 || status == 304 || error == QNetworkReply::ContentReSendError || !isTruncated(reply);
        return isWhole ? std::nullopt : std::optional(URLError(URLError::NetworkConnectionLost));
    }
    if (error == QNetworkReply::SslHandshakeFailedError
        && std::any_of(sslErrors.begin(), sslErrors.end(), isAboutCertificate))
        return URLError(URLError::ServerCertificateUntrusted, reply.url().host());
    return URLError(code(error, status != 0));
}

} // namespace tarnwik
