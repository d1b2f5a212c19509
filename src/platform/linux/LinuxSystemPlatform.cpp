#include "platform/SystemPlatform.h"

#include "platform/linux/LinuxPlatform.h"

namespace tarnwik {

void prepareSystemPlatform()
{
    // Any event loop will do.
}

PlatformServices systemPlatform()
{
    return linuxPlatform();
}

} // namespace tarnwik
