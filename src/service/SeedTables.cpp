#include "service/SeedTables.h"

#include "api/JSON.h"
#include "service/Seed.h"
#include "service/SubscriptionTables.h"

namespace tarnwik::service {

namespace {

void insertAccount(Database &database, const SeedAccount &entry, PasswordCost cost)
{
    const Account &account = entry.account;
    database.run(
        "INSERT INTO accounts VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)", account.id, account.email.toLower(),
        entry.passwordHash ? *entry.passwordHash : hashPassword(*entry.password, cost), account.email, account.role,
        account.status, account.subscriptionStatus, account.serviceEnabled, account.planGb, account.quotaBytes,
        account.usedBytes, account.cycleUsedBytes, account.cycleQuotaBytes, account.monthlyPriceCents,
        account.billingProvider, account.billingPortalUrl, account.billingAccountToken,
        account.subscriptionCurrentPeriodStart, account.subscriptionCurrentPeriodEnd, account.serviceBlockReason);
}

void insertNode(Database &database, const SeedNode &entry, qsizetype place)
{
    const ExitNode &node = entry.node;
    database.run("INSERT INTO nodes VALUES (?,?,?,?,?,?,?,?,?,?,?)", node.id, place, node.name, node.provider,
                 node.region, node.status, node.runtime, node.endpoint, node.awgEnabled, node.hasIpv6,
                 QString::fromUtf8(encode(entry.tunnel)));
}

} // namespace

void insertSeed(Database &database, const Seed &seed, PasswordCost cost)
{
    database.run("INSERT INTO settings VALUES ('usage_bytes_per_second', ?)",
                 seed.usageBytesPerSecond.value_or(defaultUsageBytesPerSecond));
    // What a sign-in for an unknown address is checked against, so that it takes as long as one for a known address.
    database.run("INSERT INTO settings VALUES ('decoy_password_hash', ?)",
                 hashPassword(QString::fromLatin1(makeToken()), cost));
    insertProducts(database, seed.subscriptionProducts.value_or(defaultSubscriptionProducts()));
    for (const SeedAccount &entry : seed.accounts)
        insertAccount(database, entry, cost);
    for (qsizetype index = 0; index < seed.nodes.size(); ++index)
        insertNode(database, seed.nodes[index], index);
}

} // namespace tarnwik::service
