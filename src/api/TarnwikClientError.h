#pragma once

#include "platform/LocalizedError.h"

#include <optional>

namespace tarnwik {

/// The API client's own errors.
class TarnwikClientError final : public LocalizedError
{
public:
    enum class Case {
        /// The server answered with a bad status and no error body.
        HTTPStatus,
        /// What answered was not HTTP.
        InvalidResponse,
        /// An answer came without the tunnel profile that was asked for.
        MissingTunnelProfile,
        /// The text entered as the server's address is no URL. Raised by the application model only.
        InvalidServerURL,
    };

    static TarnwikClientError httpStatus(int code);
    static TarnwikClientError invalidResponse();
    static TarnwikClientError missingTunnelProfile();
    static TarnwikClientError invalidServerURL();

    Case errorCase() const noexcept { return m_case; }

    /// The status of HTTPStatus; nothing in the other cases.
    std::optional<int> statusCode() const noexcept { return m_statusCode; }

private:
    TarnwikClientError(Case errorCase, const QString &description, std::optional<int> statusCode = {});

    Case m_case;
    std::optional<int> m_statusCode;
};

} // namespace tarnwik
