#include "service/Operations.h"

#include "api/JSON.h"
#include "service/AccountTables.h"
#include "service/DeviceTables.h"
#include "service/NodeTables.h"
#include "service/Quota.h"
#include "service/RequestBody.h"
#include "service/Secrets.h"
#include "service/TunnelProfiles.h"
#include "service/Validation.h"

namespace tarnwik::service {

namespace {

constexpr qint64 mostDevices = 10;

/// Throws unless the account may have tunnels.
void checkService(const Account &account)
{
    if (!account.serviceEnabled)
        throw ServiceError(403, "service_blocked", account);
    if (remainingBytes(account) == 0)
        throw ServiceError(403, "quota_exceeded", account);
}

/// Throws unless tunnels can lead to \a node.
void checkNode(const ExitNode &node)
{
    if (node.status != QLatin1String("online"))
        throw ServiceError(409, "node_offline");
    if (!node.awgEnabled)
        throw ServiceError(409, "protocol_not_supported");
}

template<typename T>
T found(std::optional<T> value, const char *code)
{
    if (!value)
        throw ServiceError(404, code);
    return *value;
}

/// Makes a profile its device's active one and answers with it.
ServiceResponse activated(const SessionCall &call, qint64 deviceId, qint64 profileId, const SeedNode &node,
                          std::optional<bool> created)
{
    activateProfile(call.database, deviceId, profileId);
    selectNode(call.database, deviceId, node.node.id);
    const StoredProfile stored = findProfile(call.database, call.accountId, profileId).value();
    const TunnelProfile tunnel = makeTunnelProfile(stored, node);
    const DeviceProfileResponse response{stored.profile, tunnel, configurationText(tunnel), created};
    return {created.value_or(false) ? 201 : 200, encode(response), {}};
}

} // namespace

ServiceResponse listDevices(const SessionCall &call)
{
    return {200, encode(DeviceListResponse{readDevices(call.database, call.accountId)}), {}};
}

ServiceResponse createDevice(const SessionCall &call)
{
    const auto request = readBody<CreateDeviceRequest>(call.request);
    require(isDisplayName(request.name), "invalid_name");
    require(isPlatform(request.platform), "invalid_platform");
    require(isUsablePublicKey(request.publicKey), "invalid_public_key");

    if (isPublicKeyTaken(call.database, request.publicKey))
        throw ServiceError(409, "public_key_already_registered");
    if (countDevices(call.database, call.accountId) >= mostDevices)
        throw ServiceError(409, "device_limit_reached");
    const qint64 id = insertDevice(call.database, call.accountId, request);
    const CustomerDevice device = findDevice(call.database, call.accountId, id).value();
    return {201, encode(DeviceCreateResponse{device, std::nullopt}), {}};
}

ServiceResponse createNodeProfile(const SessionCall &call)
{
    const auto request = readBody<CreateProfileRequest>(call.request);
    require(request.protocolName == QLatin1String("amneziawg"), "invalid_protocol");

    const auto device = found(findDevice(call.database, call.accountId, call.pathId), "device_not_found");
    if (!device.enabled)
        throw ServiceError(403, "device_disabled");
    checkService(readAccount(call.database, call.accountId));
    const auto node = found(findNode(call.database, request.nodeId), "node_not_found");
    checkNode(node.node);

    auto profileId = findProfileOnNode(call.database, device.id, node.node.id);
    const bool isNew = !profileId;
    if (isNew)
        profileId = insertProfile(call.database, device.id, node, request.protocolName, call.now);
    if (!profileId)
        throw ServiceError(409, "address_pool_exhausted");
    return activated(call, device.id, *profileId, node, isNew);
}

ServiceResponse readTunnelProfile(const SessionCall &call)
{
    const auto deviceId = found(findProfileOwner(call.database, call.accountId, call.pathId), "profile_not_found");
    if (!findDevice(call.database, call.accountId, deviceId).value().enabled)
        throw ServiceError(403, "device_disabled");
    checkService(readAccount(call.database, call.accountId));
    const auto stored = findProfile(call.database, call.accountId, call.pathId).value();
    const auto node = findNode(call.database, stored.profile.nodeId).value();
    checkNode(node.node);
    return activated(call, deviceId, call.pathId, node, std::nullopt);
}

} // namespace tarnwik::service
