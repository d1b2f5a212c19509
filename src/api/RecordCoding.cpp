// The coders of all records, compiled here once.

#include "api/JSONReading.h"
#include "api/JSONWriting.h"
#include "api/Models.h"
#include "api/Requests.h"

namespace tarnwik {

#define TARNWIK_WRITTEN(Type)                                                                                          \
    template QJsonObject toJSON(const Type &);                                                                         \
    template QByteArray encode(const Type &);
#define TARNWIK_READ_AND_WRITTEN(Type)                                                                                 \
    template Type decode(const QByteArray &);                                                                          \
    TARNWIK_WRITTEN(Type)

TARNWIK_READ_AND_WRITTEN(Account)
TARNWIK_READ_AND_WRITTEN(SessionResponse)
TARNWIK_READ_AND_WRITTEN(AccountResponse)
TARNWIK_READ_AND_WRITTEN(SubscriptionResponse)
TARNWIK_READ_AND_WRITTEN(APIErrorEnvelope)
TARNWIK_READ_AND_WRITTEN(EmptyResponse)
TARNWIK_READ_AND_WRITTEN(ExitNode)
TARNWIK_READ_AND_WRITTEN(NodeListResponse)
TARNWIK_READ_AND_WRITTEN(DeviceProfile)
TARNWIK_READ_AND_WRITTEN(CustomerDevice)
TARNWIK_READ_AND_WRITTEN(DeviceListResponse)
TARNWIK_READ_AND_WRITTEN(DeviceCreateResponse)
TARNWIK_READ_AND_WRITTEN(TunnelInterface)
TARNWIK_READ_AND_WRITTEN(TunnelPeer)
TARNWIK_READ_AND_WRITTEN(TunnelNode)
TARNWIK_READ_AND_WRITTEN(TunnelProfile)
TARNWIK_READ_AND_WRITTEN(DeviceProfileResponse)
TARNWIK_WRITTEN(SignInRequest)
TARNWIK_WRITTEN(AppleTransactionRequest)
TARNWIK_WRITTEN(CreateDeviceRequest)
TARNWIK_WRITTEN(CreateProfileRequest)

} // namespace tarnwik
