#pragma once

#include "platform/KeychainQuery.h"
#include "platform/macos/native/Keychain.h"

#include <optional>

namespace tarnwik {

/// The attributes of a keychain call as the platform takes them: each of \a attributes, and no other. Nothing when the
/// call is malformed (errSecParam).
std::optional<mac::KeychainDictionary> keychainDictionary(const QVariantMap &attributes,
                                                          KeychainQuery::Operation operation);

} // namespace tarnwik
