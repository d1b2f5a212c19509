#pragma once

#include "platform/linux/NetworkManagerActiveConnections.h"
#include "platform/linux/NetworkManagerConnectionSettings.h"
#include "platform/linux/NetworkManagerDaemon.h"
#include "platform/linux/NetworkManagerSavedConnections.h"
#include "platform/linux/NetworkManagerSecretAgent.h"

#include <chrono>
#include <memory>

namespace tarnwik {

/// What the tunnel manager and its configurations share. Whichever of them lives longest keeps it.
class NetworkManagerSession final : public std::enable_shared_from_this<NetworkManagerSession>
{
public:
    NetworkManagerSession(std::shared_ptr<KeychainServices> keychain, QString userName, const QDBusConnection &bus,
                          std::chrono::milliseconds endLimit);

    // In this order, so that a status which one of them announces finds the ones before up to date.
    NetworkManagerDaemon daemon;
    NetworkManagerActiveConnections activeConnections;
    NetworkManagerSavedConnections savedConnections;
    NetworkManagerSecretAgent agent;
    const QString userName;
    /// How long a tunnel may take to end before it is started anew.
    const std::chrono::milliseconds endLimit;

private:
    void registerAgentAgain();
};

/// Reads the connection saved under \a path. Throws NetworkManagerCallError.
Task<NetworkManagerConnectionSettings> savedSettings(std::shared_ptr<NetworkManagerSession> session, QString path);

} // namespace tarnwik
