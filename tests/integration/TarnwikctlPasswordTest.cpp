#include "TarnwikctlFixture.h"

#include <QDirIterator>

#include <csignal>
#include <sys/resource.h>

namespace tarnwik {

namespace {

using test::ProgramResult;
using test::text;
using test::words;

class TarnwikctlPassword : public test::TarnwikctlFixture
{
protected:
    /// Starts sign-in on the terminal and waits until it asks.
    std::unique_ptr<test::Program> ask()
    {
        auto program = start(words("--demo sign-in --email demo@tarnwik.example"), {}, &m_terminal);
        EXPECT_TRUE(test::spinUntil([&] { return m_terminal.text().contains("Password: "); }));
        EXPECT_FALSE(m_terminal.hasEcho());
        return program;
    }

    /// Every file below the user's home that holds \a bytes.
    QStringList filesWith(const QByteArray &bytes)
    {
        QStringList found;
        QDirIterator files(m_home.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (file.open(QIODevice::ReadOnly) && file.readAll().contains(bytes))
                found << file.fileName();
        }
        return found;
    }

    test::PseudoTerminal m_terminal;
};

TEST_F(TarnwikctlPassword, isAskedForWithoutEcho)
{
    const auto program = ask();
    m_terminal.type("demo\n");
    EXPECT_EQ(program->result(), (ProgramResult{0, "Signed in as demo@tarnwik.example.\n", ""}));
    EXPECT_EQ(m_terminal.text(), "Password: \r\n");
    EXPECT_TRUE(m_terminal.hasEcho());
}

TEST_F(TarnwikctlPassword, whenWrongIsRefusedWithTheEchoBack)
{
    const auto program = ask();
    m_terminal.type("hunter2\n");
    EXPECT_EQ(program->result().status, 1);
    EXPECT_TRUE(m_terminal.hasEcho());
    EXPECT_FALSE(m_terminal.text().contains("hunter2"));
}

TEST_F(TarnwikctlPassword, interruptedFromTheKeyboardEndsWithTheEchoBack)
{
    const auto program = ask();
    m_terminal.type("dem\x03");
    EXPECT_EQ(program->endingSignal(), SIGINT);
    EXPECT_TRUE(m_terminal.hasEcho());
    EXPECT_EQ(program->output(), "");
}

TEST_F(TarnwikctlPassword, endedBySignalsGivesTheEchoBack)
{
    for (const int signal : {SIGTERM, SIGHUP, SIGQUIT}) {
        test::PseudoTerminal terminal;
        const auto program = start(words("--demo sign-in --email demo@tarnwik.example"), {}, &terminal, [] {
            // The end by SIGQUIT leaves no core behind.
            const rlimit none{};
            setrlimit(RLIMIT_CORE, &none);
        });
        ASSERT_TRUE(test::spinUntil([&] { return terminal.text().contains("Password: "); }));
        EXPECT_FALSE(terminal.hasEcho());
        program->sendSignal(signal);
        EXPECT_EQ(program->endingSignal(), signal);
        EXPECT_TRUE(terminal.hasEcho()) << signal;
    }
}

TEST_F(TarnwikctlPassword, maybeNoneAtTheTerminalEither)
{
    const auto program = ask();
    m_terminal.type("\x04");
    EXPECT_EQ(program->result().status, 1);
    EXPECT_TRUE(test::spinUntil([&] { return m_terminal.text().endsWith("No password was given.\r\n"); }));
    EXPECT_TRUE(m_terminal.hasEcho());
}

TEST_F(TarnwikctlPassword, isOneLineOfStandardInput)
{
    EXPECT_EQ(run("--demo sign-in --email demo@tarnwik.example", "demo").status, 0);
    EXPECT_EQ(run("--demo sign-in --email demo@tarnwik.example", "demo\nmore\n").status, 0);
    EXPECT_EQ(run("--demo sign-in --email demo@tarnwik.example", " demo\n").status, 1);
}

TEST_F(TarnwikctlPassword, thatCannotBeOneIsRefusedWithASentence)
{
    const char *line = "--demo sign-in --email demo@tarnwik.example";
    EXPECT_EQ(run(line, ""), failure("No password was given."));
    EXPECT_EQ(run(line, "d\xff\n"), failure("The password is no UTF-8 text."));
    EXPECT_EQ(run(line, QByteArray(4097, 'x') + '\n'), failure("The password is too long."));
    EXPECT_EQ(run(line, QByteArray(10'000'000, 'x')), failure("The password is too long."));
}

TEST_F(TarnwikctlPassword, asAnArgumentIsRefusedAndNotRepeated)
{
    for (const char *argument : {"hunter2", "--password=hunter2", "-phunter2", "-hunter2", "--json=hunter2"}) {
        const auto result = run(words("--demo sign-in --email demo@tarnwik.example") << text(argument));
        EXPECT_EQ(result.status, 2) << argument;
        EXPECT_EQ(result.output, "") << argument;
        for (const char *part : {"hunter2", "u, n, t"})
            EXPECT_FALSE(result.error.contains(part)) << result.error.constData();
    }
}

TEST_F(TarnwikctlPassword, standsNowhereAfterwards)
{
    const auto program = ask();
    QFile commandLine(QStringLiteral("/proc/%1/cmdline").arg(program->processID()));
    ASSERT_TRUE(commandLine.open(QIODevice::ReadOnly));
    m_terminal.type("correct-horse\n");
    EXPECT_FALSE(commandLine.readAll().contains("correct-horse"));
    const auto result = program->result();
    EXPECT_FALSE((result.output + result.error + m_terminal.text()).contains("correct-horse"));
    EXPECT_EQ(filesWith("correct-horse"), QStringList());
    // What does stand on the disk is found this way.
    EXPECT_NE(filesWith("demo@tarnwik.example"), QStringList());
}

class TarnwikctlProgress : public TarnwikctlPassword
{
};

TEST_F(TarnwikctlProgress, goesToATerminalOnly)
{
    signIntoDemo();
    const auto program = start(words("--demo connect"), {}, &m_terminal);
    EXPECT_EQ(program->result(), (ProgramResult{0, "Connected through Helsinki 1.\n", ""}));
    EXPECT_TRUE(test::spinUntil([&] { return m_terminal.text() == "Connecting to Helsinki 1…\r\n"; }))
        << m_terminal.text().constData();
}

} // namespace

} // namespace tarnwik
