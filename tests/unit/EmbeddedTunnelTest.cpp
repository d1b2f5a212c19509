#include "platform/embedded/EmbeddedTunnelManager.h"
#include "support/EventLoop.h"
#include "support/ManualClock.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

using namespace std::chrono_literals;

class EmbeddedTunnel : public testing::Test
{
protected:
    EmbeddedTunnel() { QDir(m_folder.path()).mkdir(QStringLiteral("vpn")); }

    QString path() const { return m_folder.filePath(QStringLiteral("vpn/tunnel.json")); }

    /// Another program's view of the same tunnel.
    std::unique_ptr<EmbeddedTunnelManager> open()
    {
        return std::make_unique<EmbeddedTunnelManager>(
            path(), m_clock, [this](const TunnelProviderProtocol &, bool isUp) { m_told << isUp; },
            [this] { return std::chrono::duration_cast<std::chrono::milliseconds>(m_clock->now()) + 1000s; });
    }

    static std::shared_ptr<TunnelConfiguration> only(EmbeddedTunnelManager &manager)
    {
        const auto list = run(manager.loadAllFromPreferences());
        return list->size() == 1 ? list->front() : nullptr;
    }

    std::shared_ptr<TunnelConfiguration> save(EmbeddedTunnelManager &manager)
    {
        const auto configuration = manager.create();
        configuration->localizedDescription = QStringLiteral("Tarnwik");
        configuration->protocolConfiguration = m_protocol;
        configuration->isEnabled = true;
        run(configuration->saveToPreferences());
        return configuration;
    }

    void pass(std::chrono::nanoseconds duration)
    {
        m_clock->advance(duration);
        settleEvents();
    }

    QTemporaryDir m_folder;
    std::shared_ptr<ManualClock> m_clock = std::make_shared<ManualClock>();
    QList<bool> m_told;
    const TunnelProviderProtocol m_protocol{QStringLiteral("provider"),
                                            QStringLiteral("192.0.2.1:51820"),
                                            false,
                                            {{QStringLiteral("metadata_only"), true},
                                             {QStringLiteral("tunnel_profile_json"), QStringLiteral("{\"é\":1}")}}};
    std::unique_ptr<EmbeddedTunnelManager> m_manager = open();
};

} // namespace

TEST_F(EmbeddedTunnel, isInvalidUntilSaved)
{
    EXPECT_TRUE(run(m_manager->loadAllFromPreferences())->empty());
    const auto configuration = m_manager->create();
    EXPECT_EQ(configuration->status(), VPNStatus::Invalid);
    EXPECT_THROW(run(configuration->startVPNTunnel()), TunnelError);
    EXPECT_NO_THROW(run(configuration->stopVPNTunnel()));
}

TEST_F(EmbeddedTunnel, keepsWhatWasSaved)
{
    save(*m_manager);
    const auto other = open();
    const auto loaded = only(*other);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->localizedDescription, QStringLiteral("Tarnwik"));
    EXPECT_EQ(loaded->protocolConfiguration, m_protocol);
    EXPECT_TRUE(loaded->isEnabled);
    EXPECT_EQ(loaded->status(), VPNStatus::Disconnected);
}

TEST_F(EmbeddedTunnel, goesThroughEveryStatusInItsTime)
{
    const auto configuration = save(*m_manager);
    QSignalSpy changes(m_manager.get(), &TunnelManager::statusDidChange);
    run(configuration->startVPNTunnel());
    EXPECT_EQ(configuration->status(), VPNStatus::Connecting);
    pass(embeddedConnectTime - 1ms);
    EXPECT_EQ(configuration->status(), VPNStatus::Connecting);
    changes.clear();
    pass(1ms);
    EXPECT_EQ(configuration->status(), VPNStatus::Connected);
    EXPECT_GE(changes.count(), 1);
    run(configuration->stopVPNTunnel());
    EXPECT_EQ(configuration->status(), VPNStatus::Disconnecting);
    changes.clear();
    pass(embeddedDisconnectTime);
    EXPECT_EQ(configuration->status(), VPNStatus::Disconnected);
    EXPECT_GE(changes.count(), 1);
    EXPECT_EQ(m_told, QList<bool>({true, false}));
}

TEST_F(EmbeddedTunnel, leavesAStoppedTunnelAlone)
{
    const auto configuration = save(*m_manager);
    run(configuration->stopVPNTunnel());
    EXPECT_EQ(configuration->status(), VPNStatus::Disconnected);
    EXPECT_TRUE(m_told.isEmpty());
}

TEST_F(EmbeddedTunnel, isOneTunnelForSeveralPrograms)
{
    run(save(*m_manager)->startVPNTunnel());
    const auto other = open();
    const auto seen = only(*other);
    QSignalSpy changes(other.get(), &TunnelManager::statusDidChange);
    EXPECT_EQ(seen->status(), VPNStatus::Connecting);
    pass(embeddedConnectTime);
    EXPECT_EQ(seen->status(), VPNStatus::Connected);
    EXPECT_GE(changes.count(), 1);
    changes.clear();
    run(only(*m_manager)->stopVPNTunnel());
    EXPECT_TRUE(spinUntil([&] { return changes.count() > 0; })) << "the other program was not told";
    EXPECT_EQ(seen->status(), VPNStatus::Disconnecting);
}

TEST_F(EmbeddedTunnel, startsAfreshFromAFileThatIsNone)
{
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("\x00\xff garbage");
    file.close();
    EXPECT_TRUE(run(m_manager->loadAllFromPreferences())->empty());
    EXPECT_EQ(save(*m_manager)->status(), VPNStatus::Disconnected);
}

} // namespace tarnwik::test
