#pragma once

#include <string>

namespace tarnwik::mac {

// What the program asks of the application object and the workspace. On the main thread, once Qt has made the
// application object.

/// Gives the program its place in the Dock and a menu bar.
void setRegularActivationPolicy();

void activateIgnoringOtherApps();

/// Ends the program, which the application object may do before this returns.
void terminateApplication();

/// Opens \a url, an encoded address, with the user's program for its kind. Whether that was started.
bool openURL(const std::string &url);

} // namespace tarnwik::mac
