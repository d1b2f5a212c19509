#include "platform/macos/MacPlatform.h"

#include "async/Clock.h"
#include "platform/macos/MacInformationDictionary.h"
#include "platform/macos/MacKeychain.h"
#include "platform/macos/MacTunnelManager.h"
#include "platform/macos/MacUserDefaults.h"
#include "platform/macos/storekit/StoreKitAppStore.h"
#include "platform/qt/QtHTTPSession.h"

namespace tarnwik {

PlatformServices macPlatform()
{
    PlatformServices services;
    services.clock = std::make_shared<async::SystemClock>();
    services.informationDictionary = std::make_shared<MacInformationDictionary>();
    services.userDefaults = std::make_shared<MacUserDefaults>();
    services.httpSession = std::make_shared<QtHTTPSession>(services.clock);
    services.keychain = std::make_shared<MacKeychain>();
    services.tunnelManager = std::make_shared<MacTunnelManager>(mac::systemNetworkExtension());
    services.appStore = storeKitAppStore();
    return services;
}

} // namespace tarnwik
