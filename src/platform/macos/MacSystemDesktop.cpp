#include "platform/gui/SystemDesktop.h"

#include "platform/macos/MacDesktop.h"

namespace tarnwik {

std::shared_ptr<Desktop> systemDesktop()
{
    return std::make_shared<MacDesktop>();
}

bool hasSystemDesktop()
{
    return true;
}

DesktopMenuBar desktopMenuBar()
{
    return DesktopMenuBar::Always;
}

bool isSoftwareRendererPreferred()
{
    // Every Mac has a graphics processor, and its displays have many pixels.
    return false;
}

} // namespace tarnwik
