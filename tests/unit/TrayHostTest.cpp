#include "ui/app/TrayHost.h"

#include "support/EventLoop.h"
#include "support/SessionBus.h"
#include "support/tray/TestTrayWatcher.h"

#include <gtest/gtest.h>

#include <optional>

namespace tarnwik {

namespace {

using test::spinUntil;
using test::TestTrayWatcher;

class TrayHostTest : public testing::Test
{
protected:
    static bool waitFor(const TrayHost &host, bool isPresent)
    {
        return spinUntil([&] { return host.isPresent() == isPresent; });
    }

    test::SessionBus m_bus;
    std::optional<TestTrayWatcher> m_watcher;
};

TEST_F(TrayHostTest, isPresentWhereThereIsOne)
{
    m_watcher.emplace(m_bus.connection(), true);
    const TrayHost host(m_bus.connection());
    EXPECT_EQ(host.isPresent(), std::nullopt) << "the desktop has not answered yet";
    EXPECT_TRUE(waitFor(host, true));
}

TEST_F(TrayHostTest, aMenuBarThatIsAlwaysThereIsNotAskedFor)
{
    const TrayHost host(m_bus.connection(), DesktopMenuBar::Always);
    EXPECT_EQ(host.isPresent(), true);
    test::settleEvents();
    EXPECT_EQ(host.isPresent(), true);
}

TEST_F(TrayHostTest, isAbsentWithoutAWatcher)
{
    const TrayHost host(m_bus.connection());
    EXPECT_TRUE(waitFor(host, false));
}

TEST_F(TrayHostTest, comesAndGoesWithTheWatcher)
{
    const TrayHost host(m_bus.connection());
    EXPECT_TRUE(waitFor(host, false));
    m_watcher.emplace(m_bus.connection(), true);
    EXPECT_TRUE(waitFor(host, true));
    m_watcher.reset();
    EXPECT_TRUE(waitFor(host, false));
    m_watcher.emplace(m_bus.connection(), true);
    EXPECT_TRUE(waitFor(host, true));
}

TEST_F(TrayHostTest, aWatcherWithoutAPanelIsNoHost)
{
    m_watcher.emplace(m_bus.connection(), false);
    const TrayHost host(m_bus.connection());
    EXPECT_TRUE(waitFor(host, false));
    m_watcher->setHasHost(true);
    EXPECT_TRUE(waitFor(host, true));
    m_watcher->setHasHost(false);
    EXPECT_TRUE(waitFor(host, false));
}

TEST_F(TrayHostTest, withoutABusThereIsNone)
{
    const TrayHost host(QDBusConnection(QStringLiteral("no such connection")));
    EXPECT_TRUE(waitFor(host, false));
}

} // namespace
} // namespace tarnwik
