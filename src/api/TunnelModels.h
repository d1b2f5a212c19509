#pragma once

#include "api/NodeModels.h"

namespace tarnwik {

/// The local end of a tunnel.
struct TunnelInterface
{
    QList<QString> addresses;
    QList<QString> dns;
    /// In bytes.
    qint64 mtu = 0;
    /// Never this computer's key, which stays in the keychain.
    std::optional<QString> privateKey;

    static consteval auto keyTable()
    {
        return std::tuple(key("addresses", &TunnelInterface::addresses), key("dns", &TunnelInterface::dns),
                          key("mtu", &TunnelInterface::mtu), key("privateKey", &TunnelInterface::privateKey));
    }
};

/// The node as the tunnel's one peer.
struct TunnelPeer
{
    QString publicKey;
    QString presharedKey;
    QString endpoint;
    QList<QString> allowedIps;
    /// In seconds.
    qint64 persistentKeepalive = 0;

    static consteval auto keyTable()
    {
        return std::tuple(key("publicKey", &TunnelPeer::publicKey), key("presharedKey", &TunnelPeer::presharedKey),
                          key("endpoint", &TunnelPeer::endpoint), key("allowedIps", &TunnelPeer::allowedIps),
                          key("persistentKeepalive", &TunnelPeer::persistentKeepalive));
    }
};

/// Which node a tunnel leads to, for display.
struct TunnelNode
{
    qint64 id = 0;
    QString name;
    QString region;
    QString status;
    QString runtime;

    static consteval auto keyTable()
    {
        return std::tuple(key("id", &TunnelNode::id), key("name", &TunnelNode::name),
                          key("region", &TunnelNode::region), key("status", &TunnelNode::status),
                          key("runtime", &TunnelNode::runtime));
    }
};

/// All that it takes to bring a tunnel up, but for the device's private key.
struct TunnelProfile
{
    qint64 id = 0;
    QString protocolName;
    TunnelInterface interface;
    TunnelPeer peer;
    /// Obfuscation parameters under the server's own names; the tunnel provider knows what they mean.
    QMap<QString, qint64> amneziawg;
    TunnelNode node;

    static consteval auto keyTable()
    {
        return std::tuple(key("id", &TunnelProfile::id), key("protocol", &TunnelProfile::protocolName),
                          key("interface", &TunnelProfile::interface), key("peer", &TunnelProfile::peer),
                          key("amneziawg", &TunnelProfile::amneziawg), key("node", &TunnelProfile::node));
    }
};

/// The answer to a profile's creation and to the tunnel-profile query.
struct DeviceProfileResponse
{
    DeviceProfile profile;
    std::optional<TunnelProfile> tunnelProfile;
    std::optional<QString> config;
    std::optional<bool> created;

    static consteval auto keyTable()
    {
        return std::tuple(key("profile", &DeviceProfileResponse::profile),
                          key("tunnelProfile", &DeviceProfileResponse::tunnelProfile),
                          key("config", &DeviceProfileResponse::config),
                          key("created", &DeviceProfileResponse::created));
    }
};

} // namespace tarnwik
