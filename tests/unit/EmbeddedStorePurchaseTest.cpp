#include "EmbeddedStoreFixture.h"

namespace tarnwik::test {

namespace {

using namespace std::chrono_literals;

class EmbeddedStore : public EmbeddedStoreTest
{
};

} // namespace

TEST_F(EmbeddedStore, sellsWhatTheConfigurationOffersInTheStorefront)
{
    const QList<StoreProduct> both{{yearly, QStringLiteral("$119.00")}, {monthly, QStringLiteral("$14.99")}};
    EXPECT_EQ(run(m_store->products({monthly, QStringLiteral("other"), yearly, monthly}, {})), both);
    EXPECT_TRUE(run(m_store->products({}, {})).isEmpty());
    write("configuration.json",
          storeConfiguration("success").replace("\"USA\", \"products\"", "\"DEU\", \"products\""));
    EXPECT_EQ(run(m_store->products({monthly, yearly}, {})),
              QList<StoreProduct>({{yearly, QStringLiteral("119,00 €")}}));
    EXPECT_EQ(failure([&] { buy(monthly); }), QStringLiteral("The store does not offer “tarnwik.sub.monthly”."));
    QFile::remove(file("configuration.json"));
    Running<QList<StoreProduct>> products(m_store->products({monthly}, {}));
    m_clock->advance(10min);
    EXPECT_EQ(products.result(), QList<StoreProduct>({{monthly, QStringLiteral("$14.99")}}));
}

TEST_F(EmbeddedStore, aPurchaseMakesASignedTransaction)
{
    PurchaseOptions options;
    options.appAccountToken = QUuid::fromString(QStringLiteral("9B1F6C1E-3D0A-4C57-8A55-6F0F3C6F7F21"));
    const PurchaseResult result = buy(monthly, options);
    ASSERT_EQ(result.outcome, PurchaseOutcome::Success);
    ASSERT_TRUE(result.verification);
    EXPECT_FALSE(result.verification->verificationError);
    EXPECT_EQ(result.verification->transaction.productID, monthly);
    EXPECT_EQ(result.verification->transaction.revocationDate, std::nullopt);

    TransactionPayload expected;
    expected.transactionId = QString::number(result.verification->transaction.id);
    expected.originalTransactionId = expected.transactionId;
    expected.bundleId = QStringLiteral("example.tarnwik.client");
    expected.productId = monthly;
    expected.subscriptionGroupIdentifier = payload(*result.verification).subscriptionGroupIdentifier;
    expected.purchaseDate = m_time.count();
    expected.originalPurchaseDate = m_time.count();
    expected.expiresDate = now().addMonths(1).toMSecsSinceEpoch();
    expected.type = QStringLiteral("Auto-Renewable Subscription");
    expected.inAppOwnershipType = QStringLiteral("PURCHASED");
    expected.signedDate = m_time.count();
    expected.environment = QStringLiteral("LocalTesting");
    expected.transactionReason = QStringLiteral("PURCHASE");
    expected.storefront = QStringLiteral("USA");
    expected.appAccountToken = QStringLiteral("9b1f6c1e-3d0a-4c57-8a55-6f0f3c6f7f21");
    EXPECT_EQ(payload(*result.verification), expected);
    EXPECT_FALSE(expected.subscriptionGroupIdentifier.isEmpty());
    EXPECT_EQ(entitledTo(m_store), QStringList{monthly});
}

TEST_F(EmbeddedStore, withoutAnAccountTheTransactionNamesNone)
{
    const TransactionPayload bought = payload(*buy(yearly).verification);
    EXPECT_EQ(bought.appAccountToken, std::nullopt);
    EXPECT_EQ(bought.expiresDate, now().addYears(1).toMSecsSinceEpoch());
}

TEST_F(EmbeddedStore, anActiveSubscriptionIsNotBoughtTwice)
{
    const PurchaseResult first = buy(monthly);
    const PurchaseResult second = buy(monthly);
    EXPECT_EQ(second.outcome, PurchaseOutcome::Success);
    EXPECT_EQ(second.verification->jwsRepresentation, first.verification->jwsRepresentation);
    setNow("2026-12-21T14:25:36Z");
    EXPECT_NE(buy(monthly).verification->transaction.id, first.verification->transaction.id);
}

TEST_F(EmbeddedStore, anotherSubscriptionOfTheGroupTakesTheFormersPlace)
{
    const TransactionPayload first = payload(*buy(monthly).verification);
    m_time += 1h;
    const TransactionPayload second = payload(*buy(yearly).verification);
    EXPECT_EQ(second.originalTransactionId, first.transactionId);
    EXPECT_EQ(second.originalPurchaseDate, first.purchaseDate);
    EXPECT_EQ(second.purchaseDate, m_time.count());
    EXPECT_EQ(entitledTo(m_store), QStringList{yearly});
    EXPECT_EQ(entitledTo(open()), QStringList{yearly});
    buy(monthly);
    EXPECT_EQ(entitledTo(m_store), QStringList{monthly});

    // The former ones are signed anew, and say so themselves.
    const UpdateListener listener(open());
    ASSERT_TRUE(listener.hears(3));
    EXPECT_EQ(payload(listener.results()[0]).isUpgraded, true);
    EXPECT_EQ(payload(listener.results()[1]).isUpgraded, true);
    EXPECT_EQ(payload(listener.results()[2]).isUpgraded, std::nullopt);
}

TEST_F(EmbeddedStore, outcomesWithoutAPurchase)
{
    const QList<std::pair<QByteArray, PurchaseOutcome>> outcomes{{"pending", PurchaseOutcome::Pending},
                                                                 {"cancelled", PurchaseOutcome::UserCancelled},
                                                                 {"unknown", PurchaseOutcome::Unknown}};
    for (const auto &[word, outcome] : outcomes) {
        configure(word);
        const PurchaseResult result = buy(monthly);
        EXPECT_EQ(result.outcome, outcome) << word.constData();
        EXPECT_FALSE(result.verification) << word.constData();
    }
    configure("failing");
    EXPECT_EQ(failure([&] { buy(monthly); }), QStringLiteral("The card was refused."));
    EXPECT_TRUE(entitledTo(m_store).isEmpty());
    configure("success");
    EXPECT_EQ(buy(monthly).outcome, PurchaseOutcome::Success);
}

TEST_F(EmbeddedStore, anUnverifiedPurchaseHasABrokenSignatureAndIsNotRecorded)
{
    configure("unverified");
    const PurchaseResult result = buy(monthly);
    ASSERT_EQ(result.outcome, PurchaseOutcome::Success);
    ASSERT_TRUE(result.verification->verificationError);
    EXPECT_EQ(result.verification->transaction.productID, monthly);
    try {
        payload(*result.verification);
        ADD_FAILURE() << "the signature is good";
    } catch (const VerificationError &error) {
        EXPECT_EQ(error.errorCase(), VerificationError::Case::InvalidSignature);
        EXPECT_EQ(result.verification->verificationError->localizedDescription(), error.localizedDescription());
    }
    EXPECT_TRUE(currentEntitlements(m_store).isEmpty());
}

TEST_F(EmbeddedStore, entitlementsEndWithTheirPeriod)
{
    buy(monthly);
    setNow("2026-12-21T14:25:35Z");
    EXPECT_EQ(entitledTo(m_store), QStringList{monthly});
    setNow("2026-12-21T14:25:36Z");
    EXPECT_TRUE(entitledTo(m_store).isEmpty());
}

TEST_F(EmbeddedStore, anEmptyStoreEntitlesToNothingAndMakesNoIdentity)
{
    EXPECT_TRUE(currentEntitlements(m_store).isEmpty());
    EXPECT_EQ(embeddedStoreRoot(m_path), std::nullopt);
    EXPECT_EQ(QDir(m_path).entryList(QDir::Files), QStringList{QStringLiteral("configuration.json")});
}

TEST_F(EmbeddedStore, takesItsTime)
{
    configure("success", R"(, "delays_ms": {"products": 100, "purchase": 200, "sync": 300})");
    Running<QList<StoreProduct>> products(m_store->products({monthly}, {}));
    Running<PurchaseResult> purchase(m_store->purchase({monthly, QString()}, {}, {}));
    Running<> sync(m_store->sync({}));
    const auto pass = [&](std::chrono::milliseconds duration) {
        m_clock->advance(duration);
        settleEvents();
        return int(products.hasEnded()) + int(purchase.hasEnded()) + int(sync.hasEnded());
    };
    EXPECT_EQ(pass(99ms), 0);
    EXPECT_EQ(pass(1ms), 1);
    EXPECT_EQ(pass(99ms), 1);
    EXPECT_TRUE(entitledTo(m_store).isEmpty());
    EXPECT_EQ(pass(1ms), 2);
    EXPECT_EQ(pass(99ms), 2);
    EXPECT_EQ(pass(1ms), 3);
    EXPECT_EQ(products.result().size(), 1);
    EXPECT_EQ(purchase.result().outcome, PurchaseOutcome::Success);
    EXPECT_NO_THROW(sync.result());
}

TEST_F(EmbeddedStore, everyWaitCanBeCancelled)
{
    for (const QByteArray &rest :
         {QByteArray(), QByteArray(R"(, "delays_ms": {"products": 1, "purchase": 1, "sync": 1})")}) {
        configure("success", rest);
        std::stop_source source;
        Running<QList<StoreProduct>> products(m_store->products({monthly}, source.get_token()));
        Running<PurchaseResult> purchase(m_store->purchase({monthly, QString()}, {}, source.get_token()));
        Running<> sync(m_store->sync(source.get_token()));
        Running<QList<VerificationResult>> entitlements(collect(m_store, source.get_token()));
        source.request_stop();
        EXPECT_FALSE(products.hasEnded() || purchase.hasEnded() || sync.hasEnded() || entitlements.hasEnded());
        EXPECT_THROW(products.result(), async::Cancelled);
        EXPECT_THROW(purchase.result(), async::Cancelled);
        EXPECT_THROW(sync.result(), async::Cancelled);
        EXPECT_THROW(entitlements.result(), async::Cancelled);
        EXPECT_TRUE(entitledTo(m_store).isEmpty());
    }
}

} // namespace tarnwik::test
