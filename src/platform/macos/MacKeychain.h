#pragma once

#include "platform/KeychainServices.h"

namespace tarnwik {

/// The keychain services of the Security framework. They ask the person themselves where that is called for.
class MacKeychain final : public KeychainServices
{
public:
    OSStatus SecItemAdd(const QVariantMap &attributes) override;
    OSStatus SecItemCopyMatching(const QVariantMap &query, QVariant *result) override;
    OSStatus SecItemDelete(const QVariantMap &query) override;
};

} // namespace tarnwik
