#include "platform/embedded/store/EmbeddedAppStore.h"

#include "platform/embedded/store/FolderWatch.h"
#include "platform/embedded/store/StoreLedger.h"
#include "platform/embedded/store/StoreUpdateFeed.h"

#include <utility>

namespace tarnwik {

namespace {

/// How long a listener leaves a store alone that it cannot read.
constexpr std::chrono::seconds stuckDelay{10};

/// The same transaction with another signature.
QByteArray withBrokenSignature(QByteArray jws)
{
    char &first = jws[jws.lastIndexOf('.') + 1];
    first = first == 'A' ? 'B' : 'A';
    return jws;
}

class EmbeddedAppStore final : public AppStore
{
public:
    EmbeddedAppStore(const QString &folder, std::shared_ptr<async::Clock> clock, StoreWallClock wallClock)
        : m_folder(folder, std::move(wallClock))
        , m_clock(std::move(clock))
    {
    }

    Task<QList<StoreProduct>> products(QStringList productIDs, std::stop_token token) override;
    Task<PurchaseResult> purchase(StoreProduct product, PurchaseOptions options, std::stop_token token) override;
    AsyncGenerator<VerificationResult> transactionUpdates(std::stop_token token) override;
    AsyncGenerator<VerificationResult> currentEntitlements(std::stop_token token) override;
    Task<> finish(StoreTransaction transaction) override;
    Task<> sync(std::stop_token token) override;

private:
    Task<> pause(std::chrono::milliseconds delay, std::stop_token token);
    VerificationResult buy(const SoldProduct &product, const QString &storefront, const PurchaseOptions &options);
    VerificationResult unverified(const SoldProduct &product, const QString &storefront,
                                  const PurchaseOptions &options);
    void wait(const SoldProduct &product, const PurchaseOptions &options);

