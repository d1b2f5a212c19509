#include "platform/embedded/store/StoreEntitlements.h"

#include <QSet>

#include <algorithm>

namespace tarnwik {

namespace {

bool isEntitling(const TransactionPayload &payload, const QDateTime &now)
{
    return !payload.revocationDate && !payload.isUpgraded.value_or(false)
        && (!payload.expiresDate || *payload.expiresDate > now.toMSecsSinceEpoch());
}

} // namespace

ReadTransaction readTransaction(const QByteArray &jws, const TransactionTrust &trust)
{
    ReadTransaction transaction;
    transaction.jws = jws;
    try {
        transaction.payload = verifyTransaction(jws, trust);
    } catch (const VerificationError &error) {
        transaction.payload = readPayloadUnverified(jws);
        transaction.error = error;
    }
    return transaction;
}

VerificationResult verificationResult(const ReadTransaction &transaction)
{
    VerificationResult result;
    result.jwsRepresentation = QString::fromUtf8(transaction.jws);
    result.verificationError = transaction.error;
    if (const auto &payload = transaction.payload) {
        result.transaction.id = payload->transactionId.toULongLong();
        result.transaction.productID = payload->productId;
        if (payload->revocationDate)
            result.transaction.revocationDate = QDateTime::fromMSecsSinceEpoch(*payload->revocationDate, Qt::UTC);
    }
    return result;
}

QList<Entitlement> entitlements(const StoreRecords &records, const TransactionTrust &trust)
{
    QList<Entitlement> found;
    QSet<QString> settledProducts;
    for (qsizetype index = records.transactions.size() - 1; index >= 0; --index) {
        const QByteArray &jws = records.transactions[index].jws;
        // Checking a signature is slow: only what may be the latest of its product is worth it.
        const auto claims = readPayloadUnverified(jws);
        if (claims && settledProducts.contains(claims->productId))
            continue;
        Entitlement entitlement;
        entitlement.index = index;
        entitlement.transaction = readTransaction(jws, trust);
        if (!entitlement.transaction.error)
            settledProducts.insert(entitlement.transaction.payload->productId);
        if (!claims || isEntitling(*claims, trust.now))
            found.append(entitlement);
    }
    std::reverse(found.begin(), found.end());
    return found;
}

} // namespace tarnwik
