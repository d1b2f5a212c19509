#pragma once

#include <QString>

namespace tarnwik {

/// The user's desktop, as far as the program asks anything of it. Lives on the main thread.
class Desktop
{
public:
    virtual ~Desktop() = default;

    /// Opens \a url with the program that the user has chosen for its kind. Whether that was started: http, https and
    /// mailto alone are ever passed on, since addresses come from the server; for all else nothing happens.
    virtual bool openURL(const QString &url) = 0;

    /// Makes this an ordinary application, with its place among the desktop's others.
    virtual void setRegularActivationPolicy() = 0;

    /// Brings this application to the front, whichever the user is looking at.
    virtual void activateIgnoringOtherApps() = 0;

    /// Ends the program, once the event loop comes round.
    virtual void terminate() = 0;
};

} // namespace tarnwik
