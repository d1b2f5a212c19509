#include "ui/app/TarnwikApp.h"

#include "support/ModelFixture.h"
#include "ui/app/WindowPlace.h"

#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

namespace tarnwik::test {

namespace {

const QStringList toTheFront{text("regular"), text("activate")};

/// The whole program over a platform of stand-ins, on a desktop without a message bus and so without a tray.
class TarnwikAppTest : public ModelTest
{
protected:
    void launch()
    {
        m_app.emplace(WindowPlaceFile(m_folder.filePath(text("place"))));
        m_app->applicationDidFinishLaunching();
    }

    static QWindow *windowNamed(const char *name)
    {
        for (QWindow *window : QGuiApplication::topLevelWindows()) {
            if (window->objectName() == text(name))
                return window;
        }
        return nullptr;
    }

    QStringList takeDesktopOperations() { return std::exchange(m_platform.desktop->operations, {}); }

    bool hasAskedForTheTunnel() const
    {
        return spinUntil([this] { return m_platform.tunnelManager->operations.contains(text("loadAll")); });
    }

    QTemporaryDir m_folder;
    std::optional<TarnwikApp> m_app;
};

TEST_F(TarnwikAppTest, theLaunchShowsTheMainWindowAsAnOrdinaryProgram)
{
    launch();
    ASSERT_TRUE(windowNamed("main"));
    EXPECT_TRUE(windowNamed("main")->isVisible());
    EXPECT_EQ(windowNamed("main")->title(), text("Tarnwik"));
    EXPECT_EQ(takeDesktopOperations(), toTheFront);
}

TEST_F(TarnwikAppTest, openingTheWindowAlwaysBringsTheProgramToTheFront)
{
    launch();
    takeDesktopOperations();
    m_app->openMainWindow();
    EXPECT_EQ(takeDesktopOperations(), toTheFront) << "the window is open already";
    QWindow *window = windowNamed("main");
    QTest::keyClick(window, Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(takeDesktopOperations(), toTheFront) << "Open Dashboard";
    QTest::keyClick(window, Qt::Key_Comma, Qt::ControlModifier);
    ASSERT_TRUE(windowNamed("settings"));
    takeDesktopOperations();
    window->close();
    m_app->openMainWindow();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(takeDesktopOperations(), toTheFront) << "the window was closed";
}

TEST_F(TarnwikAppTest, theSettingsOpenOverTheMiddleOfTheWindow)
{
    launch();
    windowNamed("main")->setGeometry(100, 50, 600, 540);
    QTest::keyClick(windowNamed("main"), Qt::Key_Comma, Qt::ControlModifier);
    const QPoint distance = windowNamed("settings")->geometry().center() - QRect(100, 50, 600, 540).center();
    EXPECT_LE(distance.manhattanLength(), 2);
}

TEST_F(TarnwikAppTest, theMenuBarViewAppearsAtTheStartThoughNobodyIsSignedIn)
{
    m_platform.tunnelManager->addSaved(text("Tarnwik"))->currentStatus = VPNStatus::Connected;
    launch();
    EXPECT_TRUE(hasAskedForTheTunnel());
    EXPECT_TRUE(requests().isEmpty());
}

TEST_F(TarnwikAppTest, eachSceneThatIsShownRunsTheStoresTask)
{
    launch();
    const auto entitlements = [this] { return m_platform.appStore->operations.count(text("entitlements")); };
    // That of the main window and that of the menu-bar view.
    EXPECT_TRUE(spinUntil([&] { return entitlements() == 2; }));
    QTest::keyClick(windowNamed("main"), Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_TRUE(spinUntil([&] { return entitlements() == 3; }));
}

TEST_F(TarnwikAppTest, withoutATrayTheLastWindowsEndIsTheProgramsEnd)
{
    launch();
    EXPECT_TRUE(spinUntil([this] { return m_platform.appStore->operations.count(text("entitlements")) == 2; }));
    QTest::keyClick(windowNamed("main"), Qt::Key_Comma, Qt::ControlModifier);
    takeDesktopOperations();
    windowNamed("main")->close();
    EXPECT_TRUE(takeDesktopOperations().isEmpty()) << "the settings are open";
    windowNamed("settings")->close();
    EXPECT_EQ(takeDesktopOperations(), QStringList(text("terminate")));
}

TEST_F(TarnwikAppTest, aWindowThatIsClosedBeforeItsFirstPictureWaitsForTheDesktopsAnswer)
{
    launch();
    takeDesktopOperations();
    windowNamed("main")->close();
    EXPECT_TRUE(m_platform.desktop->operations.isEmpty()) << "there may be a tray";
    EXPECT_TRUE(spinUntil([this] { return m_platform.desktop->operations == QStringList(text("terminate")); }));
}

} // namespace
} // namespace tarnwik::test
