#include "EmbeddedStoreFixture.h"

namespace tarnwik::test {

namespace {

using namespace std::chrono_literals;

class EmbeddedStoreControlTest : public EmbeddedStoreTest
{
protected:
    /// The latest entitlement, checked.
    TransactionPayload latest() const { return payload(currentEntitlements(m_store).last()); }
};

} // namespace

TEST_F(EmbeddedStoreControlTest, buysWithoutAnAccount)
{
    control().purchaseElsewhere(monthly);
    EXPECT_EQ(latest().productId, monthly);
    EXPECT_EQ(latest().transactionReason, QStringLiteral("PURCHASE"));
    EXPECT_EQ(latest().appAccountToken, std::nullopt);
    EXPECT_EQ(failure([&] { control().purchaseElsewhere(monthly); }),
              QStringLiteral("The subscription to “tarnwik.sub.monthly” is active already."));
    EXPECT_EQ(failure([&] { control().purchaseElsewhere(QStringLiteral("other")); }),
              QStringLiteral("The store does not offer “other”."));
}

TEST_F(EmbeddedStoreControlTest, aRenewalBeginsWhereThePeriodEnds)
{
    PurchaseOptions options;
    options.appAccountToken = QUuid::createUuid();
    const TransactionPayload first = payload(*buy(monthly, options).verification);
    m_time += 1h;
    control().renew(monthly);
    const TransactionPayload second = latest();
    EXPECT_NE(second.transactionId, first.transactionId);
    EXPECT_EQ(second.originalTransactionId, first.transactionId);
    EXPECT_EQ(second.originalPurchaseDate, first.purchaseDate);
    EXPECT_EQ(second.purchaseDate, first.expiresDate);
    EXPECT_EQ(second.signedDate, m_time.count());
    EXPECT_EQ(second.appAccountToken, first.appAccountToken);
    const auto end = [](const TransactionPayload &read) {
        return QDateTime::fromMSecsSinceEpoch(*read.expiresDate, Qt::UTC).toString(Qt::ISODate);
    };
    EXPECT_EQ(end(second), QStringLiteral("2027-01-21T14:25:36Z"));
    control().renew(monthly);
    EXPECT_EQ(end(latest()), QStringLiteral("2027-02-21T14:25:36Z"));
    EXPECT_EQ(currentEntitlements(m_store).size(), 1);
}

TEST_F(EmbeddedStoreControlTest, onlyWhatIsActiveIsRenewedOrRevoked)
{
    const QString sentence = QStringLiteral("There is no active subscription to “tarnwik.sub.monthly”.");
    EXPECT_EQ(failure([&] { control().renew(monthly); }), sentence);
    EXPECT_EQ(failure([&] { control().revoke(monthly); }), sentence);
    buy(monthly);
    control().revoke(monthly);
    EXPECT_EQ(failure([&] { control().renew(monthly); }), sentence);
    EXPECT_EQ(failure([&] { control().revoke(monthly); }), sentence);
    buy(monthly);
    setNow("2027-01-01T00:00:00Z");
    EXPECT_EQ(failure([&] { control().renew(monthly); }), sentence);
    EXPECT_EQ(failure([&] { control().revoke(monthly); }), sentence);
}

TEST_F(EmbeddedStoreControlTest, aRevokedSubscriptionCanBeBoughtAgain)
{
    const quint64 first = buy(monthly).verification->transaction.id;
    control().renew(monthly);
    control().revoke(monthly);
    EXPECT_TRUE(entitledTo(m_store).isEmpty());
    const PurchaseResult again = buy(monthly);
    EXPECT_GT(again.verification->transaction.id, first);
    EXPECT_EQ(payload(*again.verification).originalTransactionId, QString::number(again.verification->transaction.id));
    EXPECT_EQ(entitledTo(m_store), QStringList{monthly});
}

TEST_F(EmbeddedStoreControlTest, aRevocationTellsWhenAndWhy)
{
    buy(monthly);
    m_time += 1h;
    control().revoke(monthly);
    const UpdateListener listener(open());
    ASSERT_TRUE(listener.hears(1));
    const TransactionPayload revoked = payload(listener.results()[0]);
    EXPECT_EQ(revoked.revocationDate, m_time.count());
    EXPECT_EQ(revoked.revocationReason, 0);
    EXPECT_EQ(revoked.signedDate, m_time.count());
    EXPECT_EQ(revoked.purchaseDate, (m_time - 1h).count());
}

TEST_F(EmbeddedStoreControlTest, approvesEachPendingPurchaseOnce)
{
    EXPECT_EQ(failure([&] { control().approve(); }), QStringLiteral("No purchase is waiting for approval."));
    configure("pending");
    buy(monthly);
    buy(monthly);
    EXPECT_EQ(control().approve(), 1);
    EXPECT_EQ(failure([&] { control().approve(); }), QStringLiteral("No purchase is waiting for approval."));
    EXPECT_EQ(entitledTo(m_store), QStringList{monthly});

    setNow("2027-01-01T00:00:00Z");
    buy(monthly);
    buy(yearly);
    EXPECT_EQ(control().approve(), 2);
    EXPECT_EQ(entitledTo(m_store), QStringList{yearly});
}

TEST_F(EmbeddedStoreControlTest, anApprovalThatFailsLosesNoPurchase)
{
    configure("pending");
    buy(monthly);
    write("configuration.json",
          storeConfiguration("pending").replace(R"("storefront": "USA")", R"("storefront": "FRA")"));
    EXPECT_EQ(failure([&] { control().approve(); }), QStringLiteral("The store does not offer “tarnwik.sub.monthly”."));
    configure("pending");
    EXPECT_EQ(control().approve(), 1);
}

TEST_F(EmbeddedStoreControlTest, theWorldsStoreHasAFolderOfItsOwn)
{
    EXPECT_EQ(embeddedStoreFolder(QStringLiteral("/a/b")), QStringLiteral("/a/b/store"));
}

} // namespace tarnwik::test
