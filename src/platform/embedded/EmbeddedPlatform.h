#pragma once

#include "platform/PlatformServices.h"

#include <QString>

namespace tarnwik {

/// A platform within the program, for the demo: the customer service, the keychain, the VPN and the user defaults all
/// lie in files of \a folder, so that several programs on one folder see one world.
PlatformServices embeddedPlatform(const QString &folder);

/// Where the demo keeps its world: below the user's data folder.
QString demoFolder();

} // namespace tarnwik
