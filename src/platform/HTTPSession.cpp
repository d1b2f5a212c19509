#include "platform/HTTPSession.h"

namespace tarnwik {

namespace {

/// The loading system's English texts.
QString text(URLError::Code code, const QString &host)
{
    switch (code) {
    case URLError::Cancelled:
        return QStringLiteral("cancelled");
    case URLError::BadURL:
        return QStringLiteral("bad URL");
    case URLError::TimedOut:
        return QStringLiteral("The request timed out.");
    case URLError::UnsupportedURL:
        return QStringLiteral("unsupported URL");
    case URLError::CannotFindHost:
        return QStringLiteral("A server with the specified hostname could not be found.");
    case URLError::CannotConnectToHost:
        return QStringLiteral("Could not connect to the server.");
    case URLError::NetworkConnectionLost:
        return QStringLiteral("The network connection was lost.");
    case URLError::HTTPTooManyRedirects:
        return QStringLiteral("too many HTTP redirects");
    case URLError::NotConnectedToInternet:
        return QStringLiteral("The Internet connection appears to be offline.");
    case URLError::CannotParseResponse:
        return QStringLiteral("cannot parse response");
    case URLError::AppTransportSecurityRequiresSecureConnection:
        return QStringLiteral("The resource could not be loaded because the App Transport Security policy requires "
                              "the use of a secure connection.");
    case URLError::SecureConnectionFailed:
        return QStringLiteral("A TLS error caused the secure connection to fail.");
    case URLError::ServerCertificateUntrusted:
        return QStringLiteral("The certificate for this server is invalid. You might be connecting to a server that "
                              "is pretending to be “%1” which could put your confidential information at risk.")
            .arg(host);
    }
    return QStringLiteral("The operation couldn’t be completed. (NSURLErrorDomain error %1.)").arg(int(code));
}

} // namespace

URLError::URLError(Code code, const QString &host)
    : LocalizedError(text(code, host))
    , m_code(code)
{
}

} // namespace tarnwik
