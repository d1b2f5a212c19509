#pragma once

#include "api/TunnelModels.h"
#include "async/Task.h"
#include "core/AppRuntime.h"
#include "platform/TunnelManager.h"

#include <QObject>
#include <QProperty>

#include <memory>
#include <optional>

namespace tarnwik {

/// What the connect/disconnect control offers.
enum class VPNActionState {
    CanConnect,
    CanDisconnect,
    InTransition,
};

/// The program's one handle on its system tunnel configuration, which it finds by its description or makes.
///
/// The configuration is looked for by the first operation and then kept. Operations throw the platform's TunnelError;
/// a pulled stop token ends their wait with async::Cancelled and never changes the status. Lives on the main thread.
///
/// The members connect() and disconnect() hide QObject's: write QObject::connect().
class VPNController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(tarnwik::VPNStatus status READ status NOTIFY statusChanged)
    Q_PROPERTY(QString statusLabel READ statusLabel NOTIFY statusChanged)
    Q_PROPERTY(tarnwik::VPNActionState actionState READ actionState NOTIFY statusChanged)
    Q_PROPERTY(bool hasManager READ hasManager NOTIFY managerChanged)

public:
    /// \a providerBundleIdentifier names the tunnel provider; \a keychainAccessGroup is what it shares, if anything.
    explicit VPNController(QString providerBundleIdentifier = AppRuntime::tunnelBundleIdentifier(),
                           std::optional<QString> keychainAccessGroup = AppRuntime::keychainAccessGroup());

    /// The tunnel's last known status; Invalid at first.
    VPNStatus status() const { return m_status; }

    /// The status in words.
    QString statusLabel() const;

    VPNActionState actionState() const;

    /// Whether the configuration has been found or made.
    bool hasManager() const { return m_manager.value() != nullptr; }

    /// The node that the configuration leads to, as the profile that it was last given names it.
    std::optional<TunnelNode> configuredNode() const;

    /// Why the tunnel last went down by itself, where the system tells.
    std::optional<QString> lastDisconnectError() const;

    /// Writes \a profile into the configuration, saves it and starts the tunnel. \a privateKeyReference is the keychain
    /// account of the device's private key. Returns once the system has agreed to start.
    Task<> connect(TunnelProfile profile, QString privateKeyReference, std::stop_token token = {});

    /// Stops the tunnel.
    Task<> disconnect(std::stop_token token = {});

    /// Takes the status from the system; Invalid when the system cannot tell. Never throws.
    Task<> refreshStatus(std::stop_token token = {});

Q_SIGNALS:
    void statusChanged();
    void managerChanged();

private:
    using Manager = std::shared_ptr<TunnelConfiguration>;

    Task<Manager> loadOrCreateManager(std::stop_token token);
    TunnelProviderProtocol tunnelProtocol(const TunnelProfile &profile, const QString &privateKeyReference) const;
    void takeStatus();

    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(VPNController, VPNStatus, m_status, VPNStatus::Invalid,
                                         &VPNController::statusChanged)
    const QString m_providerBundleIdentifier;
    const std::optional<QString> m_keychainAccessGroup;
    const QString m_tunnelDescription = QStringLiteral("Tarnwik");
    Q_OBJECT_BINDABLE_PROPERTY(VPNController, Manager, m_manager, &VPNController::managerChanged)
    std::shared_ptr<TunnelManager> m_tunnelManager;
};

} // namespace tarnwik
