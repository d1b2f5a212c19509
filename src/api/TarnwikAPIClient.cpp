#include "api/TarnwikAPIClient.h"

#include "api/JSON.h"
#include "api/Requests.h"
#include "platform/HTTPSession.h"
#include "platform/PlatformServices.h"

#include <type_traits>
#include <utility>

namespace tarnwik {

/// What tells one operation's request from another's.
struct TarnwikAPIClient::Call
{
    QString path;
    QByteArray method = "GET";
    std::optional<QByteArray> bodyData = {};

    static Call post(const QString &path, const Record auto &body) { return {path, "POST", encode(body)}; }
};

namespace {

const QString sessionPath = QStringLiteral("/api/customer/v1/session");
const QString nodesPath = QStringLiteral("/api/customer/v1/nodes");
const QString devicesPath = QStringLiteral("/api/customer/v1/devices");
const QString nodeProfilesPath = QStringLiteral("/api/customer/v1/devices/%1/node-profiles");
const QString tunnelProfilePath = QStringLiteral("/api/customer/v1/device-profiles/%1/tunnel-profile");
const QString transactionsPath = QStringLiteral("/api/customer/v1/subscription/apple/transactions");

bool isSuccess(int statusCode)
{
    return statusCode >= 200 && statusCode <= 299;
}

[[noreturn]] void throwServerError(int statusCode, const QByteArray &body)
{
    std::optional<APIErrorEnvelope> envelope;
    try {
        envelope = decode<APIErrorEnvelope>(body);
    } catch (const DecodingError &) {
        // A body that is no error envelope says nothing that a user could be told.
        throw TarnwikClientError::httpStatus(statusCode);
    }
    throw *envelope;
}

} // namespace

TarnwikAPIClient::TarnwikAPIClient(URL baseURL, std::optional<QString> token,
                                   const std::shared_ptr<HTTPSession> &urlSession)
    : m_baseURL(std::move(baseURL))
    , m_token(std::move(token))
    , m_urlSession(urlSession ? urlSession : PlatformServices::current().httpSession)
{
}

TarnwikAPIClient TarnwikAPIClient::with(URL baseURL, std::optional<QString> token) const
{
    return TarnwikAPIClient(std::move(baseURL), std::move(token), m_urlSession);
}

template<typename Answer>
Task<Answer> TarnwikAPIClient::request(TarnwikAPIClient client, Call call, std::stop_token token)
{
    HTTPRequest request{.url = client.m_baseURL.appendingPath(call.path), .method = call.method};
    request.headers.emplace_back("Accept", "application/json");
    if (client.m_token)
        request.headers.emplace_back("Authorization", "Bearer " + client.m_token->toUtf8());
    if (call.bodyData) {
        request.headers.emplace_back("Content-Type", "application/json");
        request.body = call.bodyData;
    }

    const URLResponse response = co_await client.m_urlSession->data(std::move(request), std::move(token));
    if (!response.statusCode)
        throw TarnwikClientError::invalidResponse();
    if (!isSuccess(*response.statusCode))
        throwServerError(*response.statusCode, response.body);
    if constexpr (std::is_same_v<Answer, EmptyResponse>)
        co_return EmptyResponse();
    else
        co_return decode<Answer>(response.body);
}

Task<SessionResponse> TarnwikAPIClient::signIn(QString email, QString password, QString deviceName, QString platform,
                                               std::stop_token token) const
{
    const SignInRequest body{std::move(email), std::move(password), std::move(deviceName), std::move(platform)};
    return request<SessionResponse>(*this, Call::post(sessionPath, body), std::move(token));
}

namespace {

/// One field of an answer, as an operation's result.
template<typename Answer, typename Field>
Task<Field> field(Task<Answer> task, Field Answer::*member)
{
    Answer answer = co_await task;
    co_return std::move(answer.*member);
}

} // namespace

Task<> TarnwikAPIClient::signOut(std::stop_token token) const
{
    static constexpr auto discardAnswer = [](Task<EmptyResponse> task) -> Task<> { co_await task; };
    return discardAnswer(request<EmptyResponse>(*this, {.path = sessionPath, .method = "DELETE"}, std::move(token)));
}

Task<Account> TarnwikAPIClient::account(std::stop_token token) const
{
    return field(request<AccountResponse>(*this, {.path = sessionPath}, std::move(token)), &AccountResponse::account);
}

Task<QList<ExitNode>> TarnwikAPIClient::nodes(std::stop_token token) const
{
    return field(request<NodeListResponse>(*this, {.path = nodesPath}, std::move(token)), &NodeListResponse::nodes);
}

Task<QList<CustomerDevice>> TarnwikAPIClient::devices(std::stop_token token) const
{
    return field(request<DeviceListResponse>(*this, {.path = devicesPath}, std::move(token)),
                 &DeviceListResponse::devices);
}

Task<CustomerDevice> TarnwikAPIClient::createDevice(QString name, QString platform, QString publicKey,
                                                    std::stop_token token) const
{
    const CreateDeviceRequest body{std::move(name), std::move(platform), std::move(publicKey)};
    return field(request<DeviceCreateResponse>(*this, Call::post(devicesPath, body), std::move(token)),
                 &DeviceCreateResponse::device);
}

Task<DeviceProfileResponse> TarnwikAPIClient::createProfile(qint64 deviceId, qint64 nodeId, QString protocolName,
                                                            std::stop_token token) const
{
    const CreateProfileRequest body{nodeId, std::move(protocolName)};
    return request<DeviceProfileResponse>(*this, Call::post(nodeProfilesPath.arg(deviceId), body), std::move(token));
}

Task<TunnelProfile> TarnwikAPIClient::tunnelProfile(qint64 profileId, std::stop_token token) const
{
    static constexpr auto requireProfile = [](Task<DeviceProfileResponse> task) -> Task<TunnelProfile> {
        const DeviceProfileResponse response = co_await task;
        if (!response.tunnelProfile)
            throw TarnwikClientError::missingTunnelProfile();
        co_return *response.tunnelProfile;
    };
    return requireProfile(
        request<DeviceProfileResponse>(*this, {.path = tunnelProfilePath.arg(profileId)}, std::move(token)));
}

Task<Account> TarnwikAPIClient::syncAppleTransaction(QString signedTransactionJWS, std::stop_token token) const
{
    const AppleTransactionRequest body{std::move(signedTransactionJWS)};
    return field(request<SubscriptionResponse>(*this, Call::post(transactionsPath, body), std::move(token)),
                 &SubscriptionResponse::subscription);
}

} // namespace tarnwik
