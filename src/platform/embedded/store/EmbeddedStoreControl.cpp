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

/// What was bought, to change while no other program can. Nothing is changed until it is kept.
struct Change
{
    explicit Change(const StoreFolder &folder)
        : store(folder)
        , records(store.records())
        , ledger(records, store.identity(), folder.now())
    {
    }

    void keep() { store.write(records); }

    LockedStore store;
    StoreRecords records;
    StoreLedger ledger;
};

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
    Change change(folder);
    if (change.ledger.active(productID))
        throw StoreError(QStringLiteral("The subscription to “%1” is active already.").arg(productID));
    change.ledger.buy(product, configuration.storefront, std::nullopt);
    change.keep();
}

void EmbeddedStoreControl::renew(const QString &productID) const
{
    const StoreFolder folder(m_folder, m_wallClock);
    const StoreConfiguration configuration = folder.configuration();
    const SoldProduct product = offeredProduct(configuration, productID);
    Change change(folder);
    change.ledger.renew(activeSubscription(change.ledger, productID), product, configuration.storefront);
    change.keep();
}

void EmbeddedStoreControl::revoke(const QString &productID) const
{
    const StoreFolder folder(m_folder, m_wallClock);
    Change change(folder);
    change.ledger.revoke(activeSubscription(change.ledger, productID));
    change.keep();
}

int EmbeddedStoreControl::approve() const
{
    const StoreFolder folder(m_folder, m_wallClock);
    const StoreConfiguration configuration = folder.configuration();
    Change change(folder);
    const QList<PendingPurchase> pending = std::exchange(change.records.pendingPurchases, {});
    if (pending.isEmpty())
        throw StoreError(QStringLiteral("No purchase is waiting for approval."));
    for (const PendingPurchase &purchase : pending) {
        const SoldProduct product = offeredProduct(configuration, purchase.productID);
        // Somebody may have bought it meanwhile: nothing is bought twice.
        if (!change.ledger.active(purchase.productID))
            change.ledger.buy(product, configuration.storefront, purchase.appAccountToken);
    }
    change.keep();
    return int(pending.size());
}

QString embeddedStoreFolder(const QString &folder)
{
    return QDir(folder).filePath(QStringLiteral("store"));
}

} // namespace tarnwik
