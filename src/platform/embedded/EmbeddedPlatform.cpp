#include "platform/embedded/EmbeddedPlatform.h"

#include "api/JSON.h"
#include "api/TunnelModels.h"
#include "async/Clock.h"
#include "platform/InformationDictionary.h"
#include "platform/ProviderConfigurationKeys.h"
#include "platform/embedded/EmbeddedHTTPSession.h"
#include "platform/embedded/EmbeddedTunnelManager.h"
#include "platform/embedded/FileKeychain.h"
#include "platform/embedded/store/EmbeddedAppStore.h"
#include "platform/embedded/store/EmbeddedStoreControl.h"
#include "platform/qt/SettingsUserDefaults.h"
#include "service/CustomerService.h"
#include "service/Seed.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace tarnwik {

namespace {

const QString demoHost = QStringLiteral("demo.tarnwik.example");

class DemoInformationDictionary final : public InformationDictionary
{
public:
    QVariant object(const QString &key) const override
    {
        return key == QStringLiteral("TarnwikDefaultServerURL") ? QVariant(QStringLiteral("https://") + demoHost)
                                                                : QVariant();
    }
};

/// The service of this process, opened when it is first needed: every copy of what this returns gives the same one. It
/// takes what was bought in the store in \a storeFolder.
EmbeddedHTTPSession::ServiceSource serviceIn(const QString &path, const QString &storeFolder)
{
    const auto opened = std::make_shared<std::shared_ptr<service::CustomerService>>();
    return [path, storeFolder, opened] {
        if (!*opened) {
            service::CustomerServiceOptions options;
            options.databasePath = path;
            options.seed = service::builtInSeed();
            // Asked at each transaction: the store has no root before its first one.
            options.storeRoot = [storeFolder] { return embeddedStoreRoot(storeFolder); };
            *opened = std::make_shared<service::CustomerService>(options);
        }
        return *opened;
    };
}

/// Lets usage grow while the tunnel runs, and stand still while it does not.
EmbeddedTunnelManager::TunnelListener usageFollowing(EmbeddedHTTPSession::ServiceSource service)
{
    return [service = std::move(service)](const TunnelProviderProtocol &protocol, bool isRunning) {
        const QByteArray json = protocol.providerConfiguration.value(providerKeys::tunnelProfile).toString().toUtf8();
        try {
            service()->setTunnelRunning(decode<TunnelProfile>(json).id, isRunning);
        } catch (const LocalizedError &) {
            // The tunnel goes its way; only the demo's usage stands still.
        }
    };
}

} // namespace

PlatformServices embeddedPlatform(const QString &folder)
{
    QDir().mkpath(folder);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QDir files(folder);
    const QString storeFolder = embeddedStoreFolder(folder);
    const auto service = serviceIn(files.filePath(QStringLiteral("service.sqlite")), storeFolder);
    PlatformServices services;
    services.clock = std::make_shared<async::SystemClock>();
    services.informationDictionary = std::make_shared<DemoInformationDictionary>();
    services.userDefaults = std::make_shared<SettingsUserDefaults>(files.filePath(QStringLiteral("defaults.json")));
    services.httpSession = std::make_shared<EmbeddedHTTPSession>(demoHost, service);
    services.keychain = std::make_shared<FileKeychain>(files.filePath(QStringLiteral("keychain.json")));
    // A folder of its own: the other files change too, and these changes are none of the tunnel's.
    services.tunnelManager = std::make_shared<EmbeddedTunnelManager>(files.filePath(QStringLiteral("vpn/tunnel.json")),
                                                                     services.clock, usageFollowing(service));
    services.appStore = embeddedAppStore(storeFolder, services.clock);
    return services;
}

QString demoFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/tarnwik/demo");
}

} // namespace tarnwik
