#pragma once

#include "api/KeyTable.h"

#include <QString>

namespace tarnwik::service {

/// The body of a transaction sync as a reader sees it. Not the client's own record of it, whose declared key ends in a
/// run of capitals, which the key rules write but do not read back.
struct TransactionRequest
{
    QString signedTransactionJws;

    static consteval auto keyTable()
    {
        return std::tuple(key("signedTransactionJws", &TransactionRequest::signedTransactionJws));
    }
};

} // namespace tarnwik::service
