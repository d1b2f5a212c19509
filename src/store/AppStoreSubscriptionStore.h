#pragma once

#include "platform/AppStore.h"
#include "store/AppStoreSubscriptionPlan.h"

#include <QObject>
#include <QPointer>
#include <QProperty>
#include <QSet>

#include <memory>
#include <optional>

namespace tarnwik {

/// The program's whole dealing with the App Store: products, purchases, and what the user is entitled to.
///
/// There is one per program. No operation throws: failures stand in errorMessage(), and a cancellation is silent. It
/// never talks to the service: what a purchase or a restore yields is for whoever called to pass on. Messages stay
/// until an operation that says so clears them. Nothing guards against overlapping operations; each ends the progress
/// that it shows. Lives on the main thread; its end releases the listener.
class AppStoreSubscriptionStore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<tarnwik::StoreProduct> products READ products NOTIFY productsChanged)
    Q_PROPERTY(QSet<QString> purchasedProductIDs READ purchasedProductIDs NOTIFY purchasedProductIDsChanged)
    Q_PROPERTY(bool isLoadingProducts READ isLoadingProducts NOTIFY isLoadingProductsChanged)
    Q_PROPERTY(bool isRestoringPurchases READ isRestoringPurchases NOTIFY isRestoringPurchasesChanged)
    Q_PROPERTY(std::optional<QString> purchaseInProgressProductID READ purchaseInProgressProductID NOTIFY
                   purchaseInProgressProductIDChanged)
    Q_PROPERTY(std::optional<QString> statusMessage READ statusMessage NOTIFY statusMessageChanged)
    Q_PROPERTY(std::optional<QString> errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(std::optional<QString> latestSignedTransactionJWS READ latestSignedTransactionJWS NOTIFY
                   latestSignedTransactionJWSChanged)
    Q_PROPERTY(bool hasActiveSubscription READ hasActiveSubscription NOTIFY purchasedProductIDsChanged)

public:
    /// Asks the store nothing yet.
    AppStoreSubscriptionStore();
    ~AppStoreSubscriptionStore() override;

    /// The product identifiers of all plans.
    static const QSet<QString> &productIDs();

    /// The plans' products, in the order of the plans.
    QList<StoreProduct> products() const { return m_products; }

    /// The products of plans that the user is entitled to now.
    QSet<QString> purchasedProductIDs() const { return m_purchasedProductIDs; }
    bool isLoadingProducts() const { return m_isLoadingProducts; }
    bool isRestoringPurchases() const { return m_isRestoringPurchases; }

    /// The product whose purchase is under way.
    std::optional<QString> purchaseInProgressProductID() const { return m_purchaseInProgressProductID; }
    std::optional<QString> statusMessage() const { return m_statusMessage; }
    std::optional<QString> errorMessage() const { return m_errorMessage; }

    /// The signed transaction of the last entitlement found, or of an update that came since.
    std::optional<QString> latestSignedTransactionJWS() const { return m_latestSignedTransactionJWS; }

    bool hasActiveSubscription() const;
    bool isActive(AppStoreSubscriptionPlan plan) const;

    /// The plan's product, once it was loaded.
    std::optional<StoreProduct> product(AppStoreSubscriptionPlan plan) const;

    /// Follows the transactions that arrive by other ways than purchase(), until the end of this object. Further calls
    /// do nothing.
    void startObservingTransactions();

    /// Loads the products unless that succeeded once, be it without finding any.
    Task<> loadProductsIfNeeded(std::stop_token token = {});
    Task<> loadProducts(std::stop_token token = {});

    /// Reads anew what the user is entitled to. What fails verification is left out.
    Task<> refreshPurchasedProducts(std::stop_token token = {});

    /// Lets the user buy \a plan; the signed transaction if they did.
    Task<std::optional<QString>> purchase(AppStoreSubscriptionPlan plan, std::optional<QUuid> appAccountToken = {},
                                          std::stop_token token = {});

    /// Fetches what the user bought before; the latest signed transaction if there is one.
    Task<std::optional<QString>> restorePurchases(std::stop_token token = {});

Q_SIGNALS:
    void productsChanged();
    void purchasedProductIDsChanged();
    void isLoadingProductsChanged();
    void isRestoringPurchasesChanged();
    void purchaseInProgressProductIDChanged();
    void statusMessageChanged();
    void errorMessageChanged();
    void latestSignedTransactionJWSChanged();

private:
    struct VerifiedStoreKitTransaction
    {
        StoreTransaction transaction;
        QString signedTransactionJWS;
    };

    static VerifiedStoreKitTransaction verifiedTransaction(const VerificationResult &result);
    static qsizetype productOrder(const QString &productID);
    static Task<> observeTransactions(QPointer<AppStoreSubscriptionStore> store, std::shared_ptr<AppStore> appStore,
                                      std::stop_token token);
    Task<> handleTransactionUpdate(VerificationResult result);
    Task<> readEntitlements(std::stop_token token);
    Task<std::optional<QString>> performPurchase(AppStoreSubscriptionPlan plan, StoreProduct product,
                                                 PurchaseOptions options, std::stop_token token);

    // Declared with macros, which end without a semicolon as the moc wants it.
    Q_OBJECT_BINDABLE_PROPERTY(AppStoreSubscriptionStore, QList<StoreProduct>, m_products,
                               &AppStoreSubscriptionStore::productsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppStoreSubscriptionStore, QSet<QString>, m_purchasedProductIDs,
                               &AppStoreSubscriptionStore::purchasedProductIDsChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppStoreSubscriptionStore, bool, m_isLoadingProducts, false,
                                         &AppStoreSubscriptionStore::isLoadingProductsChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppStoreSubscriptionStore, bool, m_isRestoringPurchases, false,
                                         &AppStoreSubscriptionStore::isRestoringPurchasesChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppStoreSubscriptionStore, std::optional<QString>, m_purchaseInProgressProductID,
                               &AppStoreSubscriptionStore::purchaseInProgressProductIDChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppStoreSubscriptionStore, std::optional<QString>, m_statusMessage,
                               &AppStoreSubscriptionStore::statusMessageChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppStoreSubscriptionStore, std::optional<QString>, m_errorMessage,
                               &AppStoreSubscriptionStore::errorMessageChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppStoreSubscriptionStore, std::optional<QString>, m_latestSignedTransactionJWS,
                               &AppStoreSubscriptionStore::latestSignedTransactionJWSChanged)

    bool m_hasLoadedProducts = false;
    std::optional<std::stop_source> m_transactionUpdatesTask;
    std::shared_ptr<AppStore> m_appStore;
};

} // namespace tarnwik
