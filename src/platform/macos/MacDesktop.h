#pragma once

#include "platform/Desktop.h"

namespace tarnwik {

/// The desktop of macOS, by way of the application object that Qt made: there must be a QGuiApplication.
class MacDesktop final : public Desktop
{
public:
    bool openURL(const QString &url) override;
    void setRegularActivationPolicy() override;
    void activateIgnoringOtherApps() override;
    void terminate() override;
};

} // namespace tarnwik
