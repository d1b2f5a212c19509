#include "api/JSON.h"
#include "service/AddressPool.h"
#include "service/Seed.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace tarnwik::service {
namespace {

QByteArray exampleSeed()
{
    QFile file(QStringLiteral(TARNWIK_SEED_FILE));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

/// The example with its first \a from replaced by \a to, and what is said about it.
std::string refusal(const QByteArray &from, const QByteArray &to)
{
    QByteArray json = exampleSeed();
    const qsizetype at = json.indexOf(from);
    EXPECT_GE(at, 0) << from.constData();
    json.replace(at, from.size(), to);
    try {
        parseSeed(json);
    } catch (const SeedError &error) {
        return error.localizedDescription().toStdString();
    }
    return "accepted";
}

TEST(ServiceSeed, theBuiltInOneIsTheExampleFile)
{
    EXPECT_EQ(toJSON(builtInSeed()), toJSON(parseSeed(exampleSeed())));
}

TEST(ServiceSeed, theBuiltInOneHasTheDemoAccountAndFiveNodesOneOfThemOffline)
{
    const Seed seed = builtInSeed();
    ASSERT_EQ(seed.accounts.size(), 1);
    EXPECT_EQ(seed.accounts[0].account.email, QStringLiteral("demo@tarnwik.example"));
    EXPECT_EQ(seed.accounts[0].password, QStringLiteral("demo"));
    ASSERT_EQ(seed.nodes.size(), 5);
    EXPECT_EQ(std::count_if(seed.nodes.begin(), seed.nodes.end(),
                            [](const SeedNode &node) { return node.node.status == QLatin1String("offline"); }),
              1);
}

TEST(ServiceSeed, theBuiltInOneSellsTheProductsOfASeedThatNamesNone)
{
    Seed named;
    named.subscriptionProducts = builtInSeed().subscriptionProducts;
    Seed assumed;
    assumed.subscriptionProducts = defaultSubscriptionProducts();
    EXPECT_EQ(toJSON(named), toJSON(assumed));
    EXPECT_EQ(assumed.subscriptionProducts->size(), 2);
}

TEST(ServiceSeed, mayBeEmpty)
{
    EXPECT_EQ(toJSON(parseSeed(R"({"accounts":[],"nodes":[]})")), toJSON(Seed()));
}

TEST(ServiceSeed, whatIsNoJSONObjectIsRefused)
{
    for (const char *json : {"", "{", "[]", "{}{}"}) {
        try {
            parseSeed(json);
            ADD_FAILURE() << json;
        } catch (const SeedError &error) {
            EXPECT_EQ(error.localizedDescription(), QStringLiteral("The seed is refused: it is not a JSON object."));
        }
    }
}

TEST(ServiceSeed, aMissingNullOrMistypedValueIsNamedByItsPath)
{
    EXPECT_EQ(refusal(R"("mtu": 1420,)", ""), "The seed is refused: nodes[0].tunnel.mtu is missing.");
    EXPECT_EQ(refusal(R"("mtu": 1420)", R"("mtu": null)"), "The seed is refused: nodes[0].tunnel.mtu is null.");
    EXPECT_EQ(refusal(R"("mtu": 1420)", R"("mtu": "1420")"),
              "The seed is refused: nodes[0].tunnel.mtu is of the wrong type.");
    EXPECT_EQ(refusal(R"("mtu": 1420)", R"("mtu": 1420.5)"),
              "The seed is refused: nodes[0].tunnel.mtu is no whole number of 64 bits.");
}

TEST(ServiceSeed, anUnknownKeyIsNamedByItsPath)
{
    EXPECT_EQ(refusal(R"("cycle_used_bytes")", R"("cycle_used_byte")"),
              "The seed is refused: accounts[0].account.cycle_used_byte is not a known key.");
    EXPECT_EQ(refusal(R"("usage_bytes_per_second")", R"("usage")"), "The seed is refused: usage is not a known key.");
}

TEST(ServiceSeed, valuesThatCannotBeAreNamedByTheirPath)
{
    EXPECT_EQ(refusal("demo@tarnwik.example", "demo"),
              "The seed is refused: accounts[0].account.email is no e-mail address.");
    EXPECT_EQ(refusal(R"("quota_bytes": 2)", R"("quota_bytes": -2)"),
              "The seed is refused: accounts[0].account.quota_bytes must not be negative.");
    EXPECT_EQ(refusal(R"("password": "demo",)", ""),
              "The seed is refused: accounts[0] must have either a password or a password_hash.");
    EXPECT_EQ(refusal(R"("password": "demo")", R"("password_hash": "demo")"),
              "The seed is refused: accounts[0].password_hash is no Argon2id hash of libsodium.");
    EXPECT_EQ(refusal(R"("id": 2)", R"("id": 1)"), "The seed is refused: nodes[1].node.id appears twice.");
    EXPECT_EQ(refusal("192.0.2.11:51820", "192.0.2.11"),
              "The seed is refused: nodes[0].tunnel.endpoint is no host:port.");
    EXPECT_EQ(refusal(R"("10.64.0.1")", R"("dns")"), "The seed is refused: nodes[0].tunnel.dns[0] is no IP address.");
    EXPECT_EQ(refusal(R"("mtu": 1420)", R"("mtu": 575)"),
              "The seed is refused: nodes[0].tunnel.mtu must be from 576 to 65535.");
    EXPECT_EQ(refusal("10.64.0.0/16", "10.64.0.1/16"),
              "The seed is refused: nodes[0].tunnel.ipv4_pool is no IPv4 network such as 10.64.1.0/24.");
    EXPECT_EQ(refusal("fd00:64::/64", "10.0.0.0/8"),
              "The seed is refused: nodes[0].tunnel.ipv6_pool is no IPv6 network such as fd00:64:1::/64.");
    EXPECT_EQ(refusal(R"("has_ipv6": true)", R"("has_ipv6": false)"),
              "The seed is refused: nodes[0].tunnel.ipv6_pool must be there if the node has_ipv6, and only then.");
    EXPECT_EQ(refusal("0.0.0.0/0", "0.0.0.0"),
              "The seed is refused: nodes[0].tunnel.allowed_ips[0] is no network such as 0.0.0.0/0.");
    EXPECT_EQ(refusal(R"("jc": 4)", R"("jc": -4)"),
              "The seed is refused: nodes[0].tunnel.amneziawg must hold numbers from 0 to 4294967295.");
    EXPECT_EQ(refusal("tarnwik.sub.monthly", ""),
              "The seed is refused: subscription_products[0].product_id must be 1 to 128 printable characters.");
    EXPECT_EQ(refusal("tarnwik.sub.yearly", "tarnwik.sub.monthly"),
              "The seed is refused: subscription_products[1].product_id appears twice.");
    EXPECT_EQ(refusal(R"("plan_gb": 500)", R"("plan_gb": 0)"),
              "The seed is refused: subscription_products[0].plan_gb must be from 1 to 1000000000.");
    EXPECT_EQ(refusal(R"("plan_gb": 500)", R"("plan_gb": 1000000001)"),
              "The seed is refused: subscription_products[0].plan_gb must be from 1 to 1000000000.");
    EXPECT_EQ(refusal(R"("monthly_price_cents": 1499)", R"("monthly_price_cents": -1)"),
              "The seed is refused: subscription_products[0].monthly_price_cents must not be negative.");
    EXPECT_EQ(refusal(R"("usage_bytes_per_second": 1)", R"("usage_bytes_per_second": -1)"),
              "The seed is refused: usage_bytes_per_second must be from 0 to 1000000000000.");
}

TEST(ServiceSeed, aFileThatCannotBeReadOrUsedIsNamed)
{
    EXPECT_THROW(readSeedFile(QStringLiteral("/nonexistent/seed.json")), SeedError);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("seed.json"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("{}");
    file.close();
    try {
        readSeedFile(path);
        ADD_FAILURE();
    } catch (const SeedError &error) {
        EXPECT_EQ(error.localizedDescription(), path + QStringLiteral(": The seed is refused: accounts is missing."));
    }
}

TEST(ServiceAddressPool, countsItsHosts)
{
    const auto last = [](const char *text) { return AddressPool::fromString(QLatin1String(text)).value().lastHost(); };
    EXPECT_EQ(last("10.64.0.0/24"), 254);
    EXPECT_EQ(last("10.64.0.0/30"), 2);
    EXPECT_EQ(last("fd00::/120"), 255);
    EXPECT_EQ(last("fd00::/64"), std::numeric_limits<qint64>::max());
}

TEST(ServiceAddressPool, namesTheAddressOfAHost)
{
    const auto ipv4 = AddressPool::fromString(QStringLiteral("10.64.0.0/16")).value();
    EXPECT_EQ(ipv4.address(2), QStringLiteral("10.64.0.2"));
    EXPECT_EQ(ipv4.address(258), QStringLiteral("10.64.1.2"));
    const auto ipv6 = AddressPool::fromString(QStringLiteral("fd00:64::/64")).value();
    EXPECT_EQ(ipv6.address(2), QStringLiteral("fd00:64::2"));
    EXPECT_EQ(ipv6.address(0x12345), QStringLiteral("fd00:64::1:2345"));
}

TEST(ServiceAddressPool, takesNetworksOfASensibleSizeOnly)
{
    for (const char *text : {"", "10.64.0.0", "10.64.0.1/24", "10.64.0.0/31", "10.64/16", "10.64.0.0/33", "fd00::/63",
                             "fd00::/127", "fd00::1/64", "FD00::/64", "pool", "10.64.0.0/255.255.0.0"}) {
        EXPECT_FALSE(AddressPool::fromString(QLatin1String(text))) << text;
    }
}

} // namespace
} // namespace tarnwik::service
