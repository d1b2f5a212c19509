#pragma once

#include "platform/AppStore.h"
#include "platform/embedded/store/StoreWallClock.h"

namespace tarnwik {

/// What happens to the embedded store's purchases from outside of the program: as another device, the store's staff or
/// a parent would do it. Programs that run on the same folder get each change as a transaction update.
///
/// Every operation throws StoreError, with a sentence, when there is nothing that it could be done to. Products are
/// named by their identifier.
class EmbeddedStoreControl
{
public:
    /// \a folder is the store's own: see embeddedStoreFolder().
    explicit EmbeddedStoreControl(const QString &folder, StoreWallClock wallClock = systemStoreTime);

    /// Buys a product on another device.
    void purchaseElsewhere(const QString &productID) const;

    /// Begins the next period of an active subscription.
    void renew(const QString &productID) const;

    /// Takes an active subscription back.
    void revoke(const QString &productID) const;

    /// Approves the purchases that are pending; how many there were. Throws when there were none.
    int approve() const;

private:
    QString m_folder;
    StoreWallClock m_wallClock;
};

/// Where the embedded store of the world in \a folder keeps its files.
QString embeddedStoreFolder(const QString &folder);

} // namespace tarnwik
