#pragma once

#include <QString>

/// The keys of a provider configuration: the whole interface to the packet-tunnel provider, another program.
namespace tarnwik::providerKeys {

/// The tunnel profile as JSON text.
inline const QString tunnelProfile = QStringLiteral("tunnel_profile_json");
/// The keychain account of the device's private key.
inline const QString privateKeyReference = QStringLiteral("client_private_key_ref");
/// The keychain service of that item.
inline const QString keychainService = QStringLiteral("keychain_service");
/// A boolean, always true.
inline const QString metadataOnly = QStringLiteral("metadata_only");
/// The keychain access group of that item; there only when it has one.
inline const QString keychainAccessGroup = QStringLiteral("keychain_access_group");

} // namespace tarnwik::providerKeys
