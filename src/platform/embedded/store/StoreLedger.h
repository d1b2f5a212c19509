#pragma once

#include "jws/SigningIdentity.h"
#include "platform/embedded/store/StoreConfiguration.h"
#include "platform/embedded/store/StoreEntitlements.h"

namespace tarnwik {

/// What the embedded store does to its records at one moment: it makes signed transactions, and signs them anew.
class StoreLedger
{
public:
    /// Works on \a records, which must be kept.
    StoreLedger(StoreRecords &records, SigningIdentity identity, const QDateTime &now);

    /// The active transaction of a product; nothing when there is none that can be relied on.
    std::optional<Entitlement> active(const QString &productID) const;

    /// A new transaction for a first period from now on, signed but not recorded.
    StoredTransaction draft(const SoldProduct &product, const QString &storefront,
                            const std::optional<QUuid> &appAccountToken);

    /// Records a new transaction. It takes the place of the active ones of other products, which are upgraded by it:
    /// all products are of one group. Nobody is told of these, since the new one tells as much.
    StoredTransaction buy(const SoldProduct &product, const QString &storefront,
                          const std::optional<QUuid> &appAccountToken);

    /// Records the period that follows \a last, which must be active.
    void renew(const Entitlement &last, const SoldProduct &product, const QString &storefront);

    /// Takes \a active back: the same transaction, signed anew, to be dealt with again.
    void revoke(const Entitlement &active);

private:
    QList<Entitlement> actives() const;
    TransactionPayload newPayload(const SoldProduct &product, const QString &storefront) const;
    StoredTransaction sign(TransactionPayload payload);

    StoreRecords &m_records;
    SigningIdentity m_identity;
    QDateTime m_now;
};

} // namespace tarnwik
