#pragma once

#include "async/Gate.h"
#include "platform/AppStore.h"

#include <QList>
#include <QMap>

#include <deque>
#include <memory>
#include <vector>

namespace tarnwik::test {

/// An app store whose store is the test. Operations end on the next turn of the event loop, unless the test holds them
/// or lets them fail.
class FakeAppStore final : public AppStore
{
public:
    /// The operations that have begun, in order: "products ID…", "purchase ID", "updates", "entitlements", "finish ID",
    /// "sync".
    QStringList operations;
    QList<StoreProduct> offered;
    PurchaseResult nextPurchase;
    QList<PurchaseOptions> purchaseOptions;
    std::vector<VerificationResult> entitlements;
    /// Whether the entitlements just end when they are stopped, as if there were no more of them.
    bool endsEntitlementsWhenStopped = false;
    /// The sentence that an operation fails with, by its first word; "cancelled" stands for the user's cancellation.
    QMap<QString, QString> failures;
    /// Operations that wait until release(), by their first word.
    QStringList held;
    /// How many listeners wait for updates, or deal with one.
    int listenerCount = 0;

    Task<QList<StoreProduct>> products(QStringList productIDs, std::stop_token token) override;
    Task<PurchaseResult> purchase(StoreProduct product, PurchaseOptions options, std::stop_token token) override;
    AsyncGenerator<VerificationResult> transactionUpdates(std::stop_token token) override;
    AsyncGenerator<VerificationResult> currentEntitlements(std::stop_token token) override;
    Task<> finish(StoreTransaction transaction) override;
    Task<> sync(std::stop_token token) override;

    /// Lets the operations that wait go on.
    void release();

    /// Sends an update to the listener.
    void update(const VerificationResult &result);

private:
    Task<> perform(QString operation, std::stop_token token);

    std::vector<std::shared_ptr<async::Gate>> m_gates;
    std::deque<VerificationResult> m_updates;
    std::shared_ptr<async::Gate> m_updateGate;
};

/// A transaction whose signature is good.
VerificationResult verified(const char *productID, const char *jws, quint64 id = 1);

/// One that is not, with the sentence that says why.
VerificationResult unverified(const char *productID, const char *sentence);

} // namespace tarnwik::test
