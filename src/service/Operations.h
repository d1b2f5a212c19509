#pragma once

#include "service/Database.h"
#include "service/ServiceMessages.h"
#include "service/StoreRoot.h"
#include "service/Time.h"

namespace tarnwik::service {

/// A request inside a session, as the operations below get it: in a transaction, with the account's usage counted up to
/// now. They throw ServiceError.
struct SessionCall
{
    Database &database;
    const ServiceRequest &request;
    qint64 accountId;
    QByteArray token;
    /// The number in the path, for the operations whose path has one.
    qint64 pathId;
    Moment now;
    const StoreRootSource &storeRoot;
};

/// GET session: the signed-in account.
ServiceResponse readSession(const SessionCall &call);

/// DELETE session: ends this session, and no other one of the account.
ServiceResponse endSession(const SessionCall &call);

/// GET nodes.
ServiceResponse listNodes(const SessionCall &call);

/// GET devices.
ServiceResponse listDevices(const SessionCall &call);

/// POST devices: registers a device.
ServiceResponse createDevice(const SessionCall &call);

/// POST devices/ID/node-profiles: the device's profile on a node, made if need be, as its active one.
ServiceResponse createNodeProfile(const SessionCall &call);

/// GET device-profiles/ID/tunnel-profile: the same profile again, as its device's active one.
ServiceResponse readTunnelProfile(const SessionCall &call);

/// POST subscription/apple/transactions: what the app store sold, if its signature is good.
ServiceResponse syncAppleTransaction(const SessionCall &call);

} // namespace tarnwik::service
