#pragma once

#include "platform/LocalizedError.h"

#include <QString>

#include <optional>

namespace tarnwik {

/// The user's defaults could not be written; what was stored before is still there.
class UserDefaultsError final : public LocalizedError
{
    using LocalizedError::LocalizedError;
};

/// A user's small persistent map from string to string. Used on the main thread.
class UserDefaults
{
public:
    virtual ~UserDefaults() = default;

    /// The string under \a key, or nothing. Never fails: a store that cannot be read holds nothing.
    virtual std::optional<QString> string(const QString &key) const = 0;

    /// Stores \a value under \a key; it is on the disk when this returns. Throws UserDefaultsError.
    virtual void setString(const QString &value, const QString &key) = 0;

    /// Forgets \a key, which need not exist. Throws UserDefaultsError.
    virtual void removeObject(const QString &key) = 0;
};

} // namespace tarnwik
