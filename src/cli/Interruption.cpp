#include "cli/Interruption.h"

#include <array>
#include <csignal>
#include <unistd.h>

namespace tarnwik::cli {

namespace {

// A signal handler may do little more than write: the event loop reads the other end.
std::array<int, 2> signalPipe{-1, -1};

void setHandlers(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART | SA_RESETHAND;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

} // namespace

Interruption::Interruption()
{
    if (pipe(signalPipe.data()) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(signalPipe[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] {
        m_notifier->setEnabled(false);
        m_source.request_stop();
    });
    setHandlers([](int) { [[maybe_unused]] const auto written = write(signalPipe[1], "", 1); });
}

Interruption::~Interruption()
{
    setHandlers(SIG_DFL);
    m_notifier.reset();
    for (int &end : signalPipe) {
        if (end >= 0)
            close(end);
        end = -1;
    }
}

} // namespace tarnwik::cli
