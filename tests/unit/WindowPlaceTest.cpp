#include "ui/app/WindowPlace.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace tarnwik {

void PrintTo(const WindowPlace &place, std::ostream *stream)
{
    const QRect &at = place.geometry;
    *stream << at.x() << ',' << at.y() << ' ' << at.width() << 'x' << at.height()
            << (place.isMaximized ? " maximised" : "");
}

namespace {

const WindowPlace place{QRect(100, 80, 960, 680), false};
const QList<QRect> oneScreen{QRect(0, 30, 1920, 1050)};
constexpr QSize minimum(420, 540);

class WindowPlaceTest : public testing::Test
{
protected:
    std::optional<WindowPlace> readBack(const QByteArray &content) const
    {
        QFile file(m_path);
        file.open(QIODevice::WriteOnly);
        file.write(content);
        file.close();
        return WindowPlaceFile(m_path).read();
    }

    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("state/tarnwik/window.json"));
};

TEST_F(WindowPlaceTest, whatWasWrittenIsReadByTheNextRun)
{
    const WindowPlace maximized{QRect(-1200, -3, 500, 600), true};
    EXPECT_TRUE(WindowPlaceFile(m_path).write(place));
    EXPECT_EQ(WindowPlaceFile(m_path).read(), place);
    EXPECT_TRUE(WindowPlaceFile(m_path).write(maximized));
    EXPECT_EQ(WindowPlaceFile(m_path).read(), maximized);
}

TEST_F(WindowPlaceTest, aFirstRunHasNone)
{
    EXPECT_EQ(WindowPlaceFile(m_path).read(), std::nullopt);
}

TEST_F(WindowPlaceTest, garbageIsIgnored)
{
    ASSERT_TRUE(WindowPlaceFile(m_path).write(place));
    EXPECT_TRUE(readBack(R"({"x":1,"y":2,"width":500,"height":600})"));
    for (const char *garbage :
         {"", "nonsense", "[]", "{}", "{\"x\":1,\"y\":2}", R"({"x":"1","y":2,"width":500,"height":600})",
          R"({"x":1,"y":2,"width":0,"height":600})", R"({"x":1,"y":2,"width":500,"height":-600})",
          R"({"x":1,"y":2,"width":500.5,"height":600})", R"({"x":99999999999,"y":2,"width":500,"height":600})",
          R"({"x":1,"y":40000,"width":500,"height":600})"})
        EXPECT_EQ(readBack(garbage), std::nullopt) << garbage;
    EXPECT_EQ(readBack(R"({"x":1,"y":2,"width":500,"height":600)" + QByteArray(100000, ' ') + '}'), std::nullopt);
}

TEST_F(WindowPlaceTest, aPipeInTheFilesPlaceDoesNotHoldTheProgramUp)
{
    const QString pipe = m_folder.filePath(QStringLiteral("pipe"));
    ASSERT_EQ(mkfifo(pipe.toUtf8().constData(), 0600), 0);
    EXPECT_EQ(WindowPlaceFile(pipe).read(), std::nullopt);
}

TEST_F(WindowPlaceTest, aFolderThatCannotBeMadeCostsNothingButThePlace)
{
    EXPECT_FALSE(WindowPlaceFile(QStringLiteral("/proc/none/window.json")).write(place));
}

TEST_F(WindowPlaceTest, theFileLiesInTheUsersStateFolder)
{
    qputenv("XDG_STATE_HOME", "/somewhere/state");
    EXPECT_EQ(WindowPlaceFile::defaultPath(), QStringLiteral("/somewhere/state/tarnwik/window.json"));
    qputenv("XDG_STATE_HOME", "relative");
    EXPECT_TRUE(WindowPlaceFile::defaultPath().endsWith(QStringLiteral("/.local/state/tarnwik/window.json")));
    qunsetenv("XDG_STATE_HOME");
    EXPECT_TRUE(WindowPlaceFile::defaultPath().endsWith(QStringLiteral("/.local/state/tarnwik/window.json")));
}

TEST(FittedToScreens, aPlaceOnAScreenStays)
{
    EXPECT_EQ(fittedToScreens(place.geometry, oneScreen, minimum), place.geometry);
}

TEST(FittedToScreens, aPlaceBesideAllScreensIsMovedOntoTheMainOne)
{
    EXPECT_EQ(fittedToScreens(QRect(5000, 200, 960, 680), oneScreen, minimum), QRect(960, 200, 960, 680));
    EXPECT_EQ(fittedToScreens(QRect(-5000, -900, 960, 680), oneScreen, minimum), QRect(0, 30, 960, 680));
}

TEST(FittedToScreens, aWindowThatSticksOutIsMovedBack)
{
    EXPECT_EQ(fittedToScreens(QRect(1500, 900, 960, 680), oneScreen, minimum), QRect(960, 400, 960, 680));
}

TEST(FittedToScreens, theSecondScreenIsKept)
{
    const QList<QRect> screens{QRect(0, 0, 1920, 1080), QRect(1920, 0, 1280, 1024)};
    EXPECT_EQ(fittedToScreens(QRect(2000, 100, 960, 680), screens, minimum), QRect(2000, 100, 960, 680));
    EXPECT_EQ(fittedToScreens(QRect(1800, 100, 960, 680), screens, minimum), QRect(1920, 100, 960, 680));
}

TEST(FittedToScreens, aWindowLargerThanItsScreenShrinksButNotBelowItsMinimum)
{
    EXPECT_EQ(fittedToScreens(QRect(0, 0, 3000, 2000), {QRect(0, 0, 1024, 768)}, minimum), QRect(0, 0, 1024, 768));
    EXPECT_EQ(fittedToScreens(QRect(10, 10, 3000, 2000), {QRect(0, 0, 400, 300)}, minimum), QRect(0, 0, 420, 540));
    EXPECT_EQ(fittedToScreens(QRect(10, 10, 1, 1), oneScreen, minimum), QRect(10, 30, 420, 540));
}

TEST(FittedToScreens, withoutAScreenNothingChanges)
{
    EXPECT_EQ(fittedToScreens(place.geometry, {}, minimum), place.geometry);
}

} // namespace
} // namespace tarnwik
