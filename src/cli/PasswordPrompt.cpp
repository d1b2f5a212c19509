#include "cli/PasswordPrompt.h"

#include <QByteArray>
#include <QStringDecoder>

#include <sodium.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <termios.h>
#include <unistd.h>

namespace tarnwik::cli {

namespace {

constexpr std::array<int, 5> endingSignals{SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGTSTP};
volatile std::sig_atomic_t caughtSignal = 0;

/// Catches the signals that end the program, for as long as it lives, so that they interrupt the reading instead.
class CaughtSignals
{
public:
    CaughtSignals()
    {
        struct sigaction action = {};
        action.sa_handler = [](int signal) { caughtSignal = signal; };
        for (std::size_t i = 0; i < endingSignals.size(); ++i)
            sigaction(endingSignals[i], &action, &m_previous[i]);
    }

    ~CaughtSignals()
    {
        for (std::size_t i = 0; i < endingSignals.size(); ++i)
            sigaction(endingSignals[i], &m_previous[i], nullptr);
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

/// One line without its break, byte by byte: what follows it is somebody else's.
std::optional<QByteArray> readLine()
{
    constexpr qsizetype longest = 4096;
    QByteArray line;
    line.reserve(longest);
    for (char c = 0; line.size() < longest;) {
        const ssize_t count = read(STDIN_FILENO, &c, 1);
        if (count < 0 && errno == EINTR && !caughtSignal)
            continue;
        if (count < 0 || (count == 0 && line.isEmpty()))
            return std::nullopt;
        if (count == 0 || c == '\n')
            break;
        line += c;
    }
    return line;
}

std::optional<QByteArray> askForLine()
{
    constexpr std::string_view prompt = "Password: ";
    std::optional<QByteArray> line;
    {
        const CaughtSignals signals_;
        const SilentTerminal silence;
        [[maybe_unused]] const auto written = write(STDERR_FILENO, prompt.data(), prompt.size());
        line = readLine();
    }
    if (caughtSignal)
        raise(caughtSignal);
    return line;
}

} // namespace

std::optional<QString> readPassword()
{
    std::optional<QByteArray> line = isatty(STDIN_FILENO) ? askForLine() : readLine();
    if (!line)
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString password = decoder(*line);
    sodium_memzero(line->data(), std::size_t(line->size()));
    return decoder.hasError() ? std::nullopt : std::optional(password);
}

} // namespace tarnwik::cli
