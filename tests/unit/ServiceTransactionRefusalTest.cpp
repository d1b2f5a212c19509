#include "ServiceTransactionFixture.h"

namespace tarnwik::service {
namespace {

/// Every refusal leaves the accounts and the records of their subscriptions as they were, to the letter: of an account
/// without a transaction, and of one that has had one.
class ServiceTransactionRefusal : public ServiceTransactionTest
{
protected:
    /// What \a jws is refused with.
    std::string refusal(const QByteArray &jws)
    {
        const std::string before = state();
        const std::string first = outcome(post(jws));
        EXPECT_EQ(state(), before);
        return first;
    }

    std::string refusal(const TransactionPayload &payload) { return refusal(m_store.sign(payload)); }
};

TEST_F(ServiceTransactionRefusal, whatIsNoSignedTransaction)
{
    const QByteArray good = m_store.sign(monthly());
    for (const QByteArray &text :
         {QByteArray("not signed"), QByteArray("e30.e30"), good + '.', '.' + good, good + ".e30", good + '='})
        EXPECT_EQ(refusal(text), "422 invalid_signed_transaction_jws") << text.constData();
}

TEST_F(ServiceTransactionRefusal, anySignatureWithoutARoot)
{
    m_root = std::nullopt;
    EXPECT_EQ(refusal(monthly()), "422 invalid_transaction");
    m_root = QByteArray();
    EXPECT_EQ(refusal(monthly()), "422 invalid_transaction");
    m_root = QByteArray("-----BEGIN CERTIFICATE-----\nnot one\n-----END CERTIFICATE-----\n");
    EXPECT_EQ(refusal(monthly()), "422 invalid_transaction");
    // It may come later.
    m_root = m_store.rootCertificate();
    EXPECT_EQ(outcome(post(monthly())), "200 ");
}

TEST_F(ServiceTransactionRefusal, anySignatureWhereNoRootIsAskedFor)
{
    m_storeRoot = nullptr;
    const auto without = makeService();
    const std::string before = state();
    EXPECT_EQ(outcome(without->handle({.method = "POST",
                                       .path = QStringLiteral("/api/customer/v1/subscription/apple/transactions"),
                                       .authorization = "Bearer " + m_token,
                                       .contentType = "application/json",
                                       .body = R"({"signed_transaction_jws":")" + m_store.sign(monthly()) + R"("})"})),
              "422 invalid_transaction");
    EXPECT_EQ(state(), before);
}

TEST_F(ServiceTransactionRefusal, aPayloadThatWasChangedAfterwards)
{
    TransactionPayload changed = monthly();
    changed.expiresDate = now() + days(3650);
    const QByteArray forged = test::withPayload(m_store.sign(monthly()), encodePayload(changed));
    EXPECT_EQ(refusal(forged), "422 invalid_transaction");
}

TEST_F(ServiceTransactionRefusal, aSignatureThatWasChanged)
{
    const QByteArray good = m_store.sign(monthly());
    const QByteArray signature = test::signatureOf(good);
    for (const qsizetype at : {qsizetype(0), signature.size() / 2, signature.size() - 1}) {
        QByteArray changed = signature;
        changed[at] = char(changed[at] ^ 1);
        EXPECT_EQ(refusal(test::withSignature(good, changed)), "422 invalid_transaction") << at;
    }
    EXPECT_EQ(refusal(test::withSignature(good, QByteArray(64, '\0'))), "422 invalid_transaction");
    EXPECT_EQ(outcome(post(test::withSignature(good, signature))), "200 ");
}

TEST_F(ServiceTransactionRefusal, theSignatureOfAnotherTransaction)
{
    const QByteArray other = m_store.sign(yearly(QStringLiteral("5")));
    EXPECT_EQ(refusal(test::withSignature(m_store.sign(monthly()), test::signatureOf(other))),
              "422 invalid_transaction");
}

TEST_F(ServiceTransactionRefusal, aTextThatSaysItNeedsNoSignature)
{
    const QByteArray good = m_store.sign(monthly());
    QJsonObject header = QJsonDocument::fromJson(test::headerOf(good)).object();
    ASSERT_EQ(header.value(QLatin1String("alg")).toString(), QStringLiteral("ES256"));
    for (const char *algorithm : {"none", "HS256", "ES384", ""}) {
        header.insert(QStringLiteral("alg"), QLatin1String(algorithm));
        const QByteArray text = QJsonDocument(header).toJson(QJsonDocument::Compact);
        EXPECT_EQ(refusal(test::withHeader(good, text)), "422 invalid_transaction") << algorithm;
    }
}

TEST_F(ServiceTransactionRefusal, theSignatureOfAStrangersStore)
{
    const QByteArray strange = SigningIdentity::create(time()).sign(monthly());
    EXPECT_EQ(refusal(strange), "422 invalid_transaction");
    // Nor does it help to show the right certificates.
    EXPECT_EQ(refusal(test::withHeader(strange, test::headerOf(m_store.sign(monthly())))), "422 invalid_transaction");
}

TEST_F(ServiceTransactionRefusal, aGoodSignatureUnderAFaultyChain)
{
    using Fault = test::ChainFault;
    for (const Fault fault :
         {Fault::ExpiredSigner, Fault::SignerNotYetValid, Fault::ExpiredIntermediate, Fault::ExpiredRoot,
          Fault::ForeignRoot, Fault::ExchangedRoot, Fault::IntermediateIsNoAuthority, Fault::SignerOnAnotherCurve,
          Fault::NoSigner, Fault::NoIntermediate, Fault::NoRoot, Fault::OtherSignerKey}) {
        const test::SigningChain chain(time(), fault);
        m_root = chain.trustedRoot();
        EXPECT_EQ(refusal(chain.sign(monthly())), "422 invalid_transaction") << int(fault);
    }
    const test::SigningChain good(time());
    m_root = good.trustedRoot();
    EXPECT_EQ(outcome(post(good.sign(monthly()))), "200 ");
}

TEST_F(ServiceTransactionRefusal, certificatesThatAreNotValidAtTheServicesTime)
{
    const Moment today = m_now;
    m_now = today - std::chrono::days(2);
    EXPECT_EQ(refusal(monthly()), "422 invalid_transaction");
    m_now = today + std::chrono::years(21);
    EXPECT_EQ(refusal(monthly()), "422 invalid_transaction");
    m_now = today + std::chrono::years(19);
    EXPECT_EQ(outcome(post(monthly())), "200 ");
}

/// A good signature under a transaction that is none of the service's business, and the code for it.
struct BadPayload
{
    const char *name;
    void (*spoil)(TransactionPayload &, qint64 now);
    const char *code;
};

std::ostream &operator<<(std::ostream &stream, const BadPayload &payload)
{
    return stream << payload.name;
}

class ServiceBadTransaction : public ServiceTransactionRefusal, public testing::WithParamInterface<BadPayload>
{
};

TEST_P(ServiceBadTransaction, isRefusedWithoutChange)
{
    const auto &[name, spoil, code] = GetParam();
    TransactionPayload payload = yearly(QStringLiteral("7"));
    spoil(payload, now());
    EXPECT_EQ(refusal(payload), code);

    // The same for an account that has had a transaction.
    accepted(monthly(QStringLiteral("1")));
    m_now += std::chrono::hours(1);
    payload = yearly(QStringLiteral("7"));
    spoil(payload, now());
    EXPECT_EQ(refusal(payload), code);
    // Nor does the refused one stand in the way of the good one.
    EXPECT_EQ(accepted(yearly(QStringLiteral("7"))).planGb, 1000);
}

INSTANTIATE_TEST_SUITE_P(
    Payload, ServiceBadTransaction,
    testing::Values(
        BadPayload{"ofAnotherProgram",
                   [](TransactionPayload &payload, qint64) { payload.bundleId = QStringLiteral("example.other"); },
                   "422 invalid_transaction"},
        BadPayload{"withoutAnEnd", [](TransactionPayload &payload, qint64) { payload.expiresDate.reset(); },
                   "422 invalid_transaction"},
        BadPayload{"thatEndsBeforeItBegins",
                   [](TransactionPayload &payload, qint64 now) { payload.purchaseDate = now + days(900); },
                   "422 invalid_transaction"},
        BadPayload{"thatEndsInAYearWithoutAName",
                   [](TransactionPayload &payload, qint64) { payload.expiresDate = 253'402'300'800'000; },
                   "422 invalid_transaction"},
        BadPayload{
            "ofAnUnknownProduct",
            [](TransactionPayload &payload, qint64) { payload.productId = QStringLiteral("tarnwik.sub.weekly"); },
            "422 unknown_product"},
        BadPayload{"thatWasRevoked",
                   [](TransactionPayload &payload, qint64 now) {
                       payload.revocationDate = now;
                       payload.revocationReason = 0;
                   },
                   "422 transaction_revoked"},
        BadPayload{"thatWasUpgraded", [](TransactionPayload &payload, qint64) { payload.isUpgraded = true; },
                   "422 transaction_revoked"},
        BadPayload{"thatHasExpired",
                   [](TransactionPayload &payload, qint64 now) {
                       payload.purchaseDate = now - days(30);
                       payload.expiresDate = now;
                   },
                   "422 transaction_expired"}),
    [](const auto &info) { return info.param.name; });

TEST_F(ServiceTransactionRefusal, aRevocationOfWhatWasAcceptedChangesNothing)
{
    TransactionPayload payload = monthly();
    accepted(payload);
    payload.revocationDate = now();
    EXPECT_EQ(refusal(payload), "422 transaction_revoked");
}

TEST_F(ServiceTransactionRefusal, whatHasExpiredSinceItWasAccepted)
{
    const TransactionPayload payload = monthly();
    accepted(payload);
    m_now = Moment(std::chrono::milliseconds(payload.expiresDate.value() - 1));
    EXPECT_EQ(outcome(post(payload)), "200 ");
    m_now = Moment(std::chrono::milliseconds(payload.expiresDate.value()));
    EXPECT_EQ(refusal(payload), "422 transaction_expired");
}

TEST_F(ServiceTransactionRefusal, aStrangerWithoutASession)
{
    const std::string before = state();
    EXPECT_EQ(outcome(post(m_store.sign(monthly()), "nobody")), "401 unauthorized");
    EXPECT_EQ(state(), before);
}

} // namespace
} // namespace tarnwik::service
