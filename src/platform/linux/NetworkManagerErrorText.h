#pragma once

#include "platform/TunnelManager.h"
#include "platform/linux/NetworkManagerDaemon.h"

namespace tarnwik {

/// What a person is told when NetworkManager refuses a call about a tunnel of \a providerBundleIdentifier.
TunnelError tunnelError(const NetworkManagerCallError &error, const QString &providerBundleIdentifier);

/// NetworkManager agreed to something and does not do it.
TunnelError notAnsweringError();

/// Passes \a operation on, with the daemon's errors turned into TunnelError.
template<typename T>
Task<T> withTunnelErrors(Task<T> operation, QString providerBundleIdentifier)
{
    try {
        co_return co_await operation;
    } catch (const NetworkManagerCallError &error) {
        throw tunnelError(error, providerBundleIdentifier);
    }
}

} // namespace tarnwik
