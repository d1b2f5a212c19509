#include "service/SubscriptionTables.h"

#include "service/Quota.h"

#include <QDateTime>

namespace tarnwik::service {

namespace {

QString timeText(qint64 milliseconds)
{
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC).toString(Qt::ISODate);
}

} // namespace

void insertProducts(Database &database, const QList<SubscriptionProduct> &products)
{
    for (const SubscriptionProduct &product : products) {
        database.run("INSERT INTO subscription_products VALUES (?,?,?)", product.productId, product.planGb,
                     product.monthlyPriceCents);
    }
}

std::optional<SubscriptionProduct> findProduct(Database &database, const QString &productId)
{
    Statement row = database.prepare(
        "SELECT product_id, plan_gb, monthly_price_cents FROM subscription_products WHERE product_id = ?", productId);
    if (!row.step())
        return std::nullopt;
    return SubscriptionProduct{.productId = row.text(0), .planGb = row.integer(1), .monthlyPriceCents = row.integer(2)};
}

std::optional<qint64> findSubscriber(Database &database, const QString &originalTransactionId)
{
    Statement row = database.prepare("SELECT account_id FROM subscriptions WHERE original_transaction_id = ?",
                                     originalTransactionId);
    return row.step() ? std::optional(row.integer(0)) : std::nullopt;
}

void recordSubscriber(Database &database, qint64 accountId, const QString &originalTransactionId)
{
    database.run("INSERT INTO subscriptions VALUES (?,?) ON CONFLICT DO NOTHING", originalTransactionId, accountId);
}

bool isTokenOfAnother(Database &database, qint64 accountId, const QString &billingToken)
{
    Statement row = database.prepare("SELECT count(*) > 0 AND NOT max(id = ?) FROM accounts"
                                     " WHERE lower(billing_account_token) = ?",
                                     accountId, billingToken.toLower());
    row.step();
    return row.boolean(0);
}

std::optional<RecordedPeriod> findLatestPeriod(Database &database, qint64 accountId)
{
    Statement row =
        database.prepare("SELECT transaction_id, bought_at FROM subscription_periods WHERE account_id = ?", accountId);
    if (!row.step())
        return std::nullopt;
    return RecordedPeriod{.transactionId = row.text(0), .boughtAt = Moment(std::chrono::milliseconds(row.integer(1)))};
}

void recordPeriod(Database &database, qint64 accountId, const RecordedPeriod &period)
{
    database.run("INSERT OR REPLACE INTO subscription_periods VALUES (?,?,?)", accountId, period.transactionId,
                 toMilliseconds(period.boughtAt));
}

void grantPeriod(Database &database, qint64 accountId, const SubscriptionProduct &product,
                 const TransactionPayload &transaction)
{
    database.run("UPDATE accounts SET subscription_status = 'active', billing_provider = 'apple', plan_gb = ?1,"
                 " quota_bytes = ?2, cycle_quota_bytes = ?2, cycle_used_bytes = 0, monthly_price_cents = ?3,"
                 " subscription_current_period_start = ?4, subscription_current_period_end = ?5,"
                 " service_enabled = service_enabled OR service_block_reason IS NULL WHERE id = ?6",
                 product.planGb, product.planGb * bytesPerGigabyte, product.monthlyPriceCents,
                 timeText(transaction.purchaseDate), timeText(transaction.expiresDate.value()), accountId);
}

} // namespace tarnwik::service
