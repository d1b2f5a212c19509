#include "platform/linux/LinuxPlatform.h"

#include "async/Clock.h"
#include "platform/EmptyAppStore.h"
#include "platform/linux/NetworkManagerTunnelManager.h"
#include "platform/linux/SecretServiceKeychain.h"
#include "platform/qt/FileInformationDictionary.h"
#include "platform/qt/QtHTTPSession.h"
#include "platform/qt/SettingsUserDefaults.h"

#include <QCoreApplication>
#include <QStandardPaths>

namespace tarnwik {

namespace {

/// The administrator's settings before those that were installed with the program.
QStringList informationDictionaryPaths()
{
    return {QStringLiteral("/etc/tarnwik/info.json"),
            QCoreApplication::applicationDirPath() + QStringLiteral("/../share/tarnwik/info.json")};
}

QString userDefaultsPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/tarnwik/defaults.json");
}

} // namespace

PlatformServices linuxPlatform()
{
    PlatformServices services;
    services.clock = std::make_shared<async::SystemClock>();
    services.informationDictionary = std::make_shared<FileInformationDictionary>(informationDictionaryPaths());
    services.userDefaults = std::make_shared<SettingsUserDefaults>(userDefaultsPath());
    services.httpSession = std::make_shared<QtHTTPSession>(services.clock);
    services.keychain = std::make_shared<SecretServiceKeychain>();
    services.tunnelManager = std::make_shared<NetworkManagerTunnelManager>(services.keychain);
    services.appStore = emptyAppStore();
    return services;
}

} // namespace tarnwik
