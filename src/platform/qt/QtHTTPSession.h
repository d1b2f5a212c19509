#pragma once

#include "platform/HTTPSession.h"

#include <QSslCertificate>

#include <memory>

namespace tarnwik {

namespace async {
class Clock;
}

/// The HTTP session over Qt's network stack.
///
/// It keeps nothing between requests but open connections: no cookies, no cache, no credentials. Certificates are
/// checked against the system's authorities, or those in the file that the environment's SSL_CERT_FILE names in their
/// place. Nothing runs while no request is under way. Requests that are under way when the session is destroyed go on to
/// their end; their tokens stop them.
class QtHTTPSession final : public HTTPSession
{
public:
    /// Times out by \a clock. \a authorities are trusted besides the system's.
    explicit QtHTTPSession(std::shared_ptr<async::Clock> clock, QList<QSslCertificate> authorities = {});
    ~QtHTTPSession() override;

    Task<URLResponse> data(HTTPRequest request, std::stop_token token = {}) override;

private:
    struct Network;

    static Task<URLResponse> exchange(std::shared_ptr<Network> network, HTTPRequest request, std::stop_token token);

    std::shared_ptr<Network> m_network;
};

} // namespace tarnwik
