#import "platform/macos/native/FoundationValues.h"
#import "platform/macos/native/NativeTunnelProviderManager.h"

namespace tarnwik::mac {

namespace {

/// An observer of the default notification centre, which is removed there when this ends.
class Observation
{
public:
    explicit Observation(id<NSObject> _Nonnull token)
        : m_token(token)
    {
    }

    ~Observation() { [NSNotificationCenter.defaultCenter removeObserver:m_token]; }

    Observation(const Observation &) = delete;
    Observation &operator=(const Observation &) = delete;

private:
    const id<NSObject> _Nonnull m_token;
};

class NativeNetworkExtension final : public NetworkExtension
{
public:
    void loadAllFromPreferences(std::function<void(Loaded)> completion) override
    {
        [NETunnelProviderManager loadAllFromPreferencesWithCompletionHandler:^(
                                     NSArray<NETunnelProviderManager *> *_Nullable managers, NSError *_Nullable error) {
            Loaded loaded;
            loaded.error = platformError(error);
            if (managers)
                loaded.managers.emplace();
            for (NETunnelProviderManager *manager in managers)
                loaded.managers->push_back(std::make_shared<NativeTunnelProviderManager>(manager));
            completion(std::move(loaded));
        }];
    }

    std::shared_ptr<TunnelProviderManager> create() override
    {
        return std::make_shared<NativeTunnelProviderManager>([NETunnelProviderManager new]);
    }

    std::shared_ptr<void> observeStatus(std::function<void()> handler) override
    {
        // From any object: a change of another program's tunnel is as good a moment to look at our own.
        return std::make_shared<Observation>([NSNotificationCenter.defaultCenter
            addObserverForName:NEVPNStatusDidChangeNotification
                        object:nil
                         queue:NSOperationQueue.mainQueue
                    usingBlock:^(NSNotification *) { handler(); }]);
    }
};

} // namespace

std::shared_ptr<NetworkExtension> systemNetworkExtension()
{
    return std::make_shared<NativeNetworkExtension>();
}

} // namespace tarnwik::mac
