#pragma once

#include "platform/gui/SystemDesktop.h"

#include <QString>

namespace tarnwik {

/// \a text as the title of an item in a menu that the desktop shows for the program: so that every character of it is
/// seen, where "&", and on the bus "_", marks the key of an item, and that it stays one line, which ends with an
/// ellipsis where it would be wider than a menu should be.
QString menuText(const QString &text, DesktopMenuBar menuBar = desktopMenuBar());

} // namespace tarnwik
