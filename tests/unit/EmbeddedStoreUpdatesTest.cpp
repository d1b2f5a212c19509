#include "EmbeddedStoreFixture.h"

namespace tarnwik::test {

namespace {

using namespace std::chrono_literals;

class EmbeddedStoreUpdates : public EmbeddedStoreTest
{
};

} // namespace

TEST_F(EmbeddedStoreUpdates, bringWhatAnotherProgramBought)
{
    const UpdateListener own(m_store);
    const UpdateListener other(open());
    settleEvents();
    const PurchaseResult bought = buy(monthly);
    ASSERT_TRUE(other.hears(1));
    EXPECT_EQ(other.results()[0].jwsRepresentation, bought.verification->jwsRepresentation);
    EXPECT_EQ(other.results()[0].transaction, bought.verification->transaction);
    EXPECT_FALSE(other.results()[0].verificationError);
    EXPECT_TRUE(own.hears(0)) << "the purchase came by purchase() already";
    run(m_store->finish(bought.verification->transaction));
    EXPECT_TRUE(other.hears(1)) << "finishing is no news";
    EXPECT_TRUE(own.hears(0));
}

TEST_F(EmbeddedStoreUpdates, bringWhatIsBoughtElsewhereRenewedAndRevoked)
{
    const UpdateListener listener(m_store);
    settleEvents();
    control().purchaseElsewhere(monthly);
    ASSERT_TRUE(listener.hears(1));
    control().renew(monthly);
    ASSERT_TRUE(listener.hears(2));
    EXPECT_EQ(payload(listener.results()[1]).transactionReason, QStringLiteral("RENEWAL"));
    m_time += 1h;
    control().revoke(monthly);
    ASSERT_TRUE(listener.hears(3));
    EXPECT_EQ(listener.results()[2].transaction.id, listener.results()[1].transaction.id);
    EXPECT_EQ(listener.results()[2].transaction.revocationDate, now());
    EXPECT_TRUE(entitledTo(m_store).isEmpty());
}

TEST_F(EmbeddedStoreUpdates, bringApprovedPurchases)
{
    const UpdateListener listener(m_store);
    configure("pending");
    PurchaseOptions options;
    options.appAccountToken = QUuid::createUuid();
    buy(monthly, options);
    EXPECT_TRUE(listener.hears(0));
    EXPECT_EQ(control().approve(), 1);
    ASSERT_TRUE(listener.hears(1));
    EXPECT_EQ(payload(listener.results()[0]).appAccountToken, options.appAccountToken->toString(QUuid::WithoutBraces));
    EXPECT_EQ(entitledTo(m_store), QStringList{monthly});
}

TEST_F(EmbeddedStoreUpdates, unfinishedTransactionsComeAgainAtEveryStart)
{
    const StoreTransaction bought = buy(monthly).verification->transaction;
    control().renew(monthly);
    for (int start = 0; start < 2; ++start) {
        const UpdateListener listener(open());
        ASSERT_TRUE(listener.hears(2));
        EXPECT_EQ(listener.results()[0].transaction, bought);
    }
    run(open()->finish(bought));
    const UpdateListener listener(open());
    ASSERT_TRUE(listener.hears(1));
    EXPECT_NE(listener.results()[0].transaction.id, bought.id);
}

TEST_F(EmbeddedStoreUpdates, aRevocationIsToBeFinishedAgain)
{
    const StoreTransaction bought = buy(monthly).verification->transaction;
    run(m_store->finish(bought));
    EXPECT_TRUE(UpdateListener(open()).hears(0));
    control().revoke(monthly);
    const UpdateListener listener(open());
    ASSERT_TRUE(listener.hears(1));
    EXPECT_TRUE(listener.results()[0].transaction.revocationDate);
}

TEST_F(EmbeddedStoreUpdates, severalListenersOfOneStoreHearTheSame)
{
    const UpdateListener one(m_store);
    const UpdateListener other(m_store);
    settleEvents();
    control().purchaseElsewhere(yearly);
    EXPECT_TRUE(one.hears(1));
    EXPECT_TRUE(other.hears(1));
}

TEST_F(EmbeddedStoreUpdates, endWhenTheyAreStopped)
{
    control().purchaseElsewhere(yearly);
    UpdateListener waiting(m_store);
    UpdateListener starting(m_store);
    starting.stop();
    EXPECT_THROW(starting.task().result(), async::Cancelled);
    EXPECT_TRUE(starting.results().isEmpty());
    ASSERT_TRUE(waiting.hears(1));
    waiting.stop();
    EXPECT_FALSE(waiting.task().hasEnded());
    EXPECT_THROW(waiting.task().result(), async::Cancelled);
}

TEST_F(EmbeddedStoreUpdates, aTransactionThatWasTamperedWithIsUnverified)
{
    buy(monthly);
    const QByteArray records = content(file("transactions.json"));
    const qsizetype signature = records.lastIndexOf('.') + 1;
    QByteArray tampered = records;
    tampered[signature] = tampered[signature] == 'A' ? 'B' : 'A';
    write("transactions.json", tampered);
    const UpdateListener listener(open());
    ASSERT_TRUE(listener.hears(1));
    EXPECT_TRUE(listener.results()[0].verificationError);
    EXPECT_EQ(listener.results()[0].transaction.productID, monthly);
    EXPECT_EQ(entitledTo(m_store), QStringList{monthly + u'?'});

    write("transactions.json", QByteArray(records).replace(signature - 1, 1, "!"));
    const auto results = currentEntitlements(m_store);
    ASSERT_EQ(results.size(), 1);
    EXPECT_TRUE(results[0].verificationError);
    EXPECT_EQ(results[0].transaction, StoreTransaction());

    // Nobody is kept from buying by it.
    EXPECT_FALSE(buy(monthly).verification->verificationError);
    EXPECT_EQ(entitledTo(m_store), (QStringList{QStringLiteral("?"), monthly}));
}

TEST_F(EmbeddedStoreUpdates, goOnAfterARecordThatIsNone)
{
    const UpdateListener listener(m_store);
    settleEvents();
    write("transactions.json", "{}");
    ASSERT_TRUE(listener.hears(1));
    ASSERT_TRUE(listener.results()[0].verificationError);
    EXPECT_TRUE(listener.results()[0].verificationError->localizedDescription().contains(
        QStringLiteral("last_serial is missing")));
    EXPECT_EQ(listener.results()[0].transaction, StoreTransaction());
    EXPECT_TRUE(listener.results()[0].jwsRepresentation.isEmpty());
    control().purchaseElsewhere(monthly);
    ASSERT_TRUE(listener.hears(2));
    EXPECT_FALSE(listener.results()[1].verificationError);
}

TEST_F(EmbeddedStoreUpdates, tellOfAProblemThatStaysOnlyOnce)
{
    const UpdateListener listener(m_store);
    settleEvents();
    QDir(m_path).mkdir(QStringLiteral("transactions.json"));
    ASSERT_TRUE(listener.hears(1));
    write("another", "1");
    write("third", "2");
    EXPECT_TRUE(listener.hears(1));
    QDir(m_path).rmdir(QStringLiteral("transactions.json"));
    control().purchaseElsewhere(monthly);
    m_clock->advance(10s);
    EXPECT_TRUE(listener.hears(2));
}

TEST_F(EmbeddedStoreUpdates, goOnWhenTheFolderWasRemoved)
{
    const UpdateListener listener(m_store);
    settleEvents();
    control().purchaseElsewhere(monthly);
    ASSERT_TRUE(listener.hears(1));
    QDir(m_path).removeRecursively();
    ASSERT_TRUE(spinUntil([&] { return QDir(m_path).exists(); })) << "nobody made the folder anew";
    configure("success");
    m_time -= 24h;
    control().purchaseElsewhere(yearly);
    ASSERT_TRUE(listener.hears(2));
    EXPECT_EQ(listener.results()[1].transaction.productID, yearly);
    EXPECT_FALSE(listener.results()[1].verificationError);
}

TEST_F(EmbeddedStoreUpdates, waitForAFolderThatCannotBeMadeYet)
{
    const QString obstacle = m_folder.filePath(QStringLiteral("obstacle"));
    ASSERT_TRUE(QFile(obstacle).open(QIODevice::WriteOnly));
    m_path = obstacle + QStringLiteral("/store");
    const UpdateListener listener(open());
    EXPECT_TRUE(listener.hears(0));
    ASSERT_TRUE(QFile::remove(obstacle));
    control().purchaseElsewhere(monthly);
    m_clock->advance(10s);
    EXPECT_TRUE(listener.hears(1));
}

} // namespace tarnwik::test