    StoreFolder m_folder;
    std::shared_ptr<async::Clock> m_clock;
    /// The transactions that purchase() returned: they are no updates.
    std::shared_ptr<QSet<qint64>> m_ownRevisions = std::make_shared<QSet<qint64>>();
};

Task<> EmbeddedAppStore::pause(std::chrono::milliseconds delay, std::stop_token token)
{
    // Also without a delay: nobody gets an answer from the store before they have asked.
    if (delay.count() == 0)
        co_await async::yield(token);
    else
        co_await async::sleep(*m_clock, delay, token);
}

Task<QList<StoreProduct>> EmbeddedAppStore::products(QStringList productIDs, std::stop_token token)
{
    const StoreConfiguration configuration = m_folder.configuration();
    co_await pause(configuration.productsDelay, token);
    QList<StoreProduct> found;
    // In the order of the file: whoever wants another one must see to it.
    for (const SoldProduct &product : configuration.products) {
        if (!productIDs.contains(product.id) || !configuration.offered(product.id))
            continue;
        found.append(StoreProduct{product.id, product.displayPrices.value(configuration.storefront)});
    }
    co_return found;
}

Task<PurchaseResult> EmbeddedAppStore::purchase(StoreProduct product, PurchaseOptions options, std::stop_token token)
{
    const StoreConfiguration configuration = m_folder.configuration();
    co_await pause(configuration.purchaseDelay, token);
    const auto offered = configuration.offered(product.id);
    if (!offered)
        throw StoreError(QStringLiteral("The store does not offer “%1”.").arg(product.id));

    // No wait from here on: what is bought is told.
    PurchaseResult result;
    switch (configuration.nextPurchase) {
    case PurchaseScript::Success:
        result.outcome = PurchaseOutcome::Success;
        result.verification = buy(*offered, configuration.storefront, options);
        break;
    case PurchaseScript::Unverified:
        result.outcome = PurchaseOutcome::Success;
        result.verification = unverified(*offered, configuration.storefront, options);
        break;
    case PurchaseScript::Pending:
        result.outcome = PurchaseOutcome::Pending;
        wait(*offered, options);
        break;
    case PurchaseScript::Cancelled:
        result.outcome = PurchaseOutcome::UserCancelled;
        break;
    case PurchaseScript::Failing:
        throw StoreError(configuration.failureMessage);
    case PurchaseScript::Unknown:
        break;
    }
    co_return result;
}

VerificationResult EmbeddedAppStore::buy(const SoldProduct &product, const QString &storefront,
                                         const PurchaseOptions &options)
{
    LockedStore store(m_folder);
    StoreRecords records = store.records();
    StoreLedger ledger(records, store.identity(), m_folder.now());
    if (const auto active = ledger.active(product.id))
        return verificationResult(active->transaction);
    const StoredTransaction bought = ledger.buy(product, storefront, options.appAccountToken);
    VerificationResult result = verificationResult(readTransaction(bought.jws, m_folder.trust()));
    store.write(records);
    m_ownRevisions->insert(bought.revision);
    return result;
}

VerificationResult EmbeddedAppStore::unverified(const SoldProduct &product, const QString &storefront,
                                                const PurchaseOptions &options)
{
    LockedStore store(m_folder);
    StoreRecords records = store.records();
    const auto draft =
        StoreLedger(records, store.identity(), m_folder.now()).draft(product, storefront, options.appAccountToken);
    return verificationResult(readTransaction(withBrokenSignature(draft.jws), m_folder.trust()));
}

void EmbeddedAppStore::wait(const SoldProduct &product, const PurchaseOptions &options)
{
    LockedStore store(m_folder);
    StoreRecords records = store.records();
    // Who asks again waits for the same approval.
    records.pendingPurchases.removeIf([&](const PendingPurchase &known) { return known.productID == product.id; });
    records.pendingPurchases.append(PendingPurchase{product.id, options.appAccountToken});
    store.write(records);
}

AsyncGenerator<VerificationResult> EmbeddedAppStore::transactionUpdates(std::stop_token token)
{
    co_await async::yield(token);
    // Watched before anything is read, so that no change falls in between.
    FolderWatch watch(m_folder.path(), m_clock);
    StoreUpdateFeed feed(m_folder, m_ownRevisions);
    for (;;) {
        const QList<VerificationResult> results = feed.next();
        for (VerificationResult result : results) {
            co_yield result;
            async::throwIfStopped(token);
        }
        // What cannot be read may change with every look at it, by the lock that this takes.
        if (feed.isStuck())
            co_await async::sleep(*m_clock, stuckDelay, token);
        co_await watch.changed(token);
    }
}

AsyncGenerator<VerificationResult> EmbeddedAppStore::currentEntitlements(std::stop_token token)
{
    co_await async::yield(token);
    const StoreRecords records = m_folder.records();
    if (records.transactions.isEmpty())
        co_return;
    const QList<Entitlement> found = entitlements(records, m_folder.trust());
    for (const Entitlement &entitlement : found) {
        VerificationResult result = verificationResult(entitlement.transaction);
        co_yield result;
        async::throwIfStopped(token);
    }
}

Task<> EmbeddedAppStore::finish(StoreTransaction transaction)
{
    try {
        LockedStore store(m_folder);
        StoreRecords records = store.recordsIfIntact();
        const StoreRecords before = records;
        for (StoredTransaction &known : records.transactions) {
            if (quint64(known.id) == transaction.id)
                known.isFinished = true;
        }
        if (records != before)
            store.write(records);
    } catch (const StoreError &) {
        // Finishing never fails: a transaction that was not finished comes again at the next
        // start, and what is wrong with the files is told by the next operation that may fail.
    }
    co_return;
}

Task<> EmbeddedAppStore::sync(std::stop_token token)
{
    // There is no other place that could know more than the files do.
    const StoreConfiguration configuration = m_folder.configuration();
    co_await pause(configuration.syncDelay, token);
}

} // namespace

std::shared_ptr<AppStore> embeddedAppStore(const QString &folder, std::shared_ptr<async::Clock> clock,
                                           StoreWallClock wallClock)
{
    return std::make_shared<EmbeddedAppStore>(folder, std::move(clock), std::move(wallClock));
}

} // namespace tarnwik
