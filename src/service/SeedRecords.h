#pragma once

#include "api/Models.h"

namespace tarnwik::service {

/// The far end of the tunnels to one node, as the seed names it and the database keeps it.
struct NodeTunnel
{
    QString publicKey;
    /// Where the node listens for tunnels: "192.0.2.1:51820", "[2001:db8::1]:51820" or "host.example:51820".
    QString endpoint;
    QList<QString> dns;
    /// In bytes.
    qint64 mtu = 0;
    QString ipv4Pool;
    /// Required for a node that has IPv6.
    std::optional<QString> ipv6Pool;
    QList<QString> allowedIps;
    /// In seconds; 0 sends none.
    qint64 persistentKeepalive = 0;
    /// Whether each profile gets a random pre-shared key. Otherwise profiles have an empty one.
    bool presharedKeys = false;
    QMap<QString, qint64> amneziawg;

    static consteval auto keyTable()
    {
        return std::tuple(key("publicKey", &NodeTunnel::publicKey), key("endpoint", &NodeTunnel::endpoint),
                          key("dns", &NodeTunnel::dns), key("mtu", &NodeTunnel::mtu),
                          key("ipv4Pool", &NodeTunnel::ipv4Pool), key("ipv6Pool", &NodeTunnel::ipv6Pool),
                          key("allowedIps", &NodeTunnel::allowedIps),
                          key("persistentKeepalive", &NodeTunnel::persistentKeepalive),
                          key("presharedKeys", &NodeTunnel::presharedKeys), key("amneziawg", &NodeTunnel::amneziawg));
    }
};

/// One exit node with its tunnels.
struct SeedNode
{
    ExitNode node;
    NodeTunnel tunnel;

    static consteval auto keyTable()
    {
        return std::tuple(key("node", &SeedNode::node), key("tunnel", &SeedNode::tunnel));
    }
};

/// One invited account with either its password or the hash of it.
struct SeedAccount
{
    Account account;
    std::optional<QString> password;
    std::optional<QString> passwordHash;

    static consteval auto keyTable()
    {
        return std::tuple(key("account", &SeedAccount::account), key("password", &SeedAccount::password),
                          key("passwordHash", &SeedAccount::passwordHash));
    }
};

/// What the app store sells under one product identifier, and what it grants.
struct SubscriptionProduct
{
    QString productId;
    /// The quota of one period.
    qint64 planGb = 0;
    /// What the account shows as its price, whatever the store charged.
    qint64 monthlyPriceCents = 0;

    static consteval auto keyTable()
    {
        return std::tuple(key("productId", &SubscriptionProduct::productId),
                          key("planGb", &SubscriptionProduct::planGb),
                          key("monthlyPriceCents", &SubscriptionProduct::monthlyPriceCents));
    }
};

/// What an empty database starts with.
struct Seed
{
    /// How many bytes a second each active profile is taken to carry.
    std::optional<qint64> usageBytesPerSecond;
    /// Absent for defaultSubscriptionProducts().
    std::optional<QList<SubscriptionProduct>> subscriptionProducts;
    QList<SeedAccount> accounts;
    QList<SeedNode> nodes;

    static consteval auto keyTable()
    {
        return std::tuple(key("usageBytesPerSecond", &Seed::usageBytesPerSecond),
                          key("subscriptionProducts", &Seed::subscriptionProducts), key("accounts", &Seed::accounts),
                          key("nodes", &Seed::nodes));
    }
};

} // namespace tarnwik::service
