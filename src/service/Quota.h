#pragma once

#include "api/AccountModels.h"

#include <algorithm>

namespace tarnwik::service {

/// How many bytes a gigabyte of a plan has.
inline constexpr qint64 bytesPerGigabyte = qint64(1024) * 1024 * 1024;

/// How many bytes the account may still use: of its billing cycle's quota where it has one, else of its whole quota.
inline qint64 remainingBytes(const Account &account)
{
    const qint64 quota = account.cycleQuotaBytes.value_or(account.quotaBytes);
    const qint64 used = account.cycleUsedBytes.value_or(account.usedBytes);
    return std::max<qint64>(quota - used, 0);
}

} // namespace tarnwik::service
