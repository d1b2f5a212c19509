#include "JWSFixture.h"

#include "jws/CertificateChain.h"
#include "jws/SigningIdentity.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <set>

namespace tarnwik::test {

namespace {

/// One for the whole program.
const SigningIdentity &identity()
{
    static const auto made = SigningIdentity::create(moment());
    return made;
}

TransactionTrust trustIn(const SigningIdentity &other, const QDateTime &now = moment())
{
    return {other.rootCertificate(), bundleIdentifier(), now};
}

/// The certificates that \a signer shows.
QList<QByteArray> certificatesOf(const SigningIdentity &signer)
{
    const auto header = QJsonDocument::fromJson(headerOf(signer.sign(sampleTransaction(moment())))).object();
    QList<QByteArray> certificates;
    for (const auto &entry : header.value(QLatin1String("x5c")).toArray())
        certificates.append(QByteArray::fromBase64(entry.toString().toLatin1()));
    return certificates;
}

/// \a pem cut before each line that begins a key or a certificate.
QList<QByteArray> blocksOf(const QByteArray &pem)
{
    QList<QByteArray> blocks = QByteArray(pem).replace("-----BEGIN", "\v-----BEGIN").split('\v');
    blocks.removeFirst();
    return blocks;
}

QByteArray privateKeyText(const openssl::Key &key, const EVP_CIPHER *cipher = nullptr)
{
    const openssl::Memory memory(BIO_new(BIO_s_mem()));
    QByteArray password("secret");
    auto *text = cipher ? reinterpret_cast<unsigned char *>(password.data()) : nullptr;
    PEM_write_bio_PrivateKey(memory.get(), key.get(), cipher, text, cipher ? int(password.size()) : 0, nullptr,
                             nullptr);
    char *data = nullptr;
    const auto size = BIO_get_mem_data(memory.get(), &data);
    return QByteArray(data, size);
}

TEST(SigningIdentity, signsWhatIsVerified)
{
    const auto payload = sampleTransaction(moment());
    EXPECT_TRUE(verifyTransaction(identity().sign(payload), trustIn(identity())) == payload);
}

TEST(SigningIdentity, isTrustedForTwentyYears)
{
    const QByteArray jws = identity().sign(sampleTransaction(moment()));
    EXPECT_EQ(faultOf(jws, trustIn(identity(), moment().addDays(-1))), std::nullopt);
    EXPECT_EQ(faultOf(jws, trustIn(identity(), moment().addYears(20).addSecs(-1))), std::nullopt);
    EXPECT_EQ(faultOf(jws, trustIn(identity(), moment().addDays(-1).addSecs(-1))), Case::InvalidCertificateChain);
    EXPECT_EQ(faultOf(jws, trustIn(identity(), moment().addYears(20))), Case::InvalidCertificateChain);
}

TEST(SigningIdentity, isAnotherOneEachTime)
{
    const auto other = SigningIdentity::create(moment());
    EXPECT_NE(other.rootCertificate(), identity().rootCertificate());
    EXPECT_EQ(faultOf(other.sign(sampleTransaction(moment())), trustIn(identity())), Case::InvalidCertificateChain);
}

TEST(SigningIdentity, showsSignerIntermediateAndRoot)
{
    const auto certificates = certificatesOf(identity());
    ASSERT_EQ(certificates.size(), 3);
    const std::array expected{KU_DIGITAL_SIGNATURE, KU_KEY_CERT_SIGN | KU_CRL_SIGN, KU_KEY_CERT_SIGN | KU_CRL_SIGN};
    const std::array longestPath{-1L, 0L, 1L};
    std::set<QByteArray> serials;
    for (std::size_t place = 0; place < expected.size(); ++place) {
        const auto certificate = certificateFromDER(certificates[qsizetype(place)]);
        EXPECT_EQ(X509_get_key_usage(certificate.get()), unsigned(expected[place])) << place;
        EXPECT_EQ(X509_check_ca(certificate.get()) == 1, place > 0) << place;
        EXPECT_EQ(X509_get_pathlen(certificate.get()), longestPath[place]) << place;
        const auto *serial = X509_get0_serialNumber(certificate.get());
        const openssl::Number number(ASN1_INTEGER_to_BN(serial, nullptr));
        EXPECT_FALSE(BN_is_negative(number.get()));
        EXPECT_GT(BN_num_bits(number.get()), 64);
        serials.emplace(reinterpret_cast<const char *>(serial->data), serial->length);
    }
    EXPECT_EQ(serials.size(), 3U);
    EXPECT_EQ(certificates.last(), certificateToDER(certificateFromPEM(identity().rootCertificate()).get()));
}

TEST(SigningIdentity, comesBackFromPEM)
{
    const auto restored = SigningIdentity::fromPEM(identity().toPEM());
    const auto payload = sampleTransaction(moment());
    EXPECT_TRUE(verifyTransaction(restored.sign(payload), trustIn(identity())) == payload);
    EXPECT_EQ(restored.toPEM(), identity().toPEM());
    EXPECT_EQ(restored.rootCertificate(), identity().rootCertificate());
}

TEST(SigningIdentity, tellsNothingSecretInItsRoot)
{
    EXPECT_TRUE(identity().toPEM().contains("PRIVATE KEY"));
    EXPECT_FALSE(identity().rootCertificate().contains("PRIVATE KEY"));
    EXPECT_EQ(blocksOf(identity().rootCertificate()).size(), 1);
}

TEST(SigningIdentity, isNotMadeOfGarbage)
{
    const auto blocks = blocksOf(identity().toPEM());
    ASSERT_EQ(blocks.size(), 4);
    const QByteArray certificates = blocks[1] + blocks[2] + blocks[3];
    const QByteArray damaged = "-----BEGIN CERTIFICATE-----\nAAAA\n-----END CERTIFICATE-----\n";
    for (const QByteArray &text :
         {QByteArray(), QByteArray("garbage"), QByteArray(1000, '\0'), certificates, blocks[0], blocks[0] + damaged,
          blocks[0] + certificates + damaged, blocks[0].chopped(60) + certificates, identity().toPEM().chopped(40)})
        EXPECT_THROW(SigningIdentity::fromPEM(text), StoreError) << text.constData();
}

TEST(SigningIdentity, isNotMadeWithAKeyThatIsNotTheSigners)
{
    const auto blocks = blocksOf(identity().toPEM());
    const auto other = blocksOf(SigningIdentity::create(moment()).toPEM());
    EXPECT_THROW(SigningIdentity::fromPEM(other[0] + blocks[1] + blocks[2] + blocks[3]), StoreError);
    EXPECT_THROW(SigningIdentity::fromPEM(blocks[0] + blocks[2] + blocks[1] + blocks[3]), StoreError);

    const openssl::Key anotherCurve(EVP_EC_gen("P-384"));
    const openssl::Key anotherKind(EVP_RSA_gen(2048));
    for (const auto &key : {&anotherCurve, &anotherKind})
        EXPECT_THROW(SigningIdentity::fromPEM(privateKeyText(*key) + blocks[1] + blocks[2] + blocks[3]), StoreError);
}

TEST(SigningIdentity, asksNobodyForThePasswordOfAKey)
{
    const auto blocks = blocksOf(identity().toPEM());
    const openssl::Key key(EVP_EC_gen("P-256"));
    const QByteArray locked = privateKeyText(key, EVP_aes_128_cbc());
    ASSERT_TRUE(locked.contains("ENCRYPTED"));
    EXPECT_THROW(SigningIdentity::fromPEM(locked + blocks[1] + blocks[2] + blocks[3]), StoreError);
}

} // namespace

} // namespace tarnwik::test
