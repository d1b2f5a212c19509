#include "service/SeedRules.h"

#include "service/AddressPool.h"
#include "service/Secrets.h"
#include "service/Seed.h"
#include "service/Validation.h"

#include <QHostAddress>
#include <QSet>

namespace tarnwik::service {

namespace {

/// A place in the seed, which refuses what does not hold.
class Place
{
public:
    explicit Place(const QString &path)
        : m_path(path)
    {
    }

    Place operator/(const char *key) const { return Place(m_path + u'.' + QLatin1String(key)); }
    Place operator[](qsizetype index) const { return Place(QStringLiteral("%1[%2]").arg(m_path).arg(index)); }

    /// Throws unless \a holds; \a rule completes a sentence that begins with the path.
    void require(bool holds, const char *rule) const
    {
        if (!holds) {
            throw SeedError(QStringLiteral("The seed is refused: %1 %2.").arg(m_path, QString::fromUtf8(rule)));
        }
    }

    void requireNotNegative(qint64 value) const { require(value >= 0, "must not be negative"); }
    void requireName(const QString &value) const
    {
        require(isDisplayName(value), "must be 1 to 128 printable characters");
    }

private:
    QString m_path;
};

bool isNetwork(const QString &text)
{
    return text.contains(u'/') && !QHostAddress::parseSubnet(text).first.isNull();
}

void checkAccount(const SeedAccount &entry, const Place &place)
{
    const Account &account = entry.account;
    const Place inner = place / "account";
    (inner / "id").require(account.id > 0, "must be 1 or more");
    (inner / "email").require(isEmailAddress(account.email), "is no e-mail address");
    (inner / "role").requireName(account.role);
    (inner / "status").requireName(account.status);
    (inner / "plan_gb").requireNotNegative(account.planGb);
    (inner / "quota_bytes").requireNotNegative(account.quotaBytes);
    (inner / "used_bytes").requireNotNegative(account.usedBytes);
    (inner / "cycle_used_bytes").requireNotNegative(account.cycleUsedBytes.value_or(0));
    (inner / "cycle_quota_bytes").requireNotNegative(account.cycleQuotaBytes.value_or(0));
    (inner / "monthly_price_cents").requireNotNegative(account.monthlyPriceCents);

    place.require(entry.password.has_value() != entry.passwordHash.has_value(),
                  "must have either a password or a password_hash");
    (place / "password").require(!entry.password || isPassword(*entry.password), "must have 1 to 1024 bytes");
    (place / "password_hash")
        .require(!entry.passwordHash || isPasswordHash(*entry.passwordHash), "is no Argon2id hash of libsodium");
}

void checkPools(const SeedNode &entry, const Place &place)
{
    const auto ipv4 = AddressPool::fromString(entry.tunnel.ipv4Pool);
    (place / "ipv4_pool").require(ipv4 && !ipv4->isIpv6(), "is no IPv4 network such as 10.64.1.0/24");
    (place / "ipv6_pool")
        .require(entry.tunnel.ipv6Pool.has_value() == entry.node.hasIpv6,
                 "must be there if the node has_ipv6, and only then");
    if (entry.tunnel.ipv6Pool) {
        const auto ipv6 = AddressPool::fromString(*entry.tunnel.ipv6Pool);
        (place / "ipv6_pool").require(ipv6 && ipv6->isIpv6(), "is no IPv6 network such as fd00:64:1::/64");
    }
}

void checkTunnel(const SeedNode &entry, const Place &place)
{
    constexpr qint64 leastMtu = 576;
    constexpr qint64 most16Bits = 65535;
    constexpr qint64 most32Bits = 4294967295;

    const NodeTunnel &tunnel = entry.tunnel;
    (place / "public_key").require(isUsablePublicKey(tunnel.publicKey), "is no X25519 public key in base64");
    (place / "endpoint").require(isEndpoint(tunnel.endpoint), "is no host:port");
    (place / "mtu").require(tunnel.mtu >= leastMtu && tunnel.mtu <= most16Bits, "must be from 576 to 65535");
    (place / "persistent_keepalive")
        .require(tunnel.persistentKeepalive >= 0 && tunnel.persistentKeepalive <= most16Bits,
                 "must be from 0 to 65535");
    for (qsizetype index = 0; index < tunnel.dns.size(); ++index) {
        (place / "dns")[index].require(!QHostAddress(tunnel.dns[index]).isNull(), "is no IP address");
    }
    (place / "allowed_ips").require(!tunnel.allowedIps.isEmpty(), "must not be empty");
    for (qsizetype index = 0; index < tunnel.allowedIps.size(); ++index)
        (place / "allowed_ips")[index].require(isNetwork(tunnel.allowedIps[index]), "is no network such as 0.0.0.0/0");
    for (const qint64 value : tunnel.amneziawg)
        (place / "amneziawg").require(value >= 0 && value <= most32Bits, "must hold numbers from 0 to 4294967295");
    checkPools(entry, place);
}

void checkNode(const SeedNode &entry, const Place &place)
{
    const ExitNode &node = entry.node;
    const Place inner = place / "node";
    (inner / "id").require(node.id > 0, "must be 1 or more");
    (inner / "name").requireName(node.name);
    (inner / "provider").requireName(node.provider);
    (inner / "region").requireName(node.region);
    (inner / "status").requireName(node.status);
    (inner / "runtime").requireName(node.runtime);
    (inner / "endpoint").requireName(node.endpoint);
    checkTunnel(entry, place / "tunnel");
}

void checkProduct(const SubscriptionProduct &product, const Place &place)
{
    constexpr qint64 largest = 1'000'000'000;
    (place / "product_id").requireName(product.productId);
    (place / "plan_gb").require(product.planGb > 0 && product.planGb <= largest, "must be from 1 to 1000000000");
    (place / "monthly_price_cents").requireNotNegative(product.monthlyPriceCents);
}

/// Requires that \a value was not in \a seen, where it is then.
template<typename T>
void requireNew(QSet<T> &seen, const T &value, const Place &place)
{
    place.require(!seen.contains(value), "appears twice");
    seen.insert(value);
}

} // namespace

void checkSeed(const Seed &seed)
{
    constexpr qint64 fastest = 1'000'000'000'000;
    const qint64 rate = seed.usageBytesPerSecond.value_or(defaultUsageBytesPerSecond);
    Place(QStringLiteral("usage_bytes_per_second"))
        .require(rate >= 0 && rate <= fastest, "must be from 0 to 1000000000000");

    QSet<QString> productIds;
    const Place products(QStringLiteral("subscription_products"));
    const auto sold = seed.subscriptionProducts.value_or(QList<SubscriptionProduct>());
    for (qsizetype index = 0; index < sold.size(); ++index) {
        checkProduct(sold[index], products[index]);
        requireNew(productIds, sold[index].productId, products[index] / "product_id");
    }
    QSet<qint64> accountIds;
    QSet<QString> emails;
    const Place accounts(QStringLiteral("accounts"));
    for (qsizetype index = 0; index < seed.accounts.size(); ++index) {
        const Account &account = seed.accounts[index].account;
        checkAccount(seed.accounts[index], accounts[index]);
        requireNew(accountIds, account.id, accounts[index] / "account" / "id");
        requireNew(emails, account.email.toLower(), accounts[index] / "account" / "email");
    }
    QSet<qint64> nodeIds;
    const Place nodes(QStringLiteral("nodes"));
    for (qsizetype index = 0; index < seed.nodes.size(); ++index) {
        checkNode(seed.nodes[index], nodes[index]);
        requireNew(nodeIds, seed.nodes[index].node.id, nodes[index] / "node" / "id");
    }
}

} // namespace tarnwik::service
