#include "JWSFixture.h"

#include "jws/ES256.h"

namespace tarnwik::test {

namespace {

/// Calls \a check with \a bytes as often as it has bits, each time with another one flipped.
void forEveryFlippedBit(QByteArray bytes, auto check)
{
    for (qsizetype place = 0; place < bytes.size(); ++place) {
        for (int bit = 0; bit < 8; ++bit) {
            const char original = bytes[place];
            bytes[place] = char(original ^ (1 << bit));
            check(bytes, place);
            bytes[place] = original;
        }
    }
}

TEST(TamperedTransaction, isNeverVerifiedWithAnotherCharacter)
{
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
    QByteArray jws = goodTransaction();
    ASSERT_EQ(faultOf(jws), std::nullopt);
    for (qsizetype place = 0; place < jws.size(); ++place) {
        const char original = jws[place];
        const auto number = alphabet.find(original);
        // The neighbour differs in the lowest bits, which base64 drops behind the last byte; and what is no base64.
        const char neighbour = number == std::string_view::npos ? 'A' : alphabet[number ^ 1];
        for (const char other : {neighbour, char(original ^ 0x20), char(original ^ 0x80)}) {
            jws[place] = other;
            EXPECT_NE(faultOf(jws), std::nullopt) << place << ' ' << other;
        }
        jws[place] = original;
    }
}

TEST(TamperedTransaction, isNeverVerifiedWithACharacterMoreOrLess)
{
    const QByteArray &jws = goodTransaction();
    for (qsizetype place = 0; place < jws.size(); ++place) {
        EXPECT_NE(faultOf(QByteArray(jws).remove(place, 1)), std::nullopt) << place;
        EXPECT_NE(faultOf(QByteArray(jws).insert(place, 'A')), std::nullopt) << place;
    }
}

TEST(TamperedTransaction, isNeverVerifiedWithAnotherPayload)
{
    forEveryFlippedBit(payloadOf(goodTransaction()), [](const QByteArray &payload, qsizetype place) {
        const auto fault = faultOf(withPayload(goodTransaction(), payload));
        EXPECT_TRUE(fault == Case::InvalidEncoding || fault == Case::InvalidSignature) << place;
    });
}

TEST(TamperedTransaction, isNeverVerifiedWithAnotherSignature)
{
    forEveryFlippedBit(signatureOf(goodTransaction()), [](const QByteArray &signature, qsizetype place) {
        EXPECT_EQ(faultOf(withSignature(goodTransaction(), signature)), Case::InvalidSignature) << place;
    });
}

TEST(TamperedTransaction, isNeverVerifiedWithAnotherHeader)
{
    // One that means the same, and one with certificates that are good for another transaction.
    const QByteArray spaced = headerOf(goodTransaction()).replace(0, 1, "{ ");
    EXPECT_EQ(faultOf(withHeader(goodTransaction(), spaced)), Case::InvalidSignature);
    const SigningChain other(moment());
    EXPECT_EQ(faultOf(withHeader(goodTransaction(), other.header())), Case::InvalidCertificateChain);
    EXPECT_EQ(faultOf(withHeader(goodTransaction(), other.header()), trustIn(other)), Case::InvalidSignature);
}

TEST(TamperedTransaction, isNotVerifiedByTheSignatureOfAnother)
{
    auto payload = sampleTransaction(moment());
    payload.transactionId = QStringLiteral("2");
    const QByteArray other = store().sign(payload);
    EXPECT_EQ(faultOf(withSignature(goodTransaction(), signatureOf(other))), Case::InvalidSignature);
}

TEST(TransactionSignature, hasItsLength)
{
    const QByteArray signature = signatureOf(goodTransaction());
    ASSERT_EQ(signature.size(), 64);
    for (const QByteArray &other : {signature.first(32), signature.chopped(1), signature + '\0', '\0' + signature,
                                    signature + signature, QByteArray(1, '\0')})
        EXPECT_EQ(faultOf(withSignature(goodTransaction(), other)), Case::InvalidSignature) << other.size();
}

TEST(TransactionSignature, isNeverOfZerosOrOverlong)
{
    for (const char filling : {'\0', '\x01', '\xff'})
        EXPECT_EQ(faultOf(withSignature(goodTransaction(), QByteArray(64, filling))), Case::InvalidSignature);
}

TEST(TransactionSignature, isRefusedInTheLibrarysOwnForm)
{
    const QByteArray raw = signatureOf(goodTransaction());
    const auto *bytes = reinterpret_cast<const unsigned char *>(raw.constData());
    const openssl::Signature pair(ECDSA_SIG_new());
    ASSERT_EQ(ECDSA_SIG_set0(pair.get(), BN_bin2bn(bytes, 32, nullptr), BN_bin2bn(bytes + 32, 32, nullptr)), 1);
    QByteArray encoded(i2d_ECDSA_SIG(pair.get(), nullptr), Qt::Uninitialized);
    auto *end = reinterpret_cast<unsigned char *>(encoded.data());
    ASSERT_EQ(i2d_ECDSA_SIG(pair.get(), &end), encoded.size());
    EXPECT_EQ(faultOf(withSignature(goodTransaction(), encoded)), Case::InvalidSignature);
}

} // namespace

} // namespace tarnwik::test
