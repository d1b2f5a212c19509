#pragma once

#include "platform/KeychainServices.h"
#include "platform/TunnelManager.h"
#include "platform/linux/NetworkManagerConnectionSettings.h"
#include "platform/linux/NetworkManagerDaemon.h"
#include "platform/linux/NetworkManagerTurns.h"

#include <QDBusVirtualObject>
#include <QHash>

#include <memory>
#include <optional>

namespace tarnwik {

/// The secret agent of the user's session that gives the device's private key to NetworkManager, for our own tunnel's
/// provider and for nobody else.
///
/// The provider runs as root and cannot read the user's keychain: it asks NetworkManager, which asks the agents of the
/// user who started the tunnel. The key is read when it is asked for, kept nowhere, and never logged. Nothing is
/// registered before the first ensureRegistered(). Lives on the main thread; the keychain may block it while the person
/// unlocks the store.
class NetworkManagerSecretAgent final : public QDBusVirtualObject
{
public:
    /// \a daemon must outlive this.
    NetworkManagerSecretAgent(NetworkManagerDaemon &daemon, std::shared_ptr<KeychainServices> keychain);
    ~NetworkManagerSecretAgent() override;

    /// Registers with the daemon that runs now, unless that has been done. Throws NetworkManagerCallError, or
    /// TunnelError where the bus connection has another agent. This must be kept until it has ended.
    Task<> ensureRegistered();

    /// Whether it was ever registered: it then wants to be known to the next daemon too.
    bool isExported() const { return m_isExported; }

    /// From now on, gives the key for the saved connection \a uuid, as long as its provider is \a serviceType.
    void serve(const QString &uuid, const QString &serviceType) { m_served.insert(uuid, serviceType); }

    /// What the keychain answered when it did not give the key for \a uuid, since forgetFailure().
    std::optional<OSStatus> keychainFailure(const QString &uuid) const;
    void forgetFailure(const QString &uuid) { m_failures.remove(uuid); }

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    QDBusMessage unregistration() const;
    void answerGetSecrets(const QDBusMessage &message, const QDBusConnection &connection);
    bool isServed(const NetworkManagerConnectionSettings &settings, const QString &section) const;

    NetworkManagerDaemon &m_daemon;
    std::shared_ptr<KeychainServices> m_keychain;
    NetworkManagerTurns m_turns;
    bool m_isExported = false;
    QString m_registeredWith;            // the daemon's unique bus name; empty when none
    QHash<QString, QString> m_served;    // service types by UUID
    QHash<QString, OSStatus> m_failures; // by UUID
};

} // namespace tarnwik
