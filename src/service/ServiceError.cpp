#include "service/ServiceError.h"

#include "api/JSON.h"

namespace tarnwik::service {

ServiceError::ServiceError(int status, const char *code)
    : m_status(status)
{
    m_envelope.error = QString::fromLatin1(code);
}

ServiceError::ServiceError(int status, const char *code, const Account &account)
    : ServiceError(status, code)
{
    m_envelope.status = account.status;
    m_envelope.subscriptionStatus = account.subscriptionStatus;
    m_envelope.account = account;
}

ServiceError ServiceError::with(const QByteArray &header, const QByteArray &value) const
{
    ServiceError error = *this;
    error.m_headers.append({header, value});
    return error;
}

ServiceResponse ServiceError::response() const
{
    return {m_status, encode(m_envelope), m_headers};
}

} // namespace tarnwik::service
