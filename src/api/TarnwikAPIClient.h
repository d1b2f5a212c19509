#pragma once

#include "api/Models.h"
#include "api/TarnwikClientError.h"
#include "async/Task.h"
#include "platform/URL.h"

#include <memory>

namespace tarnwik {

class HTTPSession;

/// The client of the service's customer REST API: a value that knows the server, the session's token and the HTTP
/// session to send through. Copies are cheap and share the HTTP session.
///
/// Every operation sends one request and never retries. It throws APIErrorEnvelope or TarnwikClientError for a status
/// other than 200 to 299, DecodingError for an answer that does not fit, and URLError when there is no answer. An
/// operation keeps what it needs: the client may go while it runs. Lives on the main thread.
class TarnwikAPIClient
{
public:
    /// \a urlSession is the process-wide one where none is given.
    explicit TarnwikAPIClient(URL baseURL, std::optional<QString> token = {},
                              const std::shared_ptr<HTTPSession> &urlSession = {});

    /// A client for another server or token on the same HTTP session.
    TarnwikAPIClient with(URL baseURL, std::optional<QString> token) const;

    const URL &baseURL() const { return m_baseURL; }
    const std::optional<QString> &token() const { return m_token; }

    /// POST /api/customer/v1/session
    Task<SessionResponse> signIn(QString email, QString password, QString deviceName, QString platform,
                                 std::stop_token token = {}) const;

    /// DELETE /api/customer/v1/session
    Task<> signOut(std::stop_token token = {}) const;

    /// GET /api/customer/v1/session
    Task<Account> account(std::stop_token token = {}) const;

    /// GET /api/customer/v1/nodes
    Task<QList<ExitNode>> nodes(std::stop_token token = {}) const;

    /// GET /api/customer/v1/devices
    Task<QList<CustomerDevice>> devices(std::stop_token token = {}) const;

    /// POST /api/customer/v1/devices. A private key in the answer is dropped.
    Task<CustomerDevice> createDevice(QString name, QString platform, QString publicKey,
                                      std::stop_token token = {}) const;

    /// POST /api/customer/v1/devices/ID/node-profiles
    Task<DeviceProfileResponse> createProfile(qint64 deviceId, qint64 nodeId,
                                              QString protocolName = QStringLiteral("amneziawg"),
                                              std::stop_token token = {}) const;

    /// GET /api/customer/v1/device-profiles/ID/tunnel-profile
    Task<TunnelProfile> tunnelProfile(qint64 profileId, std::stop_token token = {}) const;

    /// POST /api/customer/v1/subscription/apple/transactions: the account as it is afterwards.
    Task<Account> syncAppleTransaction(QString signedTransactionJWS, std::stop_token token = {}) const;

private:
    struct Call;

    /// The pipeline behind every operation. Static and by value: the client that it was called on may be gone.
    template<typename Answer>
    static Task<Answer> request(TarnwikAPIClient client, Call call, std::stop_token token);

    URL m_baseURL;
    std::optional<QString> m_token;
    std::shared_ptr<HTTPSession> m_urlSession;
};

} // namespace tarnwik
