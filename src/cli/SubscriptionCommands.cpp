#include "cli/SubscriptionCommands.h"

#include "api/JSON.h"
#include "cli/Report.h"
#include "cli/Run.h"
#include "core/FailureText.h"
#include "core/SubscriptionFlow.h"

namespace tarnwik::cli {

namespace {

/// What went wrong on the way of a purchase, one sentence each. The store says nothing at all where the user
/// cancelled: \a cancelled is for that.
QStringList failures(const AppStoreSubscriptionStore &store, const SubscriptionFlowResult &result,
                     const QString &cancelled)
{
    QStringList sentences;
    if (const auto message = store.errorMessage())
        sentences << *message;
    else if (!store.statusMessage())
        sentences << cancelled;
    const auto add = [&](const std::exception_ptr &failure, const QString &sentence) {
        if (failure)
            sentences << sentence.arg(failureText(failure).value_or(QStringLiteral("it was stopped.")));
    };
    add(result.syncFailure, QStringLiteral("The service did not take the purchase: %1"));
    add(result.refreshFailure, QStringLiteral("The account could not be fetched: %1"));
    return sentences;
}

/// Tells what came of a purchase or a restore.
ExitStatus report(const Run &run, const AppStoreSubscriptionStore &store, const SubscriptionFlowResult &result,
                  const QString &cancelled)
{
    const QStringList sentences = failures(store, result, cancelled);
    const auto status = store.statusMessage();
    if (run.options.isJSON) {
        const auto account = run.model.account();
        QJsonObject json{
            {QStringLiteral("status_message"), status ? QJsonValue(*status) : QJsonValue()},
            {QStringLiteral("error_message"), sentences.isEmpty() ? QJsonValue() : QJsonValue(sentences.join(u' '))},
            {QStringLiteral("synced"), result.signedTransactionJWS && !result.syncFailure},
            {QStringLiteral("account"), account ? QJsonValue(toJSON(*account)) : QJsonValue()},
        };
        if (run.options.plan)
            json.insert(QStringLiteral("plan"), run.options.plan->rawValue());
        run.terminal.print(json);
    } else if (status) {
        run.terminal.print(plainText(*status));
    }
    for (const QString &sentence : sentences)
        run.terminal.printError(sentence);
    return sentences.isEmpty() ? ExitStatus::Done : ExitStatus::Failed;
}

} // namespace

Task<ExitStatus> subscriptions(Run &run, std::stop_token token)
{
    AppStoreSubscriptionStore store;
    co_await store.loadProductsIfNeeded(token);
    const auto loadingFailure = store.errorMessage();
    co_await store.refreshPurchasedProducts(token);
    run.print(subscriptionsText(store), subscriptionsJSON(store));
    if (loadingFailure)
        run.terminal.printError(*loadingFailure);
    if (store.errorMessage() != loadingFailure)
        co_return run.fail(store.errorMessage().value_or(QString()));
    co_return loadingFailure ? ExitStatus::Failed : ExitStatus::Done;
}

Task<ExitStatus> subscribe(Run &run, std::stop_token token)
{
    AppStoreSubscriptionStore store;
    SubscriptionFlowResult result;
    co_await store.loadProductsIfNeeded(token);
    // Going on would only say that there is no such product, and no longer why.
    if (!store.errorMessage())
        result = co_await SubscriptionFlow(&run.model, &store).purchase(run.options.plan.value(), token);
    co_return report(run, store, result, QStringLiteral("The purchase was cancelled."));
}

Task<ExitStatus> restorePurchases(Run &run, std::stop_token token)
{
    AppStoreSubscriptionStore store;
    const SubscriptionFlowResult result = co_await SubscriptionFlow(&run.model, &store).restorePurchases(token);
    co_return report(run, store, result, QStringLiteral("Restoring the purchases was cancelled."));
}

} // namespace tarnwik::cli
