#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tarnwik {

/// What an App Store transaction says, under the names and in the units of the store's own signed transactions.
/// Identifiers are decimal numbers in text; dates are milliseconds since 1970, in UTC.
struct TransactionPayload
{
    QString transactionId;
    /// The first transaction of the subscription: its renewals share it.
    QString originalTransactionId;
    QString bundleId;
    QString productId;
    QString subscriptionGroupIdentifier;
    qint64 purchaseDate = 0;
    qint64 originalPurchaseDate = 0;
    std::optional<qint64> expiresDate;
    qint64 quantity = 1;
    QString type;
    QString inAppOwnershipType;
    qint64 signedDate = 0;
    QString environment;
    /// PURCHASE or RENEWAL.
    QString transactionReason;
    /// The three-letter country code.
    QString storefront;
    std::optional<qint64> revocationDate;
    /// 0 or 1; goes with revocationDate.
    std::optional<qint64> revocationReason;
    /// Another subscription of the group took its place.
    std::optional<bool> isUpgraded;
    /// A UUID, in small letters.
    std::optional<QString> appAccountToken;

    bool operator==(const TransactionPayload &) const = default;
};

/// \a payload as JSON; absent fields are left out.
QByteArray encodePayload(const TransactionPayload &payload);

} // namespace tarnwik
