#include "service/Operations.h"

#include "api/JSON.h"
#include "jws/SignedTransaction.h"
#include "platform/BundleIdentifier.h"
#include "service/AccountTables.h"
#include "service/RequestBody.h"
#include "service/SubscriptionTables.h"
#include "service/TransactionRequest.h"
#include "service/Validation.h"

#include <algorithm>

namespace tarnwik::service {

namespace {

/// What \a text says, once the signature of the store has been checked.
TransactionPayload verifiedTransaction(const SessionCall &call, const QString &text)
{
    const auto root = call.storeRoot ? call.storeRoot() : std::nullopt;
    require(root.has_value(), "invalid_transaction");
    try {
        return verifyTransaction(text.toLatin1(),
                                 {.rootCertificate = *root,
                                  .bundleIdentifier = bundleIdentifier(),
                                  .now = QDateTime::fromMSecsSinceEpoch(toMilliseconds(call.now), Qt::UTC)});
    } catch (const StoreError &) {
        // What was wrong with it helps nobody but who made it up.
        throw ServiceError(422, "invalid_transaction");
    }
}

/// Whether \a transaction is for a span of time that can be written down.
bool hasPeriod(const TransactionPayload &transaction)
{
    // The last moment of the year 9999: later ones have no text of the usual form.
    constexpr qint64 latest = 253'402'300'799'999;
    return transaction.expiresDate && transaction.purchaseDate >= 0
        && *transaction.expiresDate > transaction.purchaseDate && *transaction.expiresDate <= latest;
}

void checkStanding(const TransactionPayload &transaction, Moment now)
{
    require(!transaction.revocationDate && !transaction.isUpgraded.value_or(false), "transaction_revoked");
    require(transaction.expiresDate.value() > toMilliseconds(now), "transaction_expired");
}

/// Throws unless \a transaction may count for the account: nobody else had it, and it was bought for nobody else.
void checkSubscriber(const SessionCall &call, const TransactionPayload &transaction)
{
    const auto subscriber = findSubscriber(call.database, transaction.originalTransactionId);
    const bool isForAnother =
        transaction.appAccountToken && isTokenOfAnother(call.database, call.accountId, *transaction.appAccountToken);
    if (isForAnother || subscriber.value_or(call.accountId) != call.accountId)
        throw ServiceError(409, "transaction_of_another_account");
}

/// The period of \a transaction. A renewal is bought some time before its period begins, and what is bought after it
/// replaces it even if that begins earlier: so the signature's date counts where it is the earlier one. The other way
/// round, a store may sign an old transaction anew at any time.
RecordedPeriod periodOf(const TransactionPayload &transaction)
{
    const qint64 boughtAt = std::min(transaction.purchaseDate, transaction.signedDate);
    return {.transactionId = transaction.transactionId, .boughtAt = Moment(std::chrono::milliseconds(boughtAt))};
}

} // namespace

ServiceResponse syncAppleTransaction(const SessionCall &call)
{
    const QString text = readBody<TransactionRequest>(call.request).signedTransactionJws;
    require(isCompactJWS(text), "invalid_signed_transaction_jws");
    const TransactionPayload transaction = verifiedTransaction(call, text);
    require(hasPeriod(transaction), "invalid_transaction");
    const auto product = findProduct(call.database, transaction.productId);
    require(product.has_value(), "unknown_product");
    checkStanding(transaction, call.now);
    checkSubscriber(call, transaction);

    recordSubscriber(call.database, call.accountId, transaction.originalTransactionId);
    const RecordedPeriod period = periodOf(transaction);
    const auto latest = findLatestPeriod(call.database, call.accountId);
    // What is known already, or older than what is known, changes nothing: anyone can keep a text and send it again.
    if (!latest || (period.transactionId != latest->transactionId && period.boughtAt > latest->boughtAt)) {
        recordPeriod(call.database, call.accountId, period);
        grantPeriod(call.database, call.accountId, *product, transaction);
    }
    return {200, encode(SubscriptionResponse{readAccount(call.database, call.accountId)}), {}};
}

} // namespace tarnwik::service
