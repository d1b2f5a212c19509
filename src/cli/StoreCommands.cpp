#include "cli/StoreCommands.h"

#include "platform/embedded/store/EmbeddedStoreControl.h"

#include <QJsonObject>

namespace tarnwik::cli {

namespace {

/// What was done, for people and for programs.
struct Deed
{
    QString sentence;
    QJsonObject json;
};

Deed deedTo(AppStoreSubscriptionPlan plan, const QString &participle)
{
    return {QStringLiteral("The %1 subscription was %2.").arg(plan.title(), participle),
            {{QStringLiteral("plan"), plan.rawValue()}, {QStringLiteral("product_id"), plan.productID()}}};
}

Deed approve(const EmbeddedStoreControl &control)
{
    const int count = control.approve();
    return {count == 1 ? QStringLiteral("1 purchase was approved.")
                       : QStringLiteral("%1 purchases were approved.").arg(count),
            {{QStringLiteral("approved"), count}}};
}

Deed perform(const Options &options, const EmbeddedStoreControl &control)
{
    if (options.command == Command::StoreApprove)
        return approve(control);
    const AppStoreSubscriptionPlan plan = options.plan.value();
    switch (options.command) {
    case Command::StorePurchase:
        control.purchaseElsewhere(plan.productID());
        return deedTo(plan, QStringLiteral("bought on another device"));
    case Command::StoreRenew:
        control.renew(plan.productID());
        return deedTo(plan, QStringLiteral("renewed"));
    case Command::StoreRevoke:
        control.revoke(plan.productID());
        return deedTo(plan, QStringLiteral("revoked"));
    default:
        Q_UNREACHABLE();
    }
}

} // namespace

bool isStoreCommand(Command command)
{
    return command == Command::StorePurchase || command == Command::StoreRenew || command == Command::StoreRevoke
        || command == Command::StoreApprove;
}

ExitStatus runStoreCommand(const Options &options, const EmbeddedStoreControl &control, const Terminal &terminal)
{
    try {
        const Deed deed = perform(options, control);
        if (options.isJSON)
            terminal.print(deed.json);
        else
            terminal.print(deed.sentence);
        return ExitStatus::Done;
    } catch (const std::exception &error) {
        terminal.printError(localizedDescription(error));
        return ExitStatus::Failed;
    }
}

} // namespace tarnwik::cli
