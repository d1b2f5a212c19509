#pragma once

#include "cli/Options.h"
#include "cli/Terminal.h"
#include "core/AppModel.h"

#include <QJsonValue>

namespace tarnwik::cli {

/// One run of the program: what its command needs at hand. It lives in the coroutine of runCommand(), which awaits
/// every command, and main() keeps the model until that has ended: so the commands may take both by reference.
struct Run
{
    Options options;
    AppModel &model;
    Terminal terminal;

    /// Tells what went wrong in the model's last operation, if anything did.
    ExitStatus outcome() const
    {
        const auto message = model.errorMessage();
        return message ? fail(*message) : ExitStatus::Done;
    }

    ExitStatus fail(const QString &sentence) const
    {
        terminal.printError(sentence);
        return ExitStatus::Failed;
    }

    void print(const QString &text, const QJsonValue &json) const
    {
        if (options.isJSON)
            terminal.print(json);
        else
            terminal.print(text);
    }
};

} // namespace tarnwik::cli
