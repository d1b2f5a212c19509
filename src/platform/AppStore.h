#pragma once

#include "async/AsyncGenerator.h"
#include "async/Task.h"
#include "platform/LocalizedError.h"

#include <QDateTime>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace tarnwik {

/// The app store refused or failed; the text is the store's own.
class StoreError : public LocalizedError
{
    using LocalizedError::LocalizedError;
};

/// What can be bought.
struct StoreProduct
{
    /// The product identifier.
    QString id;
    /// The price as the user's storefront writes it, to be shown as it is.
    QString displayPrice;

    bool operator==(const StoreProduct &) const = default;
};

/// One purchase or one period of a subscription, as the store recorded it.
struct StoreTransaction
{
    quint64 id = 0;
    QString productID;
    /// When the store took the purchase back; absent while it stands.
    std::optional<QDateTime> revocationDate;

    bool operator==(const StoreTransaction &) const = default;
};

/// A transaction with the store's signature, and what the platform found when it checked that.
struct VerificationResult
{
    /// What the transaction says of itself. Not to be relied on while there is a verificationError.
    StoreTransaction transaction;
    /// The signed transaction in compact form, as the store issued it.
    QString jwsRepresentation;
    /// Absent when the signature is good.
    std::optional<StoreError> verificationError;
};

struct PurchaseOptions
{
    /// Ties the purchase to an account of the service.
    std::optional<QUuid> appAccountToken;

    bool operator==(const PurchaseOptions &) const = default;
};

/// How a purchase ended. A platform may one day tell kinds beyond these: they arrive as Unknown.
enum class PurchaseOutcome {
    Success,
    UserCancelled,
    Pending,
    Unknown,
};

struct PurchaseResult
{
    PurchaseOutcome outcome = PurchaseOutcome::Unknown;
    /// The transaction; present exactly after a success.
    std::optional<VerificationResult> verification;
};

/// The platform's app store, as far as this program's own products go. Lives on the main thread.
///
/// Operations throw StoreError with the store's own description. What the user cancelled in a dialogue of the store,
/// and a pulled stop token, throw async::Cancelled; only purchase() tells the former by its result. The object must be
/// kept until its operations and sequences have ended.
class AppStore
{
public:
    virtual ~AppStore() = default;

    /// Looks products up. The order is the store's, and what it does not know is left out.
    virtual Task<QList<StoreProduct>> products(QStringList productIDs, std::stop_token token) = 0;

    /// Lets the user buy \a product, and waits until they have decided.
    virtual Task<PurchaseResult> purchase(StoreProduct product, PurchaseOptions options, std::stop_token token) = 0;

    /// The transactions that come by other ways than purchase(): those never finished, first; then renewals,
    /// revocations, approvals, and what was bought on another device, as they happen. Never ends by itself.
    virtual AsyncGenerator<VerificationResult> transactionUpdates(std::stop_token token) = 0;

    /// The latest transaction of every product that the user is entitled to now. Ends.
    virtual AsyncGenerator<VerificationResult> currentEntitlements(std::stop_token token) = 0;

    /// Tells the store that \a transaction was dealt with: until then it comes again as an update at every start.
    /// Never fails; a transaction that the store does not know is left alone.
    virtual Task<> finish(StoreTransaction transaction) = 0;

    /// Brings the user's transactions up to date with the store's. May ask the user to sign in there.
    virtual Task<> sync(std::stop_token token) = 0;
};

} // namespace tarnwik
