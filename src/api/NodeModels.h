#pragma once

#include "api/KeyTable.h"

#include <QList>
#include <QMap>
#include <QString>

#include <optional>

namespace tarnwik {

/// One exit node of the service.
struct ExitNode
{
    qint64 id = 0;
    QString name;
    QString provider;
    QString region;
    /// "online" for a node that serves; other words are the server's own.
    QString status;
    QString runtime;
    QString endpoint;
    bool awgEnabled = false;
    bool hasIpv6 = false;

    static consteval auto keyTable()
    {
        return std::tuple(key("id", &ExitNode::id), key("name", &ExitNode::name), key("provider", &ExitNode::provider),
                          key("region", &ExitNode::region), key("status", &ExitNode::status),
                          key("runtime", &ExitNode::runtime), key("endpoint", &ExitNode::endpoint),
                          key("awgEnabled", &ExitNode::awgEnabled), key("hasIpv6", &ExitNode::hasIpv6));
    }
};

/// The exit nodes, in the server's order.
struct NodeListResponse
{
    QList<ExitNode> nodes;

    static consteval auto keyTable() { return std::tuple(key("nodes", &NodeListResponse::nodes)); }
};

/// A device's profile on one node.
struct DeviceProfile
{
    qint64 id = 0;
    qint64 nodeId = 0;
    QString nodeName;
    QString region;
    QString protocolName;
    QString assignedIp;
    /// Empty where the device has no IPv6 address.
    QString assignedIpv6;
    bool enabled = false;
    std::optional<QString> lastHandshakeAt;
    qint64 rxBytes = 0;
    qint64 txBytes = 0;

    static consteval auto keyTable()
    {
        return std::tuple(key("id", &DeviceProfile::id), key("nodeId", &DeviceProfile::nodeId),
                          key("nodeName", &DeviceProfile::nodeName), key("region", &DeviceProfile::region),
                          key("protocol", &DeviceProfile::protocolName), key("assignedIp", &DeviceProfile::assignedIp),
                          key("assignedIpv6", &DeviceProfile::assignedIpv6), key("enabled", &DeviceProfile::enabled),
                          key("lastHandshakeAt", &DeviceProfile::lastHandshakeAt),
                          key("rxBytes", &DeviceProfile::rxBytes), key("txBytes", &DeviceProfile::txBytes));
    }
};

/// One device registered to the account.
struct CustomerDevice
{
    qint64 id = 0;
    QString name;
    QString platform;
    bool enabled = false;
    /// The device's X25519 public key in base64.
    QString publicKey;
    std::optional<qint64> lastSelectedNodeId;
    QList<DeviceProfile> profiles;

    static consteval auto keyTable()
    {
        return std::tuple(key("id", &CustomerDevice::id), key("name", &CustomerDevice::name),
                          key("platform", &CustomerDevice::platform), key("enabled", &CustomerDevice::enabled),
                          key("publicKey", &CustomerDevice::publicKey),
                          key("lastSelectedNodeId", &CustomerDevice::lastSelectedNodeId),
                          key("profiles", &CustomerDevice::profiles));
    }
};

/// The account's devices, in the server's order.
struct DeviceListResponse
{
    QList<CustomerDevice> devices;

    static consteval auto keyTable() { return std::tuple(key("devices", &DeviceListResponse::devices)); }
};

/// The answer to a device's creation.
struct DeviceCreateResponse
{
    CustomerDevice device;
    /// Read, and never used: a device's private key is made on this computer only.
    std::optional<QString> privateKey;

    static consteval auto keyTable()
    {
        return std::tuple(key("device", &DeviceCreateResponse::device),
                          key("privateKey", &DeviceCreateResponse::privateKey));
    }
};

} // namespace tarnwik
