#pragma once

#include "platform/HTTPSession.h"

#include <functional>
#include <memory>

namespace tarnwik {

namespace service {
class CustomerService;
}

/// The HTTP session of a world with one server: requests to its host go to the service inside the program, and there is
/// no other host.
class EmbeddedHTTPSession final : public HTTPSession
{
public:
    /// Gives the service; called at the first request, since opening its database takes time. What it throws, a
    /// LocalizedError, ends the request.
    using ServiceSource = std::function<std::shared_ptr<service::CustomerService>()>;

    EmbeddedHTTPSession(QString host, ServiceSource service);

    Task<URLResponse> data(HTTPRequest request, std::stop_token token = {}) override;

private:
    static Task<URLResponse> exchange(QString host, ServiceSource service, HTTPRequest request, std::stop_token token);

    QString m_host;
    ServiceSource m_service;
};

} // namespace tarnwik
