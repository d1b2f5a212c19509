#pragma once

#include <memory>

namespace tarnwik {

namespace async {
class Clock;
}
class AppStore;
class Desktop;
class HTTPSession;
class InformationDictionary;
class KeychainServices;
class TunnelManager;
class UserDefaults;

/// The adapters that a program runs on: one for each of the platform's services.
///
/// A program's main() builds one of these and makes it the process-wide platform; everything above the ports reaches
/// the platform through it alone. Used on the main thread.
struct PlatformServices
{
    std::shared_ptr<InformationDictionary> informationDictionary;
    std::shared_ptr<UserDefaults> userDefaults;
    std::shared_ptr<HTTPSession> httpSession;
    std::shared_ptr<KeychainServices> keychain;
    std::shared_ptr<TunnelManager> tunnelManager;
    std::shared_ptr<AppStore> appStore;
    std::shared_ptr<Desktop> desktop;
    std::shared_ptr<async::Clock> clock;

    PlatformServices();
    ~PlatformServices();
    PlatformServices(const PlatformServices &);
    PlatformServices &operator=(const PlatformServices &);

    /// The platform of this process. There must be one: see ScopedPlatform.
    static const PlatformServices &current();
};

/// Makes a platform the process-wide one for as long as it lives, then puts back the one before.
class ScopedPlatform
{
public:
    explicit ScopedPlatform(const PlatformServices &services);
    ~ScopedPlatform();

    ScopedPlatform(const ScopedPlatform &) = delete;
    ScopedPlatform &operator=(const ScopedPlatform &) = delete;

private:
    PlatformServices m_services;
    const PlatformServices *m_previous;
};

} // namespace tarnwik
