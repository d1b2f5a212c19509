#pragma once

#include "platform/Desktop.h"

namespace tarnwik {

/// The desktop as Qt reaches it. There must be a QGuiApplication.
class GuiDesktop final : public Desktop
{
public:
    bool openURL(const QString &url) override;

    /// Nothing to do here: every program is an ordinary one.
    void setRegularActivationPolicy() override { }

    void activateIgnoringOtherApps() override;
    void terminate() override;
};

} // namespace tarnwik
