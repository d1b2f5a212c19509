#include "api/TarnwikClientError.h"

namespace tarnwik {

TarnwikClientError::TarnwikClientError(Case errorCase, const QString &description, std::optional<int> statusCode)
    : LocalizedError(description)
    , m_case(errorCase)
    , m_statusCode(statusCode)
{
}

TarnwikClientError TarnwikClientError::httpStatus(int code)
{
    return {Case::HTTPStatus, QStringLiteral("Server returned HTTP %1.").arg(code), code};
}

TarnwikClientError TarnwikClientError::invalidResponse()
{
    return {Case::InvalidResponse, QStringLiteral("Invalid server response.")};
}

TarnwikClientError TarnwikClientError::missingTunnelProfile()
{
    return {Case::MissingTunnelProfile, QStringLiteral("Tunnel profile was missing from the server response.")};
}

TarnwikClientError TarnwikClientError::invalidServerURL()
{
    return {Case::InvalidServerURL, QStringLiteral("Enter a valid Tarnwik server URL.")};
}

} // namespace tarnwik
