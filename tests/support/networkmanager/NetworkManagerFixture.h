#pragma once

#include "support/networkmanager/InMemoryKeychain.h"

#include "platform/linux/NetworkManagerConnectionSettings.h"
#include "platform/linux/NetworkManagerTunnelManager.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>

#include <gtest/gtest.h>

namespace tarnwik::test {

/// The provider that the tests run their tunnels with, and another that is installed beside it.
inline const QString providerService = QStringLiteral("example.tarnwik.client.tunnel");
inline const QString otherProviderService = QStringLiteral("example.other.tunnel");

/// Where the private key lies in the tests' keychain, and what it is: a text that must turn up in no file.
inline const QString keyAccount = QStringLiteral("tarnwik-device-7-private-key");
inline const QByteArray privateKey = QByteArrayLiteral("dGhlIHByaXZhdGUga2V5IG9mIHRoZSB0ZXN0cyBvbmw=");

/// The statuses that a configuration went through, as its manager announced them.
class StatusLog
{
public:
    StatusLog(TunnelManager &manager, std::shared_ptr<TunnelConfiguration> configuration);

    /// The statuses so far, from the one at the beginning.
    const std::vector<VPNStatus> &statuses() const { return m_statuses; }

    /// Runs the event loop until \a status has been announced last.
    bool waitFor(VPNStatus status) const;

private:
    std::shared_ptr<TunnelConfiguration> m_configuration;
    std::vector<VPNStatus> m_statuses;
    QObject m_context;
};

/// How active connections end, as the daemon tells everybody.
class EndLog final : public QObject
{
    Q_OBJECT

public:
    EndLog();

    /// Runs the event loop until \a activePath has ended; the daemon's reason, or nothing when it does not end.
    std::optional<uint> waitFor(const QString &activePath) const;

private:
    Q_SLOT void onStateChanged(uint state, uint reason, const QDBusMessage &message);

    QHash<QString, uint> m_reasons; // by path
};

/// A test beside the NetworkManager of run-beside-networkmanager.sh, with the test provider installed. Every test begins
/// with a daemon that runs and holds no VPN connection.
class NetworkManagerTest : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    /// A tunnel manager on a bus connection of its own, as another program would have it.
    std::unique_ptr<TunnelManager> makeManager(std::chrono::milliseconds endLimit = tunnelEndLimit);

    /// A configuration like the application's, not saved yet.
    std::shared_ptr<TunnelConfiguration> makeConfiguration(const QString &service = providerService);
    /// The same, saved.
    std::shared_ptr<TunnelConfiguration> saved(const QString &service = providerService);

    /// Everything that \a manager lists.
    static TunnelManager::Configurations all(TunnelManager &manager);

    static void setProviderMode(const char *mode);
    /// start, stop, kill, restart or freeze the daemon.
    static void control(const char *verb);
    /// The folder of the fixture's run.
    static QString directory();

    // What somebody else does on the bus: as root, by the daemon's own API.
    static QDBusMessage call(const QString &path, const QString &interface, const QString &method,
                             const QVariantList &arguments = {});
    static QList<QDBusObjectPath> connectionPaths();
    static NetworkManagerConnectionSettings settings(const QString &path);
    static QString pathOf(const QString &connectionName);
    static QString addConnection(const NetworkManagerConnectionSettings &settings);
    static void updateConnection(const QString &path, const NetworkManagerConnectionSettings &settings);
    static QString activate(const QString &path);
    static void deactivate(const QString &activePath);
    static QStringList activePaths();
    static QStringList activeVPNs();

    std::shared_ptr<InMemoryKeychain> keychain = std::make_shared<InMemoryKeychain>();
    std::unique_ptr<TunnelManager> manager;
};

/// What \a task failed with: its user-visible text; empty when it did not fail.
QString failureOf(Task<> task);

} // namespace tarnwik::test
