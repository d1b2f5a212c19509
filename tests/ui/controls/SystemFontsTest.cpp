#include "ui/controls/SystemFonts.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QStringList>

#include <gtest/gtest.h>

namespace tarnwik::test {

TEST(SystemFonts, areInterWhereItIsInstalled)
{
    if (!QFontDatabase::hasFamily(QStringLiteral("Inter")))
        GTEST_SKIP() << "Inter is not installed.";
    EXPECT_EQ(SystemFonts::textFamily(), QStringLiteral("Inter"));
    EXPECT_EQ(SystemFonts::titleFamily(), QStringLiteral("Inter Display"));
}

TEST(SystemFonts, areTheDesktopsOwnElsewhere)
{
    EXPECT_EQ(SystemFonts::firstInstalled({QStringLiteral("No Such Family")}), QGuiApplication::font().family());
}

TEST(SystemFonts, areTheFirstThatIsThere)
{
    const auto families = QFontDatabase::families();
    ASSERT_FALSE(families.isEmpty());
    EXPECT_EQ(SystemFonts::firstInstalled({QStringLiteral("No Such Family"), families.first()}), families.first());
}

} // namespace tarnwik::test
