#pragma once

#include "service/server/HTTPServer.h"

#include <QStringList>

namespace tarnwik::service {

/// Wrong usage.
class CommandLineError final : public LocalizedError
{
    using LocalizedError::LocalizedError;
};

/// What the command line asks for.
struct CommandLine
{
    HTTPServerOptions server;
    QString databasePath = QStringLiteral(":memory:");
    /// Absent for the built-in seed.
    std::optional<QString> seedPath;
    /// Where the app store's root certificate is looked for. Absent when no transaction is to be accepted.
    std::optional<QString> storeRootPath;
    /// What to print instead of serving: the help or the version.
    std::optional<QString> information;
};

/// Reads \a arguments, the program's name first. Throws CommandLineError.
CommandLine parseCommandLine(const QStringList &arguments);

} // namespace tarnwik::service
