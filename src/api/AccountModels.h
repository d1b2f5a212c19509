#pragma once

#include "api/KeyTable.h"

#include <QString>

#include <exception>
#include <optional>

namespace tarnwik {

/// The customer account as the server tells it. Words such as the role or the status are the server's own; times stay
/// the text that the server sent; money is in cents.
struct Account
{
    qint64 id = 0;
    QString email;
    QString role;
    QString status;
    QString subscriptionStatus;
    bool serviceEnabled = false;
    qint64 planGb = 0;
    qint64 quotaBytes = 0;
    qint64 usedBytes = 0;
    std::optional<qint64> cycleUsedBytes;
    std::optional<qint64> cycleQuotaBytes;
    qint64 monthlyPriceCents = 0;
    QString billingProvider;
    QString billingPortalUrl;
    std::optional<QString> billingAccountToken;
    std::optional<QString> subscriptionCurrentPeriodStart;
    std::optional<QString> subscriptionCurrentPeriodEnd;
    std::optional<QString> serviceBlockReason;

    static consteval auto keyTable()
    {
        return std::tuple(
            key("id", &Account::id), key("email", &Account::email), key("role", &Account::role),
            key("status", &Account::status), key("subscriptionStatus", &Account::subscriptionStatus),
            key("serviceEnabled", &Account::serviceEnabled), key("planGb", &Account::planGb),
            key("quotaBytes", &Account::quotaBytes), key("usedBytes", &Account::usedBytes),
            key("cycleUsedBytes", &Account::cycleUsedBytes), key("cycleQuotaBytes", &Account::cycleQuotaBytes),
            key("monthlyPriceCents", &Account::monthlyPriceCents), key("billingProvider", &Account::billingProvider),
            key("billingPortalUrl", &Account::billingPortalUrl),
            key("billingAccountToken", &Account::billingAccountToken),
            key("subscriptionCurrentPeriodStart", &Account::subscriptionCurrentPeriodStart),
            key("subscriptionCurrentPeriodEnd", &Account::subscriptionCurrentPeriodEnd),
            key("serviceBlockReason", &Account::serviceBlockReason));
    }
};

/// The answer to a sign-in.
struct SessionResponse
{
    /// The bearer token of every later request.
    QString token;
    Account account;

    static consteval auto keyTable()
    {
        return std::tuple(key("token", &SessionResponse::token), key("account", &SessionResponse::account));
    }
};

/// The answer to the account query.
struct AccountResponse
{
    Account account;

    static consteval auto keyTable() { return std::tuple(key("account", &AccountResponse::account)); }
};

/// The answer to a transaction sync: the whole account as it is afterwards.
struct SubscriptionResponse
{
    Account subscription;

    static consteval auto keyTable() { return std::tuple(key("subscription", &SubscriptionResponse::subscription)); }
};

/// The body that the server sends with an error status, thrown as it is.
struct APIErrorEnvelope final : std::exception
{
    /// Words joined by "_".
    QString error;
    std::optional<QString> status;
    std::optional<QString> subscriptionStatus;
    std::optional<Account> account;

    static consteval auto keyTable()
    {
        return std::tuple(key("error", &APIErrorEnvelope::error), key("status", &APIErrorEnvelope::status),
                          key("subscriptionStatus", &APIErrorEnvelope::subscriptionStatus),
                          key("account", &APIErrorEnvelope::account));
    }

    const char *what() const noexcept override { return "the server sent an error body"; }
};

/// Stands for an answer whose body is not wanted, and is not read.
struct EmptyResponse
{
    static consteval auto keyTable() { return std::tuple(); }
};

} // namespace tarnwik
