#include "platform/gui/SystemDesktop.h"

#include "platform/gui/GuiDesktop.h"

namespace tarnwik {

std::shared_ptr<Desktop> systemDesktop()
{
    return std::make_shared<GuiDesktop>();
}

bool hasSystemDesktop()
{
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

DesktopMenuBar desktopMenuBar()
{
    return DesktopMenuBar::Optional;
}

bool isSoftwareRendererPreferred()
{
    // Without a graphics card it draws them three times as fast as the processor imitates one.
    return true;
}

} // namespace tarnwik
