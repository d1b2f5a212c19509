#pragma once

#import <NetworkExtension/NetworkExtension.h>

#include "platform/macos/native/NetworkExtension.h"

// For Objective-C++ sources alone.
namespace tarnwik::mac {

class NativeTunnelProviderManager final : public TunnelProviderManager
{
public:
    explicit NativeTunnelProviderManager(NETunnelProviderManager *_Nonnull manager);

    TunnelManagerFields fields() const override;
    void setFields(const TunnelManagerFields &fields) override;
    void saveToPreferences(Completion completion) override;
    void loadFromPreferences(Completion completion) override;
    std::optional<PlatformError> startVPNTunnel() override;
    void stopVPNTunnel() override;
    long status() const override;
    void fetchLastDisconnectError(Completion completion) override;

private:
    NETunnelProviderManager *_Nonnull const m_manager;
};

} // namespace tarnwik::mac
