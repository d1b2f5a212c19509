#include "ui/app/CommandLine.h"

#include <gtest/gtest.h>

namespace tarnwik::app {

namespace {

std::variant<Options, Answer> parse(QStringList arguments)
{
    arguments.prepend(QStringLiteral("tarnwik"));
    return parseCommandLine(arguments);
}

Answer answer(const QStringList &arguments)
{
    return std::get<Answer>(parse(arguments));
}

TEST(ShellCommandLine, withoutOptionsItIsTheRealPlatform)
{
    EXPECT_FALSE(std::get<Options>(parse({})).isDemo);
}

TEST(ShellCommandLine, demoAsksForTheDemo)
{
    EXPECT_TRUE(std::get<Options>(parse({QStringLiteral("--demo")})).isDemo);
}

TEST(ShellCommandLine, helpAndVersionAreAnswersThatSucceed)
{
    EXPECT_EQ(answer({QStringLiteral("--version")}).text, QStringLiteral("tarnwik " TARNWIK_VERSION));
    EXPECT_TRUE(answer({QStringLiteral("--help")}).text.startsWith(QStringLiteral("Usage: tarnwik ")));
    EXPECT_EQ(answer({QStringLiteral("-h")}).status, 0);
    EXPECT_EQ(answer({QStringLiteral("--version")}).status, 0);
}

TEST(ShellCommandLine, whatIsUnknownIsRefusedWithAHint)
{
    for (const QString &argument : {QStringLiteral("--nonsense"), QStringLiteral("word"), QStringLiteral("--demo=1")}) {
        EXPECT_EQ(answer({argument}).status, 2) << argument.toStdString();
        EXPECT_TRUE(answer({argument}).text.endsWith(QStringLiteral("\nTry “tarnwik --help”.")));
    }
}

} // namespace
} // namespace tarnwik::app
