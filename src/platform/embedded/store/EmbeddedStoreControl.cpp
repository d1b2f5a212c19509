#include "platform/embedded/store/EmbeddedStoreControl.h"

#include "platform/embedded/store/StoreFolder.h"
#include "platform/embedded/store/StoreLedger.h"

#include <QDir>

#include <utility>

namespace tarnwik {

namespace {

SoldProduct offeredProduct(const StoreConfiguration &configuration, const QString &productID)
{
    if (const auto product = configuration.offered(productID))
        return *product;
    throw StoreError(QStringLiteral("The store does not offer “%1”.").arg(productID));
}

Entitlement activeSubscription(const StoreLedger &ledger, const QString &productID)
{
    if (const auto active = ledger.active(productID))
        return *active;
    throw StoreError(QStringLiteral("There is no active subscription to “%1”.").arg(productID));
}

} // namespace

EmbeddedStoreControl::EmbeddedStoreControl(const QString &folder, StoreWallClock wallClock)
    : m_folder(folder)
    , m_wallClock(std::move(wallClock))
{
}

void EmbeddedStoreControl::purchaseElsewhere(const QString &productID) const
{
    const StoreFolder folder(m_folder, m_wallClock);
    const StoreConfiguration configuration = folder.configuration();
    const SoldProduct product = offeredProduct(configuration, productID);
    LockedStore store(folder);
    StoreRecords records = store.records();
    StoreLedger ledger(records, store.identity(), folder.now());
    if (ledger.active(productID))
        throw StoreError(QStringLiteral("The subscription to “%1” is active already.").arg(productID));
    ledger.buy(product, configuration.storefront, std::nullopt);
    store.write(records);
}

void EmbeddedStoreControl::renew(const QString &productID) const
{
    const StoreFolder folder(m_folder, m_wallClock);
    const StoreConfiguration configuration = folder.configuration();
    const SoldProduct product = offeredProduct(configuration, productID);
    LockedStore store(folder);
    StoreRecords records = store.records();
    StoreLedger ledger(records, store.identity(), folder.now());
    ledger.renew(activeSubscription(ledger, productID), product, configuration.storefront);
    store.write(records);
}

void EmbeddedStoreControl::revoke(const QString &productID) const
{
    const StoreFolder folder(m_folder, m_wallClock);
    LockedStore store(folder);
    StoreRecords records = store.records();
    StoreLedger ledger(records, store.identity(), folder.now());
    ledger.revoke(activeSubscription(ledger, productID));
    store.write(records);
}

int EmbeddedStoreControl::approve() const
{
    const StoreFolder folder(m_folder, m_wallClock);
    const StoreConfiguration configuration = folder.configuration();
    LockedStore store(folder);
    StoreRecords records = store.records();
    const QList<PendingPurchase> pending = std::exchange(records.pendingPurchases, {});
    if (pending.isEmpty())
        throw StoreError(QStringLiteral("No purchase is waiting for approval."));
    StoreLedger ledger(records, store.identity(), folder.now());
    for (const PendingPurchase &purchase : pending) {
        const SoldProduct product = offeredProduct(configuration, purchase.productID);
        // Somebody may have bought it meanwhile: nothing is bought twice.
        if (!ledger.active(purchase.productID))
            ledger.buy(product, configuration.storefront, purchase.appAccountToken);
    }
    store.write(records);
    return int(pending.size());
}

QString embeddedStoreFolder(const QString &folder)
{
    return QDir(folder).filePath(QStringLiteral("store"));
}

} // namespace tarnwik
