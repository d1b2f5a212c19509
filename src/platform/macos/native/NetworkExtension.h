#pragma once

#include "platform/macos/native/PlatformError.h"
#include "platform/macos/native/PropertyValue.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarnwik::mac {

/// The fields of a tunnel provider protocol that the program knows. Texts are UTF-8.
struct TunnelProtocolFields
{
    std::string providerBundleIdentifier;
    std::string serverAddress;
    bool disconnectOnSleep = false;
    std::map<std::string, PropertyValue> providerConfiguration;

    bool operator==(const TunnelProtocolFields &) const = default;
};

/// The fields of a tunnel provider manager that the program knows.
struct TunnelManagerFields
{
    std::optional<std::string> localizedDescription;
    std::optional<TunnelProtocolFields> protocolConfiguration;
    bool isEnabled = false;

    bool operator==(const TunnelManagerFields &) const = default;
};

/// One of the system's tunnel provider managers. Used on the main thread; completions come once, on any thread.
class TunnelProviderManager
{
public:
    using Completion = std::function<void(std::optional<PlatformError>)>;

    virtual ~TunnelProviderManager() = default;

    virtual TunnelManagerFields fields() const = 0;

    /// Replaces the fields, and touches nothing else of the manager. The protocol is always a new one. A description or
    /// protocol that is absent stays as it is.
    virtual void setFields(const TunnelManagerFields &fields) = 0;

    virtual void saveToPreferences(Completion completion) = 0;
    virtual void loadFromPreferences(Completion completion) = 0;

    /// Nothing when the system agreed to start the tunnel.
    virtual std::optional<PlatformError> startVPNTunnel() = 0;

    virtual void stopVPNTunnel() = 0;

    /// The system's number for the connection's status.
    virtual long status() const = 0;

    virtual void fetchLastDisconnectError(Completion completion) = 0;
};

/// The system's tunnel provider managers. Used on the main thread.
class NetworkExtension
{
public:
    struct Loaded
    {
        /// Absent when the system has no list.
        std::optional<std::vector<std::shared_ptr<TunnelProviderManager>>> managers;
        std::optional<PlatformError> error;
    };

    virtual ~NetworkExtension() = default;

    /// Calls \a completion once, on any thread.
    virtual void loadAllFromPreferences(std::function<void(Loaded)> completion) = 0;

    virtual std::shared_ptr<TunnelProviderManager> create() = 0;

    /// Calls \a handler on the main thread whenever the status of any tunnel changed, until what this returns is gone;
    /// a call that was under way by then may still come.
    virtual std::shared_ptr<void> observeStatus(std::function<void()> handler) = 0;
};

/// The NetworkExtension framework.
std::shared_ptr<NetworkExtension> systemNetworkExtension();

} // namespace tarnwik::mac
