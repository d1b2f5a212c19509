#include "platform/embedded/store/StoreRecords.h"

#include "platform/embedded/store/StoreJSON.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace tarnwik {

namespace {

const QString lastSerialKey = QStringLiteral("last_serial");
const QString transactionsKey = QStringLiteral("transactions");
const QString pendingKey = QStringLiteral("pending_purchases");
const QString idKey = QStringLiteral("id");
const QString revisionKey = QStringLiteral("revision");
const QString finishedKey = QStringLiteral("is_finished");
const QString jwsKey = QStringLiteral("jws");
const QString productKey = QStringLiteral("product_id");
const QString tokenKey = QStringLiteral("app_account_token");

/// Well below what double precision holds, so that there is always a next number.
constexpr qint64 highestSerial = qint64(1) << 52;

StoredTransaction transactionFrom(const StoreJSON &place)
{
    place.allowOnly({idKey, revisionKey, finishedKey, jwsKey});
    StoredTransaction transaction;
    transaction.id = place[idKey].integer(1, highestSerial);
    transaction.revision = place[revisionKey].integer(1, highestSerial);
    transaction.isFinished = place[finishedKey].flag();
    transaction.jws = place[jwsKey].text().toUtf8();
    return transaction;
}

PendingPurchase pendingPurchaseFrom(const StoreJSON &place)
{
    place.allowOnly({productKey, tokenKey});
    PendingPurchase purchase;
    purchase.productID = place[productKey].textThatIsNotEmpty();
    if (const auto token = place.find(tokenKey)) {
        purchase.appAccountToken = QUuid::fromString(token->text());
        if (purchase.appAccountToken->isNull())
            token->refuse(QStringLiteral("is no UUID"));
    }
    return purchase;
}

} // namespace

qint64 StoreRecords::takeSerial(qint64 millisecondsSinceEpoch)
{
    lastSerial = std::max(lastSerial + 1, millisecondsSinceEpoch);
    return lastSerial;
}

StoreRecords parseStoreRecords(const QByteArray &json)
{
    const StoreJSON root = StoreJSON::parse(json, QStringLiteral("The store’s record of transactions is refused"));
    root.allowOnly({lastSerialKey, transactionsKey, pendingKey});
    StoreRecords records;
    records.lastSerial = root[lastSerialKey].integer(0, highestSerial);
    for (const StoreJSON &place : root[transactionsKey].items()) {
        records.transactions.append(transactionFrom(place));
        if (records.transactions.last().revision > records.lastSerial)
            place[revisionKey].refuse(QStringLiteral("is above last_serial"));
        if (records.transactions.last().id > records.lastSerial)
            place[idKey].refuse(QStringLiteral("is above last_serial"));
    }
    for (const StoreJSON &place : root[pendingKey].items())
        records.pendingPurchases.append(pendingPurchaseFrom(place));
    return records;
}

QByteArray encodeStoreRecords(const StoreRecords &records)
{
    QJsonArray transactions;
    for (const StoredTransaction &transaction : records.transactions) {
        transactions.append(QJsonObject{{idKey, transaction.id},
                                        {revisionKey, transaction.revision},
                                        {finishedKey, transaction.isFinished},
                                        {jwsKey, QString::fromUtf8(transaction.jws)}});
    }
    QJsonArray pending;
    for (const PendingPurchase &purchase : records.pendingPurchases) {
        QJsonObject object{{productKey, purchase.productID}};
        if (purchase.appAccountToken)
            object.insert(tokenKey, purchase.appAccountToken->toString(QUuid::WithoutBraces));
        pending.append(object);
    }
    return QJsonDocument(
               QJsonObject{{lastSerialKey, records.lastSerial}, {transactionsKey, transactions}, {pendingKey, pending}})
        .toJson();
}

} // namespace tarnwik
