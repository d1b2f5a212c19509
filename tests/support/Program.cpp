#include "support/Program.h"

#include "support/EventLoop.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <linux/capability.h>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <ostream>
#include <pty.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <termios.h>
#include <unistd.h>

namespace tarnwik::test {

void PrintTo(const ProgramResult &result, std::ostream *stream)
{
    *stream << (result.status ? "status " + std::to_string(*result.status) : std::string("no status")) << ", output:\n"
            << result.output.toStdString() << "error:\n"
            << result.error.toStdString();
}

ProgramHome::ProgramHome()
    : environment(QProcessEnvironment::systemEnvironment())
{
    for (const auto &[name, folder] : {std::pair("HOME", ""), std::pair("XDG_CONFIG_HOME", "config"),
                                       std::pair("XDG_DATA_HOME", "data"), std::pair("XDG_RUNTIME_DIR", "runtime")})
        environment.insert(QLatin1String(name), path(QLatin1String(folder)));
    QDir().mkdir(path(QStringLiteral("runtime")));
    QFile::setPermissions(path(QStringLiteral("runtime")), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("disabled:"));
    environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"),
                       QStringLiteral("unix:path=") + path(QStringLiteral("no-bus")));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    environment.remove(QStringLiteral("DISPLAY"));
}

std::optional<QByteArray> ProgramHome::read(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
}

void ProgramHome::write(const QString &name, const QByteArray &bytes) const
{
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("A file of the test's user cannot be written.");
}

PseudoTerminal::PseudoTerminal()
{
    if (openpty(&m_master, &m_slave, nullptr, nullptr, nullptr) != 0)
        throw std::runtime_error("There is no pseudo-terminal to be had.");
    for (const int end : {m_master, m_slave})
        fcntl(end, F_SETFD, FD_CLOEXEC);
    m_notifier = std::make_unique<QSocketNotifier>(m_master, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] {
        std::array<char, 4096> buffer{};
        const auto count = ::read(m_master, buffer.data(), buffer.size());
        if (count > 0)
            m_text.append(buffer.data(), count);
    });
}

PseudoTerminal::~PseudoTerminal()
{
    m_notifier.reset();
    close(m_master);
    close(m_slave);
}

void PseudoTerminal::type(const QByteArray &bytes) const
{
    if (::write(m_master, bytes.constData(), std::size_t(bytes.size())) != bytes.size())
        throw std::runtime_error("The pseudo-terminal takes no input.");
}

bool PseudoTerminal::hasEcho() const
{
    struct termios state = {};
    return tcgetattr(m_slave, &state) == 0 && (state.c_lflag & ECHO) != 0;
}

void PseudoTerminal::adopt() const
{
    setsid();
    ioctl(m_slave, TIOCSCTTY, 0);
    dup2(m_slave, STDIN_FILENO);
    dup2(m_slave, STDERR_FILENO);
}

Program::Program(const QString &program, const QStringList &arguments, const ProgramSetting &setting)
{
    m_process.setProcessEnvironment(setting.environment);
    m_process.setChildProcessModifier([terminal = setting.terminal, setup = setting.childSetup] {
        if (terminal)
            terminal->adopt();
        if (setup)
            setup();
    });
    m_process.start(program, arguments);
    if (!m_process.waitForStarted())
        throw std::runtime_error("The program cannot be started: " + program.toStdString());
    m_process.write(setting.input);
    m_process.closeWriteChannel();
}

Program::~Program()
{
    if (isRunning())
        m_process.kill();
    m_process.waitForFinished();
}

void Program::sendSignal(int signal) const
{
    ::kill(pid_t(processID()), signal);
}

const QByteArray &Program::output()
{
    m_output += m_process.readAllStandardOutput();
    return m_output;
}

bool Program::waitForOutput(const QByteArray &text)
{
    return spinUntil([&] { return output().contains(text) || !isRunning(); }) && output().contains(text);
}

ProgramResult Program::result()
{
    spinUntil([this] { return !isRunning(); });
    const bool hasExited = !isRunning() && m_process.exitStatus() == QProcess::NormalExit;
    return {hasExited ? std::optional(m_process.exitCode()) : std::nullopt, output(), m_process.readAllStandardError()};
}

std::optional<int> Program::endingSignal()
{
    spinUntil([this] { return !isRunning(); });
    // For a program that crashed, QProcess has the signal's number in place of the exit status.
    return !isRunning() && m_process.exitStatus() == QProcess::CrashExit ? std::optional(m_process.exitCode())
                                                                         : std::nullopt;
}

void obeyFilePermissions()
{
    // What the bounding set lacks, not even the superuser's programs are given. Others may not ask, and need not.
    for (const int capability : {CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH})
        prctl(PR_CAPBSET_DROP, capability, 0, 0, 0);
}

} // namespace tarnwik::test
