#include "service/Operations.h"

#include "api/JSON.h"
#include "service/AccountTables.h"
#include "service/NodeTables.h"
#include "service/RequestBody.h"
#include "service/TransactionRequest.h"
#include "service/Validation.h"

namespace tarnwik::service {

ServiceResponse readSession(const SessionCall &call)
{
    return {200, encode(AccountResponse{readAccount(call.database, call.accountId)}), {}};
}

ServiceResponse endSession(const SessionCall &call)
{
    removeSession(call.database, call.token);
    return {204, {}, {}};
}

ServiceResponse listNodes(const SessionCall &call)
{
    return {200, encode(NodeListResponse{readNodes(call.database)}), {}};
}

ServiceResponse syncAppleTransaction(const SessionCall &call)
{
    const QString transaction = readBody<TransactionRequest>(call.request).signedTransactionJws;
    require(isCompactJWS(transaction), "invalid_signed_transaction_jws");
    // The store's signature cannot be checked yet, and an unchecked transaction must not change a subscription: every
    // one is refused. What checks the signature goes here, and then answers with SubscriptionResponse.
    throw ServiceError(422, "invalid_transaction");
}

} // namespace tarnwik::service
