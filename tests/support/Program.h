#pragma once

#include <QProcess>
#include <QSocketNotifier>
#include <QTemporaryDir>

#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>

namespace tarnwik::test {

/// What came of a program that has ended.
struct ProgramResult
{
    /// The exit status; nothing when a signal ended the program, or when it did not end in time.
    std::optional<int> status;
    QByteArray output;
    QByteArray error;

    bool operator==(const ProgramResult &) const = default;
};

/// For the messages of failing tests.
void PrintTo(const ProgramResult &result, std::ostream *stream);

/// A user's folders, all in one temporary directory, and an environment that leads to them and to no message bus.
class ProgramHome
{
public:
    ProgramHome();

    QString path(const QString &name = {}) const { return m_folder.filePath(name); }
    QProcessEnvironment environment;

    /// The whole of a file, or nothing when there is none.
    std::optional<QByteArray> read(const QString &name) const;
    /// Writes a file, and makes the folders that it lies in.
    void write(const QString &name, const QByteArray &bytes) const;

private:
    QTemporaryDir m_folder;
};

/// A pseudo-terminal. What is written to it stands in text(), echo included.
class PseudoTerminal
{
public:
    PseudoTerminal();
    ~PseudoTerminal();

    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    void type(const QByteArray &bytes) const;
    bool hasEcho() const;
    const QByteArray &text() const { return m_text; }

    /// Makes this the calling process's controlling terminal, standard input and standard error. Safe after a fork.
    void adopt() const;

private:
    int m_master = -1;
    int m_slave = -1;
    QByteArray m_text;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

/// How a program is run, beside its arguments.
struct ProgramSetting
{
    QProcessEnvironment environment;
    /// All of standard input, unless there is a terminal.
    QByteArray input;
    /// What standard input and standard error are, if they are one. Must outlive the program.
    PseudoTerminal *terminal = nullptr;
    /// Runs in the child before the program does. May do no more than what is safe after a fork.
    std::function<void()> childSetup;
};

/// A running program of the test's own, killed with the object. Needs the test's event loop to run, as waiting does.
class Program
{
public:
    Program(const QString &program, const QStringList &arguments, const ProgramSetting &setting);
    ~Program();

    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    qint64 processID() const { return m_process.processId(); }
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    void sendSignal(int signal) const;

    /// What it has written to standard output so far.
    const QByteArray &output();
    /// Waits until standard output holds \a text.
    bool waitForOutput(const QByteArray &text);

    /// Waits for the end.
    ProgramResult result();
    /// Waits for the end, by a signal; which one.
    std::optional<int> endingSignal();

private:
    QProcess m_process;
    QByteArray m_output;
};

/// Lets the calling process obey the permissions of files even if it is the superuser's. For ProgramSetting::childSetup.
void obeyFilePermissions();

} // namespace tarnwik::test
