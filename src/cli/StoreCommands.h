#pragma once

#include "cli/Options.h"
#include "cli/Terminal.h"

namespace tarnwik {

class EmbeddedStoreControl;

namespace cli {

/// Whether the command plays the part of others at the embedded store: another device, the store's staff, a parent.
bool isStoreCommand(Command command);

/// Runs such a command, and prints what was done. Never throws.
ExitStatus runStoreCommand(const Options &options, const EmbeddedStoreControl &control, const Terminal &terminal);

} // namespace cli
} // namespace tarnwik
