#include "service/Seed.h"
#include "service/server/CommandLine.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace {

using namespace tarnwik::service;

constexpr int exitFailed = 1;
constexpr int exitWrongUsage = 2;

void print(std::FILE *stream, const QString &text)
{
    std::fputs(qPrintable(text), stream);
    std::fflush(stream);
}

/// The signals that ask for the end, which no thread but the main one gets to see.
sigset_t blockEndSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

int serve(const CommandLine &line)
{
    const sigset_t endSignals = blockEndSignals();
    CustomerService service({.databasePath = line.databasePath,
                             .seed = line.seedPath ? readSeedFile(*line.seedPath) : builtInSeed(),
                             .storeRoot = line.storeRootPath ? storeRootInFile(*line.storeRootPath) : nullptr});
    HTTPServer server(service, line.server);
    std::thread([&server] { server.run(); }).detach();
    print(stdout, QStringLiteral("Listening on %1\n").arg(server.origin()));

    int signal = 0;
    sigwait(&endSignals, &signal);
    server.stop(std::chrono::seconds(2));
    // Without destructors: the threads of idle connections still use the server, and would for up to a minute. Every
    // answer that was given is in the database.
    std::_Exit(EXIT_SUCCESS);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    try {
        const CommandLine line = parseCommandLine(QCoreApplication::arguments());
        if (!line.information)
            return serve(line);
        print(stdout, *line.information);
        return EXIT_SUCCESS;
    } catch (const CommandLineError &error) {
        print(stderr, error.localizedDescription() + u'\n');
        return exitWrongUsage;
    } catch (const tarnwik::LocalizedError &error) {
        print(stderr, error.localizedDescription() + u'\n');
        return exitFailed;
    }
}
