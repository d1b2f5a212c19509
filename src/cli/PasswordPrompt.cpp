#include "cli/PasswordPrompt.h"

#include <QByteArray>
#include <QStringDecoder>

#include <sodium.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <string_view>
#include <termios.h>
#include <unistd.h>

namespace tarnwik::cli {

namespace {

constexpr std::array<int, 5> endingSignals{SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGTSTP};
volatile std::sig_atomic_t caughtSignal = 0;
std::array<int, 2> signalPipe{-1, -1};

/// Catches the signals that end the program, for as long as it lives, so that they end the waiting for input instead.
///
/// Through a pipe: a signal that came between two system calls, or to another thread, would interrupt neither of them.
class CaughtSignals
{
public:
    CaughtSignals()
    {
        if (pipe(signalPipe.data()) != 0)
            throw PasswordError(QStringLiteral("The password cannot be asked for: %1.").arg(qt_error_string(errno)));
        for (const int end : signalPipe)
            fcntl(end, F_SETFD, FD_CLOEXEC);
        struct sigaction action = {};
        action.sa_handler = [](int signal) {
            caughtSignal = signal;
            [[maybe_unused]] const auto written = write(signalPipe[1], "", 1);
        };
        for (std::size_t i = 0; i < endingSignals.size(); ++i)
            sigaction(endingSignals[i], &action, &m_previous[i]);
    }

    ~CaughtSignals()
    {
        for (std::size_t i = 0; i < endingSignals.size(); ++i)
            sigaction(endingSignals[i], &m_previous[i], nullptr);
        for (const int end : signalPipe)
            close(end);
    }

    /// Waits until there is input; false when a signal came first.
    static bool waitForInput()
    {
        std::array<pollfd, 2> sources{{{STDIN_FILENO, POLLIN, 0}, {signalPipe[0], POLLIN, 0}}};
        while (!caughtSignal && poll(sources.data(), sources.size(), -1) < 0) { }
        return !caughtSignal && (sources[1].revents & POLLIN) == 0;
    }

    CaughtSignals(const CaughtSignals &) = delete;
    CaughtSignals &operator=(const CaughtSignals &) = delete;

private:
    std::array<struct sigaction, endingSignals.size()> m_previous{};
};

/// Turns the terminal's echo off for as long as it lives.
class SilentTerminal
{
public:
    SilentTerminal()
    {
        tcgetattr(STDIN_FILENO, &m_previous);
        struct termios silent = m_previous;
        silent.c_lflag &= ~tcflag_t(ECHO);
        silent.c_lflag |= ECHONL;
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }

    ~SilentTerminal() { tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_previous); }

    SilentTerminal(const SilentTerminal &) = delete;
    SilentTerminal &operator=(const SilentTerminal &) = delete;

private:
    struct termios m_previous = {};
};

bool isAlwaysReady()
{
    return true;
}

/// One line without its break, byte by byte: what follows it is somebody else's. Each byte is read once \a isReady.
std::optional<QByteArray> readLine(bool (*isReady)() = isAlwaysReady)
{
    constexpr qsizetype longest = 4096;
    QByteArray line;
    line.reserve(longest);
    for (char c = 0;;) {
        if (!isReady())
            return std::nullopt;
        const ssize_t count = read(STDIN_FILENO, &c, 1);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 || (count == 0 && line.isEmpty()))
            return std::nullopt;
        if (count == 0 || c == '\n')
            break;
        if (line.size() == longest)
            throw PasswordError(QStringLiteral("The password is too long."));
        line += c;
    }
    return line;
}

/// Asks on the terminal itself: standard error may be somewhere else, and is for failures.
void prompt()
{
    constexpr std::string_view text = "Password: ";
    const int terminal = open("/dev/tty", O_WRONLY | O_CLOEXEC);
    [[maybe_unused]] const auto written = write(terminal < 0 ? STDERR_FILENO : terminal, text.data(), text.size());
    if (terminal >= 0)
        close(terminal);
}

std::optional<QByteArray> askForLine()
{
    std::optional<QByteArray> line;
    {
        const CaughtSignals signals_;
        const SilentTerminal silence;
        prompt();
        line = readLine(CaughtSignals::waitForInput);
    }
    if (caughtSignal)
        raise(caughtSignal);
    return line;
}

} // namespace

QString readPassword()
{
    std::optional<QByteArray> line = isatty(STDIN_FILENO) ? askForLine() : readLine();
    if (!line)
        throw PasswordError(QStringLiteral("No password was given."));
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString password = decoder(*line);
    sodium_memzero(line->data(), std::size_t(line->size()));
    if (decoder.hasError())
        throw PasswordError(QStringLiteral("The password is no UTF-8 text."));
    return password;
}

} // namespace tarnwik::cli
