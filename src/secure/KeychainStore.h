#pragma once

#include "core/AppRuntime.h"
#include "platform/KeychainServices.h"
#include "platform/LocalizedError.h"

#include <optional>

namespace tarnwik {

/// A keychain call failed: "Keychain operation failed with status " and the code.
class KeychainError final : public LocalizedError
{
public:
    explicit KeychainError(OSStatus status);

    /// The keychain's own code. 0: the item was found, but holds no text.
    OSStatus status() const noexcept { return m_status; }

private:
    OSStatus m_status;
};

/// Keeps small secrets as UTF-8 text in the keychain of PlatformServices::current(), one item per account.
///
/// The tunnel's provider, another program, finds the same items by service, account and access group. A value: it
/// holds no handle and caches nothing. Any thread; the calls block as those of KeychainServices do.
class KeychainStore
{
public:
    /// Without an access group, the items belong to the keychain's default one.
    explicit KeychainStore(const QString &service = QStringLiteral("Tarnwik"),
                           const std::optional<QString> &accessGroup = AppRuntime::keychainAccessGroup());

    const QString &service() const noexcept { return m_service; }
    const std::optional<QString> &accessGroup() const noexcept { return m_accessGroup; }

    /// Stores \a value in place of what \a account held. Throws KeychainError; the old value may be gone then.
    void save(const QString &value, const QString &account) const;

    /// What \a account holds. Throws KeychainError: errSecItemNotFound when it was never saved, 0 when it is no text.
    QString read(const QString &account) const;

    /// Forgets \a account. Never fails: what cannot be deleted stays.
    void delete_(const QString &account) const;

private:
    QVariantMap baseQuery(const QString &account) const;

    QString m_service;
    std::optional<QString> m_accessGroup;
};

} // namespace tarnwik
