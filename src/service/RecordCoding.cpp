// The coders of the records that only the service reads, compiled here once.

#include "api/JSONReading.h"
#include "api/JSONWriting.h"
#include "api/Requests.h"
#include "service/SeedRecords.h"
#include "service/TransactionRequest.h"

namespace tarnwik {

template SignInRequest decode(const QByteArray &);
template CreateDeviceRequest decode(const QByteArray &);
template CreateProfileRequest decode(const QByteArray &);
template service::TransactionRequest decode(const QByteArray &);

template service::Seed decode(const QByteArray &);
template QJsonObject toJSON(const service::Seed &);
template service::NodeTunnel decode(const QByteArray &);
template QByteArray encode(const service::NodeTunnel &);

} // namespace tarnwik
