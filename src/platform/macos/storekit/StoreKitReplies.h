#pragma once

#include "platform/AppStore.h"

#include <string>

namespace tarnwik {

// What the bridge's replies say; see StoreKitBridge.h for their form. Each function throws StoreError with the
// platform's words for a failure that is told, and with a sentence of its own for a reply that is not of that form. It
// throws async::Cancelled for the platform's two errors that say so: the user closed a dialogue of the store, or the
// platform gave the operation up. An offline machine may be told as the former.

QList<StoreProduct> readProducts(const std::string &json);

/// The outcome of buying \a productID.
PurchaseResult readPurchase(const std::string &json, const QString &productID);

QList<VerificationResult> readEntitlements(const std::string &json);

/// The reply to what has no result.
void readCompletion(const std::string &json);

/// What an update tells. Throws nothing: an update that cannot be read is an unverified result without a transaction,
/// since the updates after it are worth as much as before.
VerificationResult readUpdate(const std::string &json);

} // namespace tarnwik
