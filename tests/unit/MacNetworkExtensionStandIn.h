#pragma once

#include "platform/macos/native/NetworkExtension.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace tarnwik::test {

/// A tunnel provider manager whose system the test plays.
class MacManagerStandIn final : public mac::TunnelProviderManager
{
public:
    mac::TunnelManagerFields saved;
    long currentStatus = 0;
    std::optional<mac::PlatformError> saveError;
    std::optional<mac::PlatformError> loadError;
    std::optional<mac::PlatformError> startError;
    std::optional<mac::PlatformError> disconnectError;
    /// What the status is right after the calls.
    long statusAfterStart = 2;
    long statusAfterStop = 5;
    /// Completions wait in `held` until the test calls them.
    bool isHolding = false;
    std::vector<std::function<void()>> held;
    std::vector<std::string> calls;

    mac::TunnelManagerFields fields() const override { return m_fields; }

    void setFields(const mac::TunnelManagerFields &fields) override
    {
        calls.emplace_back("setFields");
        m_fields = fields;
    }

    void saveToPreferences(Completion completion) override
    {
        calls.emplace_back("save");
        if (!saveError)
            saved = m_fields;
        answer(completion, saveError);
    }

    void loadFromPreferences(Completion completion) override
    {
        calls.emplace_back("load");
        if (!loadError)
            m_fields = saved;
        answer(completion, loadError);
    }

    std::optional<mac::PlatformError> startVPNTunnel() override
    {
        calls.emplace_back("start");
        if (!startError)
            currentStatus = statusAfterStart;
        return startError;
    }

    void stopVPNTunnel() override
    {
        calls.emplace_back("stop");
        if (currentStatus > 1)
            currentStatus = statusAfterStop;
    }

    long status() const override { return currentStatus; }

    void fetchLastDisconnectError(Completion completion) override
    {
        calls.emplace_back("fetchLastDisconnectError");
        answer(completion, disconnectError);
    }

    /// Lets the fields be as if they had been read from the preferences.
    void read() { m_fields = saved; }

private:
    /// Like the system, on a thread of its own.
    void answer(const Completion &completion, const std::optional<mac::PlatformError> &error)
    {
        if (isHolding)
            held.emplace_back([completion, error] { completion(error); });
        else
            std::thread(completion, error).join();
    }

    mac::TunnelManagerFields m_fields;
};

/// NetworkExtension with managers that the test makes.
class MacNetworkExtensionStandIn final : public mac::NetworkExtension
{
public:
    using Manager = std::shared_ptr<MacManagerStandIn>;

    std::vector<Manager> managers;
    bool hasList = true;
    std::optional<mac::PlatformError> loadError;
    bool isHolding = false;
    std::vector<std::function<void()>> held;
    /// The handlers of whoever observes the status; expired ones have stopped.
    std::vector<std::weak_ptr<std::function<void()>>> observers;
    /// What create() made.
    std::vector<Manager> created;

    Manager addSaved(const std::optional<std::string> &description, long status = 1)
    {
        const auto manager = std::make_shared<MacManagerStandIn>();
        manager->saved.localizedDescription = description;
        manager->currentStatus = status;
        manager->read();
        managers.push_back(manager);
        return manager;
    }

    /// The status of some tunnel changed.
    void notify() const
    {
        for (const auto &observer : observers) {
            if (const auto handler = observer.lock())
                (*handler)();
        }
    }

    void loadAllFromPreferences(std::function<void(Loaded)> completion) override
    {
        Loaded loaded;
        loaded.error = loadError;
        if (hasList && !loadError)
            loaded.managers.emplace(managers.begin(), managers.end());
        if (isHolding)
            held.emplace_back([completion, loaded] { completion(loaded); });
        else
            std::thread(completion, loaded).join();
    }

    std::shared_ptr<mac::TunnelProviderManager> create() override
    {
        return created.emplace_back(std::make_shared<MacManagerStandIn>());
    }

    std::shared_ptr<void> observeStatus(std::function<void()> handler) override
    {
        const auto observer = std::make_shared<std::function<void()>>(std::move(handler));
        observers.push_back(observer);
        return observer;
    }
};

} // namespace tarnwik::test
