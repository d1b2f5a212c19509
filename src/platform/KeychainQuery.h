#pragma once

#include "platform/KeychainServices.h"

#include <optional>

namespace tarnwik {

/// What the dictionary of a keychain call says, for the adapters that have to read it themselves.
struct KeychainQuery
{
    enum class Operation {
        Add,
        CopyMatching,
        Delete,
    };

    QString service;
    QString account;
    /// Absent: items of every group match, and a new item belongs to none.
    std::optional<QString> accessGroup;
    /// The new item's data; Add only.
    QByteArray data;
    /// Whether the data of the item is asked for; CopyMatching only.
    bool isDataWanted = false;

    /// Reads \a attributes, or nothing when the call is malformed (errSecParam): another class, no service or no
    /// account, a value of the wrong type, an attribute that \a operation does not know.
    static std::optional<KeychainQuery> fromAttributes(const QVariantMap &attributes, Operation operation);
};

} // namespace tarnwik
