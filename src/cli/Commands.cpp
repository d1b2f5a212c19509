#include "cli/Commands.h"

#include "async/Child.h"
#include "cli/PasswordPrompt.h"
#include "cli/Report.h"
#include "cli/Run.h"
#include "cli/SubscriptionCommands.h"
#include "cli/TunnelWait.h"
#include "cli/Watch.h"

#include <algorithm>

namespace tarnwik::cli {

namespace {

Task<ExitStatus> signIn(Run &run, std::stop_token token)
{
    const QString password = readPassword();
    if (run.options.serverURL)
        run.model.setServerURLString(*run.options.serverURL);
    co_await run.model.signIn(run.options.email, password, token);
    const ExitStatus status = run.outcome();
    if (status != ExitStatus::Done)
        co_return status;
    // The JSON tells of the tunnel too, which may be up since before.
    if (run.options.isJSON)
        co_await run.model.vpnController()->refreshStatus(token);
    run.print(QStringLiteral("Signed in as %1.").arg(plainText(run.options.email)), statusJSON(run.model));
    co_return ExitStatus::Done;
}

/// The session and the tunnel at the same time: they are asked of different services.
Task<> refreshEverything(AppModel &model, std::stop_token token)
{
    async::Child<void> tunnel(token, [&model](std::stop_token childToken) {
        return model.vpnController()->refreshStatus(std::move(childToken));
    });
    if (model.isSignedIn())
        co_await model.refreshFromUI(token);
    co_await tunnel.result();
}

Task<ExitStatus> status(Run &run, std::stop_token token)
{
    co_await refreshEverything(run.model, token);
    // What is known is printed even if the server could not be asked: the tunnel is a matter of this computer.
    run.print(statusText(run.model), statusJSON(run.model));
    co_return run.outcome();
}

/// A command that fetches and prints.
template<typename Print>
Task<ExitStatus> fetch(Run &run, std::stop_token token, Print print)
{
    co_await run.model.refreshFromUI(token);
    const ExitStatus status = run.outcome();
    if (status == ExitStatus::Done)
        print();
    co_return status;
}

/// The node that the user names: by its number, by its name, or by its name in other capitals where that is clear.
std::optional<ExitNode> findNode(const QList<ExitNode> &nodes, const QString &wanted)
{
    const auto first = [&](auto matches) -> std::optional<ExitNode> {
        const auto found = std::find_if(nodes.begin(), nodes.end(), matches);
        return found == nodes.end() ? std::nullopt : std::optional(*found);
    };
    if (auto node = first([&](const ExitNode &node) { return QString::number(node.id) == wanted; }))
        return node;
    if (auto node = first([&](const ExitNode &node) { return node.name == wanted; }))
        return node;
    const auto isAlike = [&](const ExitNode &node) { return node.name.compare(wanted, Qt::CaseInsensitive) == 0; };
    return std::count_if(nodes.begin(), nodes.end(), isAlike) == 1 ? first(isAlike) : std::nullopt;
}

Task<ExitStatus> connect(Run &run, std::stop_token token)
{
    AppModel &model = run.model;
    co_await model.refreshFromUI(token);
    if (model.errorMessage())
        co_return run.outcome();
    if (run.options.node) {
        const auto node = findNode(model.nodes(), *run.options.node);
        if (!node)
            co_return run.fail(QStringLiteral("There is no exit node “%1”.").arg(*run.options.node));
        model.setSelectedNodeID(node->id);
    }
    // Kept: what the server lists afterwards may be something else.
    const QString nodeName = model.selectedNode().value_or(ExitNode()).name;
    if (!nodeName.isEmpty())
        run.terminal.progress(QStringLiteral("Connecting to %1…").arg(nodeName));
    co_await model.connect(token);
    if (model.errorMessage())
        co_return run.outcome();

    VPNController &tunnel = *model.vpnController();
    co_await waitForStart(tunnel, token);
    if (!co_await waitForTunnel(tunnel, hasSettled, run.options.wait, token))
        co_return run.fail(QStringLiteral("The tunnel did not come up within %1 s.").arg(run.options.wait.count()));
    if (tunnel.status() != VPNStatus::Connected) {
        co_await waitForReason(tunnel, token);
        co_return run.fail(tunnel.lastDisconnectError().value_or(QStringLiteral("The tunnel went down again.")));
    }
    run.print(QStringLiteral("Connected through %1.").arg(plainText(nodeName)), statusJSON(model));
    co_return ExitStatus::Done;
}

Task<ExitStatus> disconnect(Run &run, std::stop_token token)
{
    co_await run.model.disconnect(token);
    if (run.model.errorMessage())
        co_return run.outcome();
    if (!co_await waitForTunnel(*run.model.vpnController(), isDown, run.options.wait, token))
        co_return run.fail(QStringLiteral("The tunnel did not go down within %1 s.").arg(run.options.wait.count()));
    run.print(QStringLiteral("Disconnected."), statusJSON(run.model));
    co_return ExitStatus::Done;
}

Task<ExitStatus> watch(Run &run, std::stop_token token)
{
    co_await refreshEverything(run.model, token);
    if (token.stop_requested())
        co_return ExitStatus::Done;
    if (run.model.errorMessage())
        co_return run.outcome();
    run.model.startUsageRefreshLoop();
    co_await watchChanges(run.model, [&run] { run.print(watchText(run.model), statusJSON(run.model)); }, token);
    co_return ExitStatus::Done;
}

Task<ExitStatus> signOut(Run &run, std::stop_token token)
{
    co_await run.model.signOut(token);
    const ExitStatus status = run.outcome();
    if (status == ExitStatus::Done)
        run.print(QStringLiteral("Signed out."), statusJSON(run.model));
    co_return status;
}

/// The tunnel is this computer's: it can be looked at and stopped without a session. What the App Store sells is
/// there for everybody.
bool needsSession(Command command)
{
    return command != Command::SignIn && command != Command::Status && command != Command::Disconnect
        && command != Command::Subscriptions;
}

Task<ExitStatus> dispatch(Run &run, std::stop_token token)
{
    switch (run.options.command) {
    case Command::SignIn:
        return signIn(run, token);
    case Command::Status:
        return status(run, token);
    case Command::Account:
        return fetch(run, token, [&run] {
            const Account account = run.model.account().value_or(Account());
            run.print(accountText(account), statusJSON(run.model).value(QStringLiteral("account")));
        });
    case Command::Nodes:
        return fetch(run, token, [&run] { run.print(nodesText(run.model), nodesJSON(run.model)); });
    case Command::Devices:
        return fetch(run, token, [&run] { run.print(devicesText(run.model), devicesJSON(run.model)); });
    case Command::Connect:
        return connect(run, token);
    case Command::Disconnect:
        return disconnect(run, token);
    case Command::Watch:
        return watch(run, token);
    case Command::SignOut:
        return signOut(run, token);
    case Command::Subscriptions:
        return subscriptions(run, token);
    case Command::Subscribe:
        return subscribe(run, token);
    case Command::RestorePurchases:
        return restorePurchases(run, token);
    case Command::StorePurchase:
    case Command::StoreRenew:
    case Command::StoreRevoke:
    case Command::StoreApprove:
        // They have nothing to do with a model: runStoreCommand() is for them.
        break;
    }
    Q_UNREACHABLE();
}

} // namespace

bool isEndless(Command command)
{
    return command == Command::Watch;
}

Task<ExitStatus> runCommand(Options options, AppModel &model, Terminal terminal, std::stop_token token)
{
    Run run{std::move(options), model, terminal};
    if (needsSession(run.options.command) && !model.isSignedIn()) {
        terminal.printError(QStringLiteral("Not signed in."));
        co_return ExitStatus::NotSignedIn;
    }
    try {
        co_return co_await dispatch(run, token);
    } catch (const async::Cancelled &) {
        // Whoever interrupted the program does not need to be told.
        co_return isEndless(run.options.command) ? ExitStatus::Done : ExitStatus::Failed;
    } catch (const std::exception &error) {
        terminal.printError(QString::fromUtf8(error.what()));
        co_return ExitStatus::Failed;
    }
}

} // namespace tarnwik::cli
