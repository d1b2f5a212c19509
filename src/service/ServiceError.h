#pragma once

#include "api/Models.h"
#include "service/ServiceMessages.h"

namespace tarnwik::service {

/// The refusal of a request, which becomes the answer to it.
class ServiceError final : public std::exception
{
public:
    /// \a code is one of the error codes that docs/customer-api.md lists.
    ServiceError(int status, const char *code);

    /// The same with the account in the body, for a refusal that lies in the account's state.
    ServiceError(int status, const char *code, const Account &account);

    /// The same with one more header.
    ServiceError with(const QByteArray &header, const QByteArray &value) const;

    ServiceResponse response() const;

    const char *what() const noexcept override { return "the request is refused"; }

private:
    int m_status;
    APIErrorEnvelope m_envelope;
    QList<std::pair<QByteArray, QByteArray>> m_headers;
};

} // namespace tarnwik::service
