#pragma once

#include "api/JSON.h"
#include "service/ServiceError.h"

namespace tarnwik::service {

/// The refusal of a body that does not fit its record: 400 `invalid_json` for what is no JSON object, or 422
/// `invalid_FIELD` with the field's wire key.
ServiceError refusal(const DecodingError &error);

/// Throws 415 `unsupported_media_type` unless \a request says that its body is JSON, and 413 `payload_too_large` if the
/// body is too long.
void checkBody(const ServiceRequest &request);

/// Throws 422 with \a code unless \a holds.
void require(bool holds, const char *code);

/// The record in the body of \a request. Throws ServiceError.
template<Record T>
T readBody(const ServiceRequest &request)
{
    checkBody(request);
    try {
        return decode<T>(request.body);
    } catch (const DecodingError &error) {
        throw refusal(error);
    }
}

} // namespace tarnwik::service
