// tarnwikctl: the client for terminals and scripts.

#include "async/Detach.h"
#include "cli/Commands.h"
#include "cli/Interruption.h"
#include "cli/StoreCommands.h"
#include "core/AppModel.h"
#include "platform/LocalizedError.h"
#include "platform/SystemPlatform.h"
#include "platform/embedded/EmbeddedPlatform.h"
#include "platform/embedded/store/EmbeddedStoreControl.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

using namespace tarnwik;

int answer(const cli::Answer &answer)
{
    const cli::Terminal terminal;
    if (answer.status != cli::ExitStatus::Done) {
        std::fputs((answer.text + u'\n').toUtf8().constData(), stderr);
        return int(answer.status);
    }
    try {
        terminal.print(answer.text);
    } catch (const cli::OutputError &error) {
        terminal.printError(error.localizedDescription());
        return int(cli::ExitStatus::Failed);
    }
    return int(answer.status);
}

Task<> runAndQuit(cli::Options options, AppModel &model, std::stop_token token)
{
    const cli::ExitStatus status = co_await cli::runCommand(std::move(options), model, cli::Terminal(), token);
    QCoreApplication::exit(int(status));
}

int run(const cli::Options &options)
{
    const ScopedPlatform platform(options.isDemo ? embeddedPlatform(demoFolder()) : systemPlatform());
    if (cli::isStoreCommand(options.command)) {
        const EmbeddedStoreControl control(embeddedStoreFolder(demoFolder()));
        return int(cli::runStoreCommand(options, control, cli::Terminal()));
    }
    AppModel model;
    std::unique_ptr<cli::Interruption> interruption;
    if (cli::isEndless(options.command))
        interruption = std::make_unique<cli::Interruption>();
    const std::stop_token token = interruption ? interruption->token() : std::stop_token();
    // From the event loop: a command that ends at once would quit a loop that does not run yet.
    QMetaObject::invokeMethod(&model, [&] { async::detach(runAndQuit(options, model, token)); }, Qt::QueuedConnection);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    prepareSystemPlatform();
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tarnwikctl"));
    const auto parsed = cli::parseCommandLine(QCoreApplication::arguments());
    if (const auto *text = std::get_if<cli::Answer>(&parsed))
        return answer(*text);
    return run(std::get<cli::Options>(parsed));
}
