#include "platform/embedded/store/StoreUpdateFeed.h"

#include <algorithm>
#include <utility>

namespace tarnwik {

StoreUpdateFeed::StoreUpdateFeed(const StoreFolder &folder, std::shared_ptr<const QSet<qint64>> ownRevisions)
    : m_folder(folder)
    , m_ownRevisions(std::move(ownRevisions))
{
}

QList<VerificationResult> StoreUpdateFeed::next()
{
    m_isStuck = false;
    try {
        const QList<VerificationResult> results = read();
        m_lastProblem.reset();
        return results;
    } catch (const StoreError &error) {
        m_isStuck = std::exchange(m_lastProblem, error.localizedDescription()) == error.localizedDescription();
        if (m_isStuck)
            return {};
        VerificationResult problem;
        problem.verificationError = error;
        return {problem};
    }
}

QList<StoredTransaction> StoreUpdateFeed::news(const StoreRecords &records) const
{
    // Numbers that go back are those of a store that began afresh: all in it is new.
    const bool isAfresh = m_lastSeen && records.lastSerial < *m_lastSeen;
    QList<StoredTransaction> news;
    for (const StoredTransaction &transaction : records.transactions) {
        const bool isNew = m_lastSeen && !isAfresh ? transaction.revision > *m_lastSeen : !transaction.isFinished;
        if (isNew && !m_ownRevisions->contains(transaction.revision))
            news.append(transaction);
    }
    std::sort(news.begin(), news.end(),
              [](const auto &one, const auto &other) { return one.revision < other.revision; });
    return news;
}

QList<VerificationResult> StoreUpdateFeed::read()
{
    const StoreRecords records = m_folder.records();
    QList<VerificationResult> results;
    if (const auto transactions = news(records); !transactions.isEmpty()) {
        const TransactionTrust trust = m_folder.trust();
        for (const StoredTransaction &transaction : transactions)
            results.append(verificationResult(readTransaction(transaction.jws, trust)));
    }
    // Last: what failed before is new still.
    m_lastSeen = records.lastSerial;
    return results;
}

} // namespace tarnwik
