#pragma once

#include "support/EventLoop.h"
#include "support/Program.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tarnwik::test {

inline QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// A command line, split at its blanks.
inline QStringList words(const char *line)
{
    return text(line).split(u' ', Qt::SkipEmptyParts);
}

/// tarnwikctl as a user and a script see it, in a home of its own.
class TarnwikctlFixture : public testing::Test
{
protected:
    std::unique_ptr<Program> start(const QStringList &arguments, const QByteArray &input = {},
                                   PseudoTerminal *terminal = nullptr, std::function<void()> childSetup = {})
    {
        return std::make_unique<Program>(QStringLiteral(TARNWIKCTL_PROGRAM), arguments,
                                         ProgramSetting{m_home.environment, input, terminal, std::move(childSetup)});
    }

    ProgramResult run(const QStringList &arguments, const QByteArray &input = {}, std::function<void()> childSetup = {})
    {
        return start(arguments, input, nullptr, std::move(childSetup))->result();
    }

    ProgramResult run(const char *line, const QByteArray &input = {}) { return run(words(line), input); }

    /// Runs a command that must succeed silently, and gives its JSON.
    QJsonDocument json(const char *line, const QByteArray &input = {})
    {
        const ProgramResult result = run(words(line) << text("--json"), input);
        EXPECT_EQ(result.status, 0) << line;
        EXPECT_EQ(result.error, "") << line;
        EXPECT_EQ(result.output.count('\n'), 1) << line;
        return QJsonDocument::fromJson(result.output);
    }

    ProgramResult signIntoDemo() { return run("--demo sign-in --email demo@tarnwik.example", "demo\n"); }

    static ProgramResult failure(const QByteArray &sentence, int status = 1) { return {status, "", sentence + '\n'}; }

    ProgramHome m_home;
};

} // namespace tarnwik::test
