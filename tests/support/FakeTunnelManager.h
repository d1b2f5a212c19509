#pragma once

#include "async/Gate.h"
#include "platform/TunnelManager.h"

#include <QMap>

namespace tarnwik::test {

class FakeTunnelManager;

/// A tunnel configuration whose system is the test.
class FakeTunnelConfiguration final : public TunnelConfiguration
{
public:
    explicit FakeTunnelConfiguration(FakeTunnelManager *manager)
        : m_manager(manager)
    {
    }

    VPNStatus currentStatus = VPNStatus::Invalid;
    std::optional<QString> disconnectError;

    Task<> saveToPreferences() override;
    Task<> loadFromPreferences() override;
    Task<> startVPNTunnel() override;
    Task<> stopVPNTunnel() override;
    VPNStatus status() const override { return currentStatus; }
    std::optional<QString> lastDisconnectError() const override { return disconnectError; }

private:
    FakeTunnelManager *m_manager;
};

/// A tunnel manager that records what is asked of it. Operations end on the next turn of the event loop, unless the
/// test holds them or lets them fail.
class FakeTunnelManager final : public TunnelManager
{
    Q_OBJECT

public:
    /// The operations that have begun, in order: "loadAll", "create", "save", "load", "start", "stop".
    QStringList operations;
    /// What the system has saved; nothing for a system without a list.
    std::optional<Configurations> saved = Configurations();
    /// The sentence that an operation fails with, by its name.
    QMap<QString, QString> failures;
    /// Operations that wait until release().
    QStringList held;
    /// The configurations that create() made.
    std::vector<std::shared_ptr<FakeTunnelConfiguration>> created;

    Task<std::optional<Configurations>> loadAllFromPreferences() override;
    std::shared_ptr<TunnelConfiguration> create() override;

    /// A saved configuration of this description.
    std::shared_ptr<FakeTunnelConfiguration> addSaved(const std::optional<QString> &description);
    void release();

    /// One operation's course; configurations use it too.
    Task<> perform(QString operation);

private:
    std::vector<std::shared_ptr<async::Gate>> m_gates;
};

} // namespace tarnwik::test
