#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QMap>
#include <QString>

#include <chrono>
#include <optional>

namespace tarnwik {

/// How long one period of a subscription is: "P7D", "P1W", "P1M", "P1Y".
struct SubscriptionPeriod
{
    int count = 1;
    /// D, W, M or Y.
    QChar unit = u'M';

    /// When a period ends that begins at \a start.
    QDateTime endAfter(const QDateTime &start) const;

    bool operator==(const SubscriptionPeriod &) const = default;
};

/// A subscription that the embedded store sells.
struct SoldProduct
{
    QString id;
    SubscriptionPeriod period;
    /// By storefront. Where it has no price it is not offered.
    QMap<QString, QString> displayPrices;

    bool operator==(const SoldProduct &) const = default;
};

/// How purchases end.
enum class PurchaseScript {
    Success,
    Pending,
    Cancelled,
    Failing,
    Unknown,
    Unverified,
};

/// What the embedded store sells, and how it behaves.
struct StoreConfiguration
{
    /// The three-letter country code of the user's store.
    QString storefront;
    QList<SoldProduct> products;
    PurchaseScript nextPurchase = PurchaseScript::Success;
    /// What a failing purchase fails with.
    QString failureMessage;
    std::chrono::milliseconds productsDelay{0};
    std::chrono::milliseconds purchaseDelay{0};
    std::chrono::milliseconds syncDelay{0};

    /// The product of this identifier if it is offered in the storefront.
    std::optional<SoldProduct> offered(const QString &productID) const;

    bool operator==(const StoreConfiguration &) const = default;
};

/// Reads a configuration in JSON. Throws StoreError with a sentence that names the place, such as "products[1].id".
StoreConfiguration parseStoreConfiguration(const QByteArray &json);

/// What applies without a configuration file: the example that people copy.
StoreConfiguration builtInStoreConfiguration();

} // namespace tarnwik
