#pragma once

#include "jws/TransactionPayload.h"
#include "service/Database.h"
#include "service/SeedRecords.h"
#include "service/Time.h"

namespace tarnwik::service {

/// The latest period that was recorded for an account.
struct RecordedPeriod
{
    QString transactionId;
    Moment boughtAt;
};

/// Puts \a products on sale.
void insertProducts(Database &database, const QList<SubscriptionProduct> &products);

/// What is sold under \a productId.
std::optional<SubscriptionProduct> findProduct(Database &database, const QString &productId);

/// The account to which the subscription that began with \a originalTransactionId belongs.
std::optional<qint64> findSubscriber(Database &database, const QString &originalTransactionId);

/// Records that the subscription that began with \a originalTransactionId belongs to an account, unless it does already.
void recordSubscriber(Database &database, qint64 accountId, const QString &originalTransactionId);

/// Whether \a billingToken is the name at the billing provider of other accounts, and not of this one.
bool isTokenOfAnother(Database &database, qint64 accountId, const QString &billingToken);

/// The latest period of an account.
std::optional<RecordedPeriod> findLatestPeriod(Database &database, qint64 accountId);

/// Makes \a period the latest of an account.
void recordPeriod(Database &database, qint64 accountId, const RecordedPeriod &period);

/// Gives an account what \a product grants, for the period of \a transaction, which must have an end. A new billing
/// cycle begins with it. A block stays: who set it may lift it.
void grantPeriod(Database &database, qint64 accountId, const SubscriptionProduct &product,
                 const TransactionPayload &transaction);

} // namespace tarnwik::service
