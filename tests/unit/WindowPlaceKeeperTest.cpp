#include "ui/app/WindowPlaceKeeper.h"

#include "support/EventLoop.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QScreen>
#include <QTemporaryDir>
#include <QWindow>

namespace tarnwik {

namespace {

using test::spinUntil;

class WindowPlaceKeeperTest : public testing::Test
{
protected:
    std::unique_ptr<QWindow> window() const
    {
        auto window = std::make_unique<QWindow>();
        window->setMinimumSize(QSize(420, 540));
        window->resize(700, 600);
        new WindowPlaceKeeper(m_file, window.get());
        return window;
    }

    QTemporaryDir m_folder;
    const WindowPlaceFile m_file{m_folder.filePath(QStringLiteral("window.json"))};
};

TEST_F(WindowPlaceKeeperTest, aFirstWindowKeepsTheSizeThatItWasMadeWith)
{
    EXPECT_EQ(window()->size(), QSize(700, 600));
}

TEST_F(WindowPlaceKeeperTest, aNewWindowComesBackWhereTheLastOneWas)
{
    auto first = window();
    first->show();
    first->setGeometry(40, 50, 430, 550);
    first->close();
    EXPECT_EQ(window()->geometry(), QRect(40, 50, 430, 550));
}

TEST_F(WindowPlaceKeeperTest, aChangeIsWrittenSoonThoughTheWindowStays)
{
    auto shown = window();
    shown->show();
    shown->setGeometry(60, 70, 440, 560);
    const WindowPlace wanted{QRect(60, 70, 440, 560), false};
    EXPECT_TRUE(spinUntil([&] { return m_file.read() == wanted; }));
}

TEST_F(WindowPlaceKeeperTest, aWindowThatWasNeverShownWritesNothing)
{
    auto hidden = window();
    hidden->setGeometry(60, 70, 440, 560);
    hidden->close();
    hidden.reset();
    EXPECT_EQ(m_file.read(), std::nullopt);
}

TEST_F(WindowPlaceKeeperTest, aPlaceOffTheScreenIsMended)
{
    m_file.write({QRect(30000, 30000, 500, 550), false});
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_TRUE(screen.contains(window()->geometry()));
}

TEST_F(WindowPlaceKeeperTest, aMaximisedWindowComesBackMaximisedAndRemembersItsOwnPlace)
{
    m_file.write({QRect(40, 50, 430, 550), true});
    auto shown = window();
    // Not show(), which takes the state back.
    shown->setVisible(true);
    EXPECT_TRUE(shown->windowStates().testFlag(Qt::WindowMaximized));
    shown->close();
    EXPECT_EQ(m_file.read(), (WindowPlace{QRect(40, 50, 430, 550), true}));
}

} // namespace
} // namespace tarnwik
