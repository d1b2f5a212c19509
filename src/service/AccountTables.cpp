#include "service/AccountTables.h"

#include "service/Secrets.h"

namespace tarnwik::service {

namespace {

/// How many wrong passwords within the window shut an account's door: enough for any honest person.
constexpr qint64 mostFailures = 10;
constexpr auto failureWindow = std::chrono::minutes(5);

/// Failures are kept under a hash: people type passwords into the address field.
QByteArray loginHash(const QString &email)
{
    return fingerprint(email.toLower().toUtf8());
}

} // namespace

Login findLogin(Database &database, const QString &email)
{
    Statement account = database.prepare("SELECT id, password_hash FROM accounts WHERE login = ?", email.toLower());
    if (account.step())
        return {account.integer(0), account.text(1)};
    Statement decoy = database.prepare("SELECT value FROM settings WHERE name = 'decoy_password_hash'");
    decoy.step();
    return {std::nullopt, decoy.text(0)};
}

Account readAccount(Database &database, qint64 id)
{
    Statement row = database.prepare(
        "SELECT id, email, role, status, subscription_status, service_enabled, plan_gb, quota_bytes, used_bytes,"
        " cycle_used_bytes, cycle_quota_bytes, monthly_price_cents, billing_provider, billing_portal_url,"
        " billing_account_token, subscription_current_period_start, subscription_current_period_end,"
        " service_block_reason FROM accounts WHERE id = ?",
        id);
    row.step();
    Account account;
    account.id = row.integer(0);
    account.email = row.text(1);
    account.role = row.text(2);
    account.status = row.text(3);
    account.subscriptionStatus = row.text(4);
    account.serviceEnabled = row.boolean(5);
    account.planGb = row.integer(6);
    account.quotaBytes = row.integer(7);
    account.usedBytes = row.integer(8);
    account.cycleUsedBytes = row.optionalInteger(9);
    account.cycleQuotaBytes = row.optionalInteger(10);
    account.monthlyPriceCents = row.integer(11);
    account.billingProvider = row.text(12);
    account.billingPortalUrl = row.text(13);
    account.billingAccountToken = row.optionalText(14);
    account.subscriptionCurrentPeriodStart = row.optionalText(15);
    account.subscriptionCurrentPeriodEnd = row.optionalText(16);
    account.serviceBlockReason = row.optionalText(17);
    return account;
}

void insertSession(Database &database, qint64 accountId, const QByteArray &token, const QString &deviceName,
                   const QString &platform, Moment now)
{
    database.run("INSERT INTO sessions VALUES (?,?,?,?,?)", fingerprint(token), accountId, deviceName, platform,
                 toMilliseconds(now));
}

std::optional<qint64> findSession(Database &database, const QByteArray &token)
{
    Statement row = database.prepare("SELECT account_id FROM sessions WHERE token_hash = ?", fingerprint(token));
    return row.step() ? std::optional(row.integer(0)) : std::nullopt;
}

void removeSession(Database &database, const QByteArray &token)
{
    database.run("DELETE FROM sessions WHERE token_hash = ?", fingerprint(token));
}

std::optional<std::chrono::seconds> signInDelay(Database &database, const QString &email, Moment now)
{
    Statement row = database.prepare("SELECT count(*), min(failed_at) FROM failed_sign_ins"
                                     " WHERE login_hash = ? AND failed_at > ?",
                                     loginHash(email), toMilliseconds(now - failureWindow));
    row.step();
    if (row.integer(0) < mostFailures)
        return std::nullopt;
    const Moment oldest{std::chrono::milliseconds(row.integer(1))};
    return std::chrono::ceil<std::chrono::seconds>(oldest + failureWindow - now);
}

void recordFailedSignIn(Database &database, const QString &email, Moment now)
{
    database.run("DELETE FROM failed_sign_ins WHERE failed_at <= ?", toMilliseconds(now - failureWindow));
    database.run("INSERT INTO failed_sign_ins VALUES (?,?)", loginHash(email), toMilliseconds(now));
}

void forgetFailedSignIns(Database &database, const QString &email)
{
    database.run("DELETE FROM failed_sign_ins WHERE login_hash = ?", loginHash(email));
}

} // namespace tarnwik::service
