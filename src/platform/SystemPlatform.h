#pragma once

#include "platform/PlatformServices.h"

namespace tarnwik {

// The platform that the program was built for: which one answers is decided where the program is linked.

/// Sees to what the system's services need of the event loop. To be called before the application object is made.
void prepareSystemPlatform();

/// The system's services, all but the desktop.
PlatformServices systemPlatform();

} // namespace tarnwik
