#include "secure/WireGuardKeyGenerator.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QStandardPaths>

#include <sodium.h>

#include <set>

namespace tarnwik {

namespace {

// The 32 bytes behind a key's text; empty if the text is not strictly standard base64.
QByteArray bytesOf(const QString &key)
{
    const auto bytes = QByteArray::fromBase64Encoding(key.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    return bytes && (*bytes).toBase64() == key.toLatin1() ? *bytes : QByteArray();
}

// The public key of a private one, by the whole Montgomery ladder on the base point 9.
QByteArray publicKeyOf(const QByteArray &privateKey)
{
    QByteArray base(32, '\0');
    base[0] = 9;
    QByteArray result(32, '\0');
    EXPECT_EQ(crypto_scalarmult_curve25519(reinterpret_cast<unsigned char *>(result.data()),
                                           reinterpret_cast<const unsigned char *>(privateKey.constData()),
                                           reinterpret_cast<const unsigned char *>(base.constData())),
              0);
    return result;
}

} // namespace

TEST(WireGuardKeyGenerator, bothKeysAre44CharactersOf32Bytes)
{
    for (int round = 0; round < 100; ++round) {
        const WireGuardKeyPair pair = WireGuardKeyGenerator::generate();
        for (const QString &key : {pair.privateKey, pair.publicKey}) {
            EXPECT_EQ(key.size(), 44);
            EXPECT_TRUE(key.endsWith(QLatin1Char('=')));
            EXPECT_EQ(bytesOf(key).size(), 32);
        }
    }
}

// RFC 7748, section 6.1. It vouches for what the next test compares with.
TEST(WireGuardKeyGenerator, isComparedWithTheCurveOfTheStandard)
{
    EXPECT_EQ(publicKeyOf(QByteArray::fromHex("5dab087e624a8a4b79e17f8b83800ee66f3bb1292618b6fd1c2f8b27ff88e0eb")),
              QByteArray::fromHex("de9edb7d7b7dc1b4d35b61c2ece435373f8343c85b78674dadfc7e146f882b4f"));
}

TEST(WireGuardKeyGenerator, thePublicKeyIsThatOfThePrivateKey)
{
    for (int round = 0; round < 100; ++round) {
        const WireGuardKeyPair pair = WireGuardKeyGenerator::generate();
        EXPECT_EQ(bytesOf(pair.publicKey), publicKeyOf(bytesOf(pair.privateKey)));
    }
}

TEST(WireGuardKeyGenerator, thePrivateKeyIsTheVeryScalar)
{
    for (int round = 0; round < 100; ++round) {
        const QByteArray key = bytesOf(WireGuardKeyGenerator::generate().privateKey);
        EXPECT_EQ(key.front() & 0x07, 0);
        EXPECT_EQ(key.back() & 0xc0, 0x40);
    }
}

TEST(WireGuardKeyGenerator, noTwoKeysAreTheSame)
{
    std::set<QString> keys;
    for (int round = 0; round < 100; ++round) {
        keys.insert(WireGuardKeyGenerator::generate().privateKey);
    }
    EXPECT_EQ(keys.size(), 100U);
}

TEST(WireGuardKeyGenerator, theToolsOfWireGuardDeriveTheSamePublicKey)
{
    if (QStandardPaths::findExecutable(QStringLiteral("wg")).isEmpty()) {
        GTEST_SKIP() << "wg (wireguard-tools) is not installed.";
    }
    const WireGuardKeyPair pair = WireGuardKeyGenerator::generate();
    QProcess wg;
    wg.start(QStringLiteral("wg"), {QStringLiteral("pubkey")});
    wg.write(pair.privateKey.toLatin1());
    wg.closeWriteChannel();
    ASSERT_TRUE(wg.waitForFinished());
    EXPECT_EQ(QString::fromLatin1(wg.readAllStandardOutput().trimmed()), pair.publicKey);
}

TEST(WireGuardKeyPair, isEqualWhenBothKeysAre)
{
    const WireGuardKeyPair pair{QStringLiteral("private"), QStringLiteral("public")};
    EXPECT_EQ(pair, (WireGuardKeyPair{QStringLiteral("private"), QStringLiteral("public")}));
    EXPECT_NE(pair, (WireGuardKeyPair{QStringLiteral("private"), QStringLiteral("other")}));
    EXPECT_NE(pair, (WireGuardKeyPair{QStringLiteral("other"), QStringLiteral("public")}));
}

} // namespace tarnwik
