#pragma once

#include "api/TunnelModels.h"

#include <QString>
#include <QVariantMap>

#include <optional>

namespace tarnwik {

/// What the tunnel provider is told, the whole interface to it: the tunnel profile as JSON text and where in the
/// keychain to find the device's private key. Values are strings, and one boolean. The key itself never travels.
///
/// \a privateKeyReference is the key's keychain account; \a keychainAccessGroup the group that holds it, if any.
QVariantMap providerConfiguration(const TunnelProfile &profile, const QString &privateKeyReference,
                                  const std::optional<QString> &keychainAccessGroup);

/// The node of the tunnel profile in a provider configuration; nothing when it holds none that can be read.
std::optional<TunnelNode> nodeOfConfiguration(const QVariantMap &configuration);

} // namespace tarnwik
