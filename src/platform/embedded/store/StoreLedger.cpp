#include "platform/embedded/store/StoreLedger.h"

#include "platform/BundleIdentifier.h"

#include <utility>

namespace tarnwik {

namespace {

const QString subscriptionGroup = QStringLiteral("21480001");

/// The store's own reason for taking a purchase back that is not about a fault of the program.
constexpr qint64 otherRevocationReason = 0;

} // namespace

StoreLedger::StoreLedger(StoreRecords &records, SigningIdentity identity, const QDateTime &now)
    : m_records(records)
    , m_identity(std::move(identity))
    , m_now(now)
{
}

QList<Entitlement> StoreLedger::actives() const
{
    TransactionTrust trust;
    trust.rootCertificate = m_identity.rootCertificate();
    trust.bundleIdentifier = bundleIdentifier();
    trust.now = m_now;
    QList<Entitlement> actives = entitlements(m_records, trust);
    actives.removeIf([](const Entitlement &entitlement) { return entitlement.transaction.error.has_value(); });
    return actives;
}

std::optional<Entitlement> StoreLedger::active(const QString &productID) const
{
    for (const Entitlement &entitlement : actives()) {
        if (entitlement.transaction.payload->productId == productID)
            return entitlement;
    }
    return std::nullopt;
}

TransactionPayload StoreLedger::newPayload(const SoldProduct &product, const QString &storefront) const
{
    TransactionPayload payload;
    payload.bundleId = bundleIdentifier();
    payload.productId = product.id;
    payload.subscriptionGroupIdentifier = subscriptionGroup;
    payload.purchaseDate = m_now.toMSecsSinceEpoch();
    payload.originalPurchaseDate = payload.purchaseDate;
    payload.expiresDate = product.period.endAfter(m_now).toMSecsSinceEpoch();
    payload.type = QStringLiteral("Auto-Renewable Subscription");
    payload.inAppOwnershipType = QStringLiteral("PURCHASED");
    payload.environment = QStringLiteral("LocalTesting");
    payload.transactionReason = QStringLiteral("PURCHASE");
    payload.storefront = storefront;
    return payload;
}

StoredTransaction StoreLedger::sign(TransactionPayload payload)
{
    StoredTransaction transaction;
    transaction.id = m_records.takeSerial(m_now.toMSecsSinceEpoch());
    transaction.revision = transaction.id;
    payload.transactionId = QString::number(transaction.id);
    if (payload.originalTransactionId.isEmpty())
        payload.originalTransactionId = payload.transactionId;
    payload.signedDate = m_now.toMSecsSinceEpoch();
    transaction.jws = m_identity.sign(payload);
    return transaction;
}

StoredTransaction StoreLedger::draft(const SoldProduct &product, const QString &storefront,
                                     const std::optional<QUuid> &appAccountToken)
{
    TransactionPayload payload = newPayload(product, storefront);
    if (appAccountToken)
        payload.appAccountToken = appAccountToken->toString(QUuid::WithoutBraces);
    // One subscription of the group goes on as another.
    if (const auto others = actives(); !others.isEmpty()) {
        const TransactionPayload &former = *others.last().transaction.payload;
        payload.originalTransactionId = former.originalTransactionId;
        payload.originalPurchaseDate = former.originalPurchaseDate;
    }
    return sign(std::move(payload));
}

StoredTransaction StoreLedger::buy(const SoldProduct &product, const QString &storefront,
                                   const std::optional<QUuid> &appAccountToken)
{
    const QList<Entitlement> upgraded = actives();
    m_records.transactions.append(draft(product, storefront, appAccountToken));
    for (const Entitlement &entitlement : upgraded) {
        TransactionPayload payload = *entitlement.transaction.payload;
        payload.isUpgraded = true;
        payload.signedDate = m_now.toMSecsSinceEpoch();
        m_records.transactions[entitlement.index].jws = m_identity.sign(payload);
    }
    return m_records.transactions.last();
}

void StoreLedger::renew(const Entitlement &last, const SoldProduct &product, const QString &storefront)
{
    const TransactionPayload &former = *last.transaction.payload;
    TransactionPayload payload = newPayload(product, storefront);
    const auto start = QDateTime::fromMSecsSinceEpoch(former.expiresDate.value_or(payload.purchaseDate), Qt::UTC);
    payload.originalTransactionId = former.originalTransactionId;
    payload.originalPurchaseDate = former.originalPurchaseDate;
    payload.purchaseDate = start.toMSecsSinceEpoch();
    payload.expiresDate = product.period.endAfter(start).toMSecsSinceEpoch();
    payload.transactionReason = QStringLiteral("RENEWAL");
    payload.appAccountToken = former.appAccountToken;
    m_records.transactions.append(sign(std::move(payload)));
}

void StoreLedger::revoke(const Entitlement &active)
{
    TransactionPayload payload = *active.transaction.payload;
    payload.revocationDate = m_now.toMSecsSinceEpoch();
    payload.revocationReason = otherRevocationReason;
    payload.signedDate = m_now.toMSecsSinceEpoch();
    StoredTransaction &transaction = m_records.transactions[active.index];
    transaction.jws = m_identity.sign(payload);
    transaction.revision = m_records.takeSerial(m_now.toMSecsSinceEpoch());
    transaction.isFinished = false;
}

} // namespace tarnwik
