#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace tarnwik {

/// A transaction that the embedded store made, with what it must know of it beside what it signed.
struct StoredTransaction
{
    /// The transaction identifier.
    qint64 id = 0;
    /// The serial number of its last change that listeners are told of.
    qint64 revision = 0;
    /// Whether a program has dealt with it.
    bool isFinished = false;
    /// The signed transaction in compact form.
    QByteArray jws;

    bool operator==(const StoredTransaction &) const = default;
};

/// A purchase that waits for somebody's approval.
struct PendingPurchase
{
    QString productID;
    std::optional<QUuid> appAccountToken;

    bool operator==(const PendingPurchase &) const = default;
};

/// All that was bought, in the order in which it was.
struct StoreRecords
{
    /// The highest number given so far, to a transaction or to a change of one.
    qint64 lastSerial = 0;
    QList<StoredTransaction> transactions;
    QList<PendingPurchase> pendingPurchases;

    /// The next number. It is never below \a millisecondsSinceEpoch, so that a store that had to start afresh does not
    /// give the numbers of its former life again, which others may remember.
    qint64 takeSerial(qint64 millisecondsSinceEpoch);

    bool operator==(const StoreRecords &) const = default;
};

/// Reads records in JSON. The transactions themselves are not looked into. Throws StoreError with a sentence that names
/// the place, such as "transactions[3].revision".
StoreRecords parseStoreRecords(const QByteArray &json);

/// What parseStoreRecords() reads.
QByteArray encodeStoreRecords(const StoreRecords &records);

} // namespace tarnwik
