#pragma once

#include <QStringList>

#include <variant>

namespace tarnwik::app {

/// What the user asked for.
struct Options
{
    bool isDemo = false;
};

/// An answer that needs no window: help, the version, or what is wrong with the command line.
struct Answer
{
    /// The program's exit status: 0 for what goes to standard output, 2 for what is wrong.
    int status = 0;
    /// Without its last line break.
    QString text;
};

/// Reads a command line, the program's name first.
std::variant<Options, Answer> parseCommandLine(const QStringList &arguments);

} // namespace tarnwik::app
