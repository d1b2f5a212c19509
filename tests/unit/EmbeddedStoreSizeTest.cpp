#include "EmbeddedStoreFixture.h"
#include "platform/embedded/store/StoreFolder.h"

namespace tarnwik::test {

namespace {

using namespace std::chrono_literals;

/// A subscription that has been renewed for more than eighty years.
class EmbeddedStoreSize : public EmbeddedStoreTest
{
protected:
    void fill(qsizetype count)
    {
        const StoreFolder folder(m_path, [this] { return m_time; });
        LockedStore store(folder);
        const SigningIdentity identity = store.identity();
        TransactionPayload period = payload(*m_first.verification);
        StoreRecords records = store.records();
        records.transactions[0].isFinished = true;
        while (records.transactions.size() < count) {
            StoredTransaction transaction;
            transaction.id = records.takeSerial(m_time.count());
            transaction.revision = transaction.id;
            transaction.isFinished = true;
            period.transactionId = QString::number(transaction.id);
            period.purchaseDate = *period.expiresDate;
            period.expiresDate =
                QDateTime::fromMSecsSinceEpoch(period.purchaseDate, Qt::UTC).addMonths(1).toMSecsSinceEpoch();
            period.transactionReason = QStringLiteral("RENEWAL");
            transaction.jws = identity.sign(period);
            records.transactions.append(transaction);
        }
        store.write(records);
    }

    PurchaseResult m_first = buy(monthly);

    template<typename Operation>
    static std::chrono::milliseconds timeOf(Operation operation)
    {
        const auto start = std::chrono::steady_clock::now();
        operation();
        return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    }
};

} // namespace

TEST_F(EmbeddedStoreSize, aThousandTransactionsStayQuick)
{
    constexpr qsizetype count = 1000;
    fill(count);
    ASSERT_GT(QFileInfo(file("transactions.json")).size(), count * 1000);
    // Generous, for sanitizers on a busy machine: checking every signature would take longer.
    EXPECT_LT(timeOf([&] { EXPECT_EQ(entitledTo(m_store), QStringList{monthly}); }), 1s);
    EXPECT_LT(timeOf([&] { EXPECT_EQ(buy(monthly).outcome, PurchaseOutcome::Success); }), 1s);
    const UpdateListener listener(open());
    EXPECT_TRUE(listener.hears(0));
    EXPECT_LT(timeOf([&] { control().renew(monthly); }), 1s);
    EXPECT_TRUE(listener.hears(1));
}

} // namespace tarnwik::test
