#pragma once

#include "async/Task.h"
#include "cli/Options.h"
#include "cli/Terminal.h"

namespace tarnwik {

class AppModel;

namespace cli {

/// Runs the command that \a options ask for on \a model, which must outlive it. Never throws.
Task<ExitStatus> runCommand(Options options, AppModel &model, Terminal terminal, std::stop_token token);

/// Whether the command goes on until it is interrupted.
bool isEndless(Command command);

} // namespace cli
} // namespace tarnwik
