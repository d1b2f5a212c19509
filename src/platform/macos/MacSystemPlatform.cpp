#include "platform/SystemPlatform.h"

#include "platform/macos/MacPlatform.h"

#include <QByteArray>

namespace tarnwik {

void prepareSystemPlatform()
{
    // The frameworks answer on the main queue, which Qt's event loop serves without windows only if it is told to.
    qputenv("QT_EVENT_DISPATCHER_CORE_FOUNDATION", QByteArrayLiteral("1"));
}

PlatformServices systemPlatform()
{
    return macPlatform();
}

} // namespace tarnwik
