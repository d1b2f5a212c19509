#include "ui/controls/Contrast.h"

#include <gtest/gtest.h>

namespace tarnwik::test {

TEST(Contrast, isTwentyOneBetweenBlackAndWhiteAndOneBetweenEquals)
{
    EXPECT_NEAR(Contrast::ratio(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(Contrast::ratio(Qt::white, Qt::black), 21, 0.01);
    EXPECT_NEAR(Contrast::ratio(QColor(12, 34, 56), QColor(12, 34, 56)), 1, 0.0001);
}

TEST(Contrast, agreesWithThePublishedThresholdGreys)
{
    EXPECT_GE(Contrast::ratio(QColor(0x76, 0x76, 0x76), Qt::white), 4.5);
    EXPECT_LT(Contrast::ratio(QColor(0x77, 0x77, 0x77), Qt::white), 4.5);
    EXPECT_GE(Contrast::ratio(QColor(0x94, 0x94, 0x94), Qt::white), 3.0);
    EXPECT_LT(Contrast::ratio(QColor(0x95, 0x95, 0x95), Qt::white), 3.0);
}

TEST(Contrast, seesWhatLiesBehindATranslucentColor)
{
    EXPECT_EQ(Contrast::over(QColor(0, 0, 0, 0), QColor(10, 20, 30)).rgb(), QColor(10, 20, 30).rgb());
    EXPECT_EQ(Contrast::over(QColor(255, 255, 255, 51), Qt::black).rgb(), QColor(51, 51, 51).rgb());
    EXPECT_NEAR(Contrast::ratio(QColor(0, 0, 0, 0), Qt::white), 1, 0.0001);
    EXPECT_NEAR(Contrast::ratio(QColor(0, 0, 0, 140), Qt::white), Contrast::ratio(QColor(115, 115, 115), Qt::white),
                0.02);
}

TEST(Contrast, leavesAReadableColorAsItIs)
{
    EXPECT_EQ(Contrast::readable(QColor(0x20, 0x40, 0xc0), Qt::white, 4.5).rgb(), QColor(0x20, 0x40, 0xc0).rgb());
}

TEST(Contrast, darkensOnLightAndLightensOnDarkJustAsFarAsItTakes)
{
    const QColor yellow(0xff, 0xd6, 0x0a);
    const auto onWhite = Contrast::readable(yellow, Qt::white, 4.5);
    EXPECT_GE(Contrast::ratio(onWhite, Qt::white), 4.5);
    EXPECT_LT(Contrast::ratio(onWhite, Qt::white), 5);
    EXPECT_LT(onWhite.lightness(), yellow.lightness());
    EXPECT_NEAR(onWhite.hslHue(), yellow.hslHue(), 3);

    const QColor navy(0, 0, 0x80);
    const auto onBlack = Contrast::readable(navy, Qt::black, 4.5);
    EXPECT_GE(Contrast::ratio(onBlack, Qt::black), 4.5);
    EXPECT_LT(Contrast::ratio(onBlack, Qt::black), 5);
    EXPECT_GT(onBlack.lightness(), navy.lightness());
}

TEST(Contrast, goesToTheEndWhereNothingIsReadableEnough)
{
    EXPECT_EQ(Contrast::readable(QColor(0x80, 0x80, 0x80), QColor(0x77, 0x77, 0x77), 21).rgb(),
              QColor(Qt::black).rgb());
}

} // namespace tarnwik::test
