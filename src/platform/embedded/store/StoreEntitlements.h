#pragma once

#include "jws/SignedTransaction.h"
#include "platform/embedded/store/StoreRecords.h"

#include <QList>

#include <optional>

namespace tarnwik {

/// A signed transaction, and what came of checking it.
struct ReadTransaction
{
    QByteArray jws;
    /// What it says of itself; absent when it does not even do that.
    std::optional<TransactionPayload> payload;
    /// Absent when it can be relied on.
    std::optional<StoreError> error;
};

/// Checks \a jws. Never throws for what is wrong with it.
ReadTransaction readTransaction(const QByteArray &jws, const TransactionTrust &trust);

/// The same as the platform tells it.
VerificationResult verificationResult(const ReadTransaction &transaction);

/// A transaction among the store's records that its user is entitled by.
struct Entitlement
{
    /// Where it stands in StoreRecords::transactions.
    qsizetype index = 0;
    ReadTransaction transaction;
};

/// The latest transaction of every product, if it is not revoked, not upgraded and not expired; in the order in which
/// they were made. Those later ones that cannot be relied on, and claim as much, are among them.
QList<Entitlement> entitlements(const StoreRecords &records, const TransactionTrust &trust);

} // namespace tarnwik
