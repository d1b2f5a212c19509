#pragma once

#include "store/AppStoreSubscriptionPlan.h"

#include <QStringList>

#include <chrono>
#include <optional>
#include <variant>

namespace tarnwik::cli {

/// What the program's exit status says. Documented in --help: scripts depend on it.
enum class ExitStatus {
    Done = 0,
    Failed = 1,
    WrongUsage = 2,
    NotSignedIn = 3,
};

enum class Command {
    SignIn,
    Status,
    Account,
    Nodes,
    Devices,
    Connect,
    Disconnect,
    Watch,
    SignOut,
    Subscriptions,
    Subscribe,
    RestorePurchases,
    StorePurchase,
    StoreRenew,
    StoreRevoke,
    StoreApprove,
};

/// What the user asked for.
struct Options
{
    Command command = Command::Status;
    bool isJSON = false;
    bool isDemo = false;
    QString email;
    std::optional<QString> serverURL;
    /// An exit node by its number or name.
    std::optional<QString> node;
    /// The plan that a command is about; given exactly for those that need one.
    std::optional<AppStoreSubscriptionPlan> plan;
    /// How long to wait for the tunnel.
    std::chrono::seconds wait{30};
};

/// An answer that needs no command: help, the version, or what is wrong with the command line.
struct Answer
{
    ExitStatus status = ExitStatus::Done;
    /// For standard output when the status is Done, else for standard error; without its last line break.
    QString text;
};

/// Reads a command line, the program's name first.
std::variant<Options, Answer> parseCommandLine(const QStringList &arguments);

} // namespace tarnwik::cli
