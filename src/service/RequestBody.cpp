#include "service/RequestBody.h"

namespace tarnwik::service {

ServiceError refusal(const DecodingError &error)
{
    if (error.path().isEmpty())
        return {400, "invalid_json"};
    return {422, QByteArray("invalid_" + error.path().toLatin1()).constData()};
}

void checkBody(const ServiceRequest &request)
{
    const QByteArray mediaType = request.contentType.split(';').first().trimmed().toLower();
    if (mediaType != "application/json")
        throw ServiceError(415, "unsupported_media_type");
    if (request.body.size() > largestBody)
        throw ServiceError(413, "payload_too_large");
}

void require(bool holds, const char *code)
{
    if (!holds)
        throw ServiceError(422, code);
}

} // namespace tarnwik::service
