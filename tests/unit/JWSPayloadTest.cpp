#include "JWSFixture.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace tarnwik::test {

namespace {

QJsonObject sampleObject()
{
    return QJsonDocument::fromJson(encodePayload(sampleTransaction(moment()))).object();
}

QByteArray json(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QByteArray signedPayload(const QByteArray &payload)
{
    return store().sign(store().header(), payload);
}

/// The sample with \a key set to \a value, or without it when that is undefined; well signed.
QByteArray signedWith(const QString &key, const QJsonValue &value)
{
    QJsonObject payload = sampleObject();
    payload.insert(key, value);
    return signedPayload(json(payload));
}

TransactionPayload verified(const QByteArray &jws)
{
    return verifyTransaction(jws, trustIn(store()));
}

/// A transaction with every field set, each to a value of its own.
TransactionPayload fullTransaction()
{
    TransactionPayload payload = sampleTransaction(moment());
    payload.originalPurchaseDate -= 1000;
    payload.signedDate += 7;
    payload.quantity = 3;
    payload.revocationDate = payload.purchaseDate + 5000;
    payload.revocationReason = 1;
    payload.isUpgraded = true;
    return payload;
}

TEST(SignedTransaction, isReadAsItWasSigned)
{
    const auto payload = fullTransaction();
    const QByteArray jws = store().sign(payload);
    EXPECT_TRUE(verified(jws) == payload);
    EXPECT_TRUE(readPayloadUnverified(jws) == payload);
}

TEST(SignedTransaction, mayLackWhatIsOptional)
{
    auto payload = sampleTransaction(moment());
    payload.expiresDate.reset();
    payload.appAccountToken.reset();
    EXPECT_TRUE(verified(store().sign(payload)) == payload);
}

TEST(SignedTransaction, keepsTextsOutsideASCII)
{
    auto payload = sampleTransaction(moment());
    payload.environment = QStringLiteral("Prüfung \"例\" \\ 😀\n");
    EXPECT_TRUE(verified(store().sign(payload)) == payload);
}

TEST(TransactionPayload, isWrittenUnderTheStoresNames)
{
    const QJsonObject object = QJsonDocument::fromJson(encodePayload(fullTransaction())).object();
    const QJsonObject expected{
        {QStringLiteral("transactionId"), QStringLiteral("2000000123456789")},
        {QStringLiteral("originalTransactionId"), QStringLiteral("2000000123450000")},
        {QStringLiteral("bundleId"), bundleIdentifier()},
        {QStringLiteral("productId"), QStringLiteral("example.tarnwik.monthly")},
        {QStringLiteral("subscriptionGroupIdentifier"), QStringLiteral("21400001")},
        {QStringLiteral("purchaseDate"), qint64(1930367167000)},
        {QStringLiteral("originalPurchaseDate"), qint64(1930367167000 - 1000)},
        {QStringLiteral("expiresDate"), qint64(1933045567000)},
        {QStringLiteral("quantity"), 3},
        {QStringLiteral("type"), QStringLiteral("Auto-Renewable Subscription")},
        {QStringLiteral("inAppOwnershipType"), QStringLiteral("PURCHASED")},
        {QStringLiteral("signedDate"), qint64(1930367167007)},
        {QStringLiteral("environment"), QStringLiteral("Production")},
        {QStringLiteral("transactionReason"), QStringLiteral("PURCHASE")},
        {QStringLiteral("storefront"), QStringLiteral("DEU")},
        {QStringLiteral("revocationDate"), qint64(1930367167000 + 5000)},
        {QStringLiteral("revocationReason"), 1},
        {QStringLiteral("isUpgraded"), true},
        {QStringLiteral("appAccountToken"), QStringLiteral("6f0c1e62-27b5-4b0a-9d0e-1c5a5b8f9a01")},
    };
    EXPECT_EQ(json(object).toStdString(), json(expected).toStdString());
}

TEST(TransactionPayload, writesNumbersAsWholeNumbers)
{
    EXPECT_TRUE(encodePayload(fullTransaction()).contains(R"("purchaseDate":1930367167000,)"));
}

TEST(TransactionPayload, leavesOutWhatIsAbsent)
{
    auto payload = sampleTransaction(moment());
    payload.expiresDate.reset();
    const auto object = QJsonDocument::fromJson(encodePayload(payload)).object();
    for (const char *key : {"expiresDate", "revocationDate", "revocationReason", "isUpgraded"})
        EXPECT_FALSE(object.contains(QLatin1String(key))) << key;
}

TEST(SignedTransaction, isRefusedWithoutAPropertyThatEveryTransactionHas)
{
    auto required = sampleObject();
    required.remove(QStringLiteral("expiresDate"));
    required.remove(QStringLiteral("appAccountToken"));
    ASSERT_EQ(required.size(), 14);
    for (const QString &key : required.keys()) {
        for (const QJsonValue &absent : {QJsonValue(QJsonValue::Undefined), QJsonValue(QJsonValue::Null)}) {
            const QByteArray jws = signedWith(key, absent);
            EXPECT_EQ(faultOf(jws), Case::MissingRequiredProperties) << key.toStdString();
            EXPECT_FALSE(readPayloadUnverified(jws)) << key.toStdString();
        }
    }
}

TEST(SignedTransaction, isRefusedWithAPropertyOfAnotherType)
{
    const auto full = QJsonDocument::fromJson(encodePayload(fullTransaction())).object();
    for (const QString &key : full.keys()) {
        const QJsonValue value = full.value(key);
        const QJsonValue other = value.isString() ? QJsonValue(1) : QJsonValue(QStringLiteral("1"));
        EXPECT_EQ(faultOf(signedWith(key, other)), Case::MissingRequiredProperties) << key.toStdString();
        EXPECT_EQ(faultOf(signedWith(key, QJsonObject())), Case::MissingRequiredProperties) << key.toStdString();
    }
    EXPECT_EQ(faultOf(signedWith(QStringLiteral("purchaseDate"), 1.5)), Case::MissingRequiredProperties);
    EXPECT_EQ(faultOf(signedWith(QStringLiteral("purchaseDate"), 1e300)), Case::MissingRequiredProperties);
}

TEST(SignedTransaction, takesNullForAbsentWhereItMayBe)
{
    EXPECT_EQ(verified(signedWith(QStringLiteral("expiresDate"), QJsonValue::Null)).expiresDate, std::nullopt);
}

TEST(SignedTransaction, hasDecimalIdentifiers)
{
    for (const char *key : {"transactionId", "originalTransactionId"}) {
        for (const char *text : {"", "a", "1a", "-1", "+1", " 1", "1 ", "01", "1.0", "0x1", "1e3",
                                 "18446744073709551616", "99999999999999999999999", "١"})
            EXPECT_EQ(faultOf(signedWith(QLatin1String(key), QString::fromUtf8(text))), Case::MissingRequiredProperties)
                << key << ' ' << text;
        for (const char *text : {"1", "2000000123456789", "18446744073709551615"})
            EXPECT_EQ(faultOf(signedWith(QLatin1String(key), QString::fromUtf8(text))), std::nullopt)
                << key << ' ' << text;
    }
}

TEST(SignedTransaction, isRefusedForAnotherProgram)
{
    auto payload = sampleTransaction(moment());
    payload.bundleId += u'2';
    EXPECT_EQ(faultOf(store().sign(payload)), Case::MissingRequiredProperties);
    EXPECT_TRUE(readPayloadUnverified(store().sign(payload)) == payload);
}

TEST(SignedTransaction, mayTellMoreThanIsKnown)
{
    EXPECT_EQ(faultOf(signedWith(QStringLiteral("price"), QJsonObject{{QStringLiteral("EUR"), 499}})), std::nullopt);
}

TEST(SignedTransaction, hasAPayloadThatIsAnObjectWithEveryKeyOnce)
{
    const QByteArray good = json(sampleObject());
    const QByteArray repeated = QByteArray(good).replace(0, 1, R"({"bundleId":"example.other",)");
    for (const QByteArray &payload : {QByteArray(), QByteArray("[]"), QByteArray("\xff"), good + good, good.chopped(1),
                                      repeated, QByteArray(20000, '[')}) {
        EXPECT_EQ(faultOf(signedPayload(payload)), Case::InvalidEncoding) << payload.first(20).constData();
        EXPECT_FALSE(readPayloadUnverified(signedPayload(payload))) << payload.first(20).constData();
    }
}

TEST(UnverifiedPayload, isReadWhateverElseIsWrong)
{
    const auto payload = sampleTransaction(moment());
    const QByteArray encoded = goodTransaction().split('.').at(1);
    EXPECT_TRUE(readPayloadUnverified("." + encoded + ".") == payload);
    EXPECT_TRUE(readPayloadUnverified("%%." + encoded + ".\n") == payload);
}

TEST(UnverifiedPayload, isNothingInGarbage)
{
    for (const char *text : {"", ".", "..", "...", "a.b.c", "e30.e30.e30", "{}", "null", "\xff.\xff.\xff"})
        EXPECT_FALSE(readPayloadUnverified(text)) << text;
    EXPECT_FALSE(readPayloadUnverified(goodTransaction().split('.').at(1)));
    EXPECT_FALSE(readPayloadUnverified(QByteArray(1 << 20, '.')));
}

TEST(VerificationError, tellsEachCaseInASentence)
{
    QStringList texts;
    for (const Case errorCase : {Case::InvalidEncoding, Case::InvalidCertificateChain, Case::InvalidSignature,
                                 Case::MissingRequiredProperties}) {
        texts.append(VerificationError(errorCase).localizedDescription());
        EXPECT_TRUE(texts.last().endsWith(u'.')) << texts.last().toStdString();
    }
    EXPECT_EQ(texts.removeDuplicates(), 0);
}

} // namespace

} // namespace tarnwik::test
