#include "service/Operations.h"

#include "api/JSON.h"
#include "service/AccountTables.h"
#include "service/NodeTables.h"

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

} // namespace tarnwik::service
