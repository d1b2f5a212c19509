#pragma once

#include "platform/Desktop.h"

#include <memory>

namespace tarnwik {

// The desktop that the program was built for: which one answers is decided where the program is linked.

/// The system's desktop. There must be a QGuiApplication when it is used.
std::shared_ptr<Desktop> systemDesktop();

/// Whether the person who started the program has a desktop to show windows on.
bool hasSystemDesktop();

/// Whether the desktop has a bar with the active program's menu and with a place for the icons of others.
enum class DesktopMenuBar {
    /// That is up to the person, and may change while the program runs.
    Optional,
    Always,
};

/// Which of these the system's desktops are.
DesktopMenuBar desktopMenuBar();

/// Whether still screens are better drawn by the processor, where nobody has chosen.
bool isSoftwareRendererPreferred();

} // namespace tarnwik
