#include "JWSFixture.h"

#include <QFile>

namespace tarnwik::test {

namespace {

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

/// A transaction of the fuzzer's corpus. They were made with the openssl command, not with the code under test.
QByteArray sample(const char *name)
{
    return contentsOf(QStringLiteral(TARNWIK_TRANSACTION_FOLDER) + QLatin1String(name));
}

TransactionTrust trustInSamples()
{
    return {contentsOf(QStringLiteral(TARNWIK_ROOT_FILE)), bundleIdentifier(), moment()};
}

TEST(TransactionOfAnotherProgram, isReadAsItWasSigned)
{
    auto expected = sampleTransaction(moment());
    EXPECT_TRUE(verifyTransaction(sample("valid"), trustInSamples()) == expected);

    expected.revocationDate = expected.purchaseDate + 5000;
    expected.revocationReason = 1;
    expected.isUpgraded = true;
    EXPECT_TRUE(verifyTransaction(sample("revoked"), trustInSamples()) == expected);
}

TEST(TransactionOfAnotherProgram, isRefusedForWhatIsWrongWithIt)
{
    const auto fault = [](const char *name) { return faultOf(sample(name), trustInSamples()); };
    EXPECT_EQ(fault("algorithm-none"), Case::InvalidEncoding);
    EXPECT_EQ(fault("algorithm-hs256"), Case::InvalidEncoding);
    EXPECT_EQ(fault("two-parts"), Case::InvalidEncoding);
    EXPECT_EQ(fault("four-parts"), Case::InvalidEncoding);
    EXPECT_EQ(fault("empty-objects"), Case::InvalidEncoding);
    EXPECT_EQ(fault("without-certificates"), Case::InvalidCertificateChain);
    EXPECT_EQ(fault("root-first"), Case::InvalidCertificateChain);
    EXPECT_EQ(fault("certificate-for-key-agreement"), Case::InvalidCertificateChain);
    EXPECT_EQ(fault("certificate-of-an-authority"), Case::InvalidCertificateChain);
    EXPECT_EQ(fault("certificate-signed-with-sha1"), Case::InvalidCertificateChain);
    EXPECT_EQ(fault("certificate-signed-with-sha384"), std::nullopt);
    EXPECT_EQ(fault("signature-in-der"), Case::InvalidSignature);
    EXPECT_EQ(fault("another-programs"), Case::MissingRequiredProperties);
}

} // namespace

} // namespace tarnwik::test
