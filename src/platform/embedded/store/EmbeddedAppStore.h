#pragma once

#include "async/Clock.h"
#include "platform/AppStore.h"
#include "platform/embedded/store/StoreWallClock.h"

#include <QString>

#include <memory>

namespace tarnwik {

/// An app store within the program, for the demo and for development: what it sells and how purchases go stands in
/// `configuration.json` of \a folder, what was bought in `transactions.json` there. Programs on the same folder see one
/// store. \a clock is for the delays, \a wallClock for the dates.
///
/// A transaction that leads to another root than the store's present one is unverified: that is what becomes of all of
/// them when the store loses its signing identity. A program gets its own purchases from purchase() only, never as
/// updates, and any other transaction that nobody finished once for each listener. What an update's listener cannot read
/// comes to it as an unverified result without a transaction.
std::shared_ptr<AppStore> embeddedAppStore(const QString &folder, std::shared_ptr<async::Clock> clock,
                                           StoreWallClock wallClock = systemStoreTime);

/// The root certificate that the transactions of the store in \a folder lead to, PEM; nothing while it has none
/// that can be read.
std::optional<QByteArray> embeddedStoreRoot(const QString &folder);

} // namespace tarnwik
