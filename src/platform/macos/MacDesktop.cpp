#include "platform/macos/MacDesktop.h"

#include "platform/OutgoingLink.h"
#include "platform/macos/native/Application.h"

#include <QCoreApplication>

namespace tarnwik {

bool MacDesktop::openURL(const QString &url)
{
    const auto link = outgoingLink(url);
    return link && mac::openURL(link->toEncoded().toStdString());
}

void MacDesktop::setRegularActivationPolicy()
{
    mac::setRegularActivationPolicy();
}

void MacDesktop::activateIgnoringOtherApps()
{
    mac::activateIgnoringOtherApps();
}

void MacDesktop::terminate()
{
    // Not at once: whoever asks may be destroyed by it.
    QMetaObject::invokeMethod(QCoreApplication::instance(), &mac::terminateApplication, Qt::QueuedConnection);
}

} // namespace tarnwik
