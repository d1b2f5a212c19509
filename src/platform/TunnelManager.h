#pragma once

#include "async/Task.h"
#include "platform/LocalizedError.h"

#include <QObject>
#include <QVariantMap>

#include <memory>
#include <optional>
#include <vector>

namespace tarnwik {

/// A tunnel's status, numbered as the platform numbers it. A system may one day tell values beyond these.
enum class VPNStatus : int {
    Invalid = 0,
    Disconnected = 1,
    Connecting = 2,
    Connected = 3,
    Reasserting = 4,
    Disconnecting = 5,
};

/// The system's VPN subsystem refused; the text tells a person what to do about it.
class TunnelError final : public LocalizedError
{
    using LocalizedError::LocalizedError;
};

/// How a tunnel configuration's provider is to be run.
struct TunnelProviderProtocol
{
    QString providerBundleIdentifier;
    QString serverAddress;
    bool disconnectOnSleep = false;
    /// What the provider is told: values are QString or bool.
    QVariantMap providerConfiguration;

    bool operator==(const TunnelProviderProtocol &) const = default;
};

/// One tunnel configuration, saved or not. Lives on the main thread.
///
/// The operations run to their end whatever their caller does meanwhile; they throw TunnelError. The object must be
/// kept until they have ended.
class TunnelConfiguration
{
public:
    virtual ~TunnelConfiguration() = default;

    std::optional<QString> localizedDescription;
    std::optional<TunnelProviderProtocol> protocolConfiguration;
    bool isEnabled = false;

    /// Stores these fields in the system's preferences, under the identity that the configuration already has there.
    virtual Task<> saveToPreferences() = 0;

    /// Reads the fields back from the system's preferences.
    virtual Task<> loadFromPreferences() = 0;

    /// Asks the system to start the tunnel, and returns once it has agreed to. Fails only when the system refuses; what
    /// becomes of the tunnel is told by its status, which may follow a moment later.
    virtual Task<> startVPNTunnel() = 0;

    /// Asks the system to stop the tunnel. Never fails; a tunnel that does not run is left alone. The status may follow a
    /// moment later.
    virtual Task<> stopVPNTunnel() = 0;

    virtual VPNStatus status() const = 0;

    /// Why the tunnel last went down by itself, as a sentence; nothing if it did not, or since it was last started. A
    /// system may tell it only after the status: statusDidChange() comes once more then.
    virtual std::optional<QString> lastDisconnectError() const = 0;
};

/// The system's VPN subsystem, as far as the program's own configurations go. Lives on the main thread.
class TunnelManager : public QObject
{
    Q_OBJECT

public:
    using Configurations = std::vector<std::shared_ptr<TunnelConfiguration>>;

    /// The saved tunnel configurations, in the system's order; nothing when the system has no list. Throws TunnelError.
    virtual Task<std::optional<Configurations>> loadAllFromPreferences() = 0;

    /// A new configuration, not saved yet.
    virtual std::shared_ptr<TunnelConfiguration> create() = 0;

Q_SIGNALS:
    /// The status of a tunnel changed: of any tunnel, ours or not. Or why one went down is known now.
    void statusDidChange();
};

} // namespace tarnwik
