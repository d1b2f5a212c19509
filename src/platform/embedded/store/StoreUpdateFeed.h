#pragma once

#include "platform/embedded/store/StoreEntitlements.h"
#include "platform/embedded/store/StoreFolder.h"

#include <QSet>

#include <memory>

namespace tarnwik {

/// What one listener has not seen yet of the embedded store's transactions.
class StoreUpdateFeed
{
public:
    /// \a ownRevisions are those that the listener's program learnt from its own purchases: it is not told of these.
    StoreUpdateFeed(const StoreFolder &folder, std::shared_ptr<const QSet<qint64>> ownRevisions);

    /// What is new, oldest first: at first all transactions that nobody finished, later those that changed. When the
    /// store cannot be read, one unverified result without a transaction tells why, but not twice in a row.
    QList<VerificationResult> next();

    /// Whether the last look found what the one before it had failed with already.
    bool isStuck() const { return m_isStuck; }

private:
    QList<StoredTransaction> news(const StoreRecords &records) const;
    QList<VerificationResult> read();

    StoreFolder m_folder;
    std::shared_ptr<const QSet<qint64>> m_ownRevisions;
    std::optional<qint64> m_lastSeen;
    std::optional<QString> m_lastProblem;
    bool m_isStuck = false;
};

} // namespace tarnwik
