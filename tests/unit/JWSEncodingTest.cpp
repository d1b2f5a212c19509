#include "JWSFixture.h"

#include "jws/CompactJWS.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tarnwik::test {

namespace {

QByteArray json(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

/// The usual header with \a key set to \a value, or without it when that is undefined; well signed.
QByteArray signedWith(const char *key, const QJsonValue &value)
{
    QJsonObject header = QJsonDocument::fromJson(store().header()).object();
    header.insert(QLatin1String(key), value);
    return store().sign(json(header), encodePayload(sampleTransaction(moment())));
}

TEST(CompactJWS, hasExactlyThreeParts)
{
    const QByteArray &jws = goodTransaction();
    for (const QByteArray &text :
         {QByteArray(), QByteArray("."), QByteArray(".."), QByteArray("a.b"), jws + '.', '.' + jws,
          jws.first(jws.lastIndexOf('.')), QByteArray(jws).replace('.', ""), QByteArray(jws).replace('.', "..")})
        EXPECT_EQ(faultOf(text), Case::InvalidEncoding) << text.constData();
}

TEST(CompactJWS, isRefusedWithForeignCharacters)
{
    const QByteArray &jws = goodTransaction();
    for (const char *foreign : {"=", " ", "\n", "+", "/", "%", "\xc3"}) {
        EXPECT_EQ(faultOf(jws + foreign), Case::InvalidEncoding) << foreign;
        EXPECT_EQ(faultOf(foreign + jws), Case::InvalidEncoding) << foreign;
        EXPECT_EQ(faultOf(QByteArray(jws).insert(jws.indexOf('.'), foreign)), Case::InvalidEncoding) << foreign;
    }
    EXPECT_EQ(faultOf(QByteArray(jws).append('\0')), Case::InvalidEncoding);
}

TEST(CompactJWS, spellsItsBytesInOneWayOnly)
{
    EXPECT_EQ(decodeBase64URL("AA"), QByteArray(1, '\0'));
    // The four bits behind the only byte would be dropped.
    EXPECT_EQ(decodeBase64URL("AB"), std::nullopt);
    EXPECT_EQ(decodeBase64URL("AA=="), std::nullopt);
    EXPECT_EQ(decodeBase64URL("A"), std::nullopt);
    EXPECT_EQ(decodeBase64URL("-_-_"), QByteArray::fromHex("fbffbf"));
    EXPECT_EQ(decodeBase64URL("+/+/"), std::nullopt);
    EXPECT_EQ(decodeBase64("AA=="), QByteArray(1, '\0'));
    EXPECT_EQ(decodeBase64("AA"), std::nullopt);
    EXPECT_EQ(decodeBase64("-_-_"), std::nullopt);
}

TEST(CompactJWS, isRefusedAboveItsGreatestSize)
{
    constexpr qsizetype greatest = 65'536;
    const QByteArray fits = goodTransaction() + QByteArray(greatest - goodTransaction().size(), 'A');
    EXPECT_TRUE(splitCompactJWS(fits));
    EXPECT_FALSE(splitCompactJWS(fits + 'A'));
    EXPECT_EQ(faultOf(fits + 'A'), Case::InvalidEncoding);
    EXPECT_TRUE(readPayloadUnverified(fits));
    EXPECT_FALSE(readPayloadUnverified(fits + 'A'));
}

TEST(SignedTransactionHeader, mayTellMore)
{
    EXPECT_EQ(faultOf(signedWith("kid", QStringLiteral("k"))), std::nullopt);
}

TEST(SignedTransactionHeader, namesNoOtherAlgorithm)
{
    for (const QJsonValue &algorithm :
         {QJsonValue(QStringLiteral("none")), QJsonValue(QStringLiteral("None")), QJsonValue(QStringLiteral("HS256")),
          QJsonValue(QStringLiteral("RS256")), QJsonValue(QStringLiteral("ES384")), QJsonValue(QStringLiteral("es256")),
          QJsonValue(QStringLiteral("ES256 ")), QJsonValue(QString()), QJsonValue(1),
          QJsonValue(QJsonArray{QStringLiteral("ES256")}), QJsonValue(QJsonValue::Null),
          QJsonValue(QJsonValue::Undefined)})
        EXPECT_EQ(faultOf(signedWith("alg", algorithm)), Case::InvalidEncoding)
            << json({{QStringLiteral("alg"), algorithm}}).constData();
}

TEST(SignedTransactionHeader, isRefusedWithoutSignature)
{
    const QByteArray unsignedText = withHeader(goodTransaction(), R"({"alg":"none"})");
    EXPECT_EQ(faultOf(withSignature(unsignedText, "")), Case::InvalidEncoding);
    EXPECT_EQ(faultOf(withSignature(goodTransaction(), "")), Case::InvalidSignature);
}

TEST(SignedTransactionHeader, demandsNoExtensions)
{
    EXPECT_EQ(faultOf(signedWith("crit", QJsonArray{QStringLiteral("exp")})), Case::InvalidEncoding);
    EXPECT_EQ(faultOf(signedWith("crit", QJsonArray())), Case::InvalidEncoding);
}

TEST(SignedTransactionHeader, givesEveryKeyOnce)
{
    const QByteArray header = store().header();
    const QByteArray payload = encodePayload(sampleTransaction(moment()));
    for (const char *more : {R"({"alg":"ES256",)", R"({"alg":"none",)", R"({"\u0061lg":"none",)", R"({"k":1,"k":1,)"}) {
        const QByteArray repeated = QByteArray(header).replace(0, 1, more);
        EXPECT_EQ(faultOf(store().sign(repeated, payload)), Case::InvalidEncoding) << more;
    }
}

TEST(SignedTransactionHeader, isAnObjectInJSON)
{
    const QByteArray payload = encodePayload(sampleTransaction(moment()));
    for (const char *header : {"", "[]", "null", "\"ES256\"", "{", "{}x", "{\"alg\":\"ES256\",}", "\xff\xfe{}"})
        EXPECT_EQ(faultOf(store().sign(header, payload)), Case::InvalidEncoding) << header;
    EXPECT_EQ(faultOf(store().sign(QByteArray(1000, '['), payload)), Case::InvalidEncoding);
}

TEST(SignedTransactionHeader, listsItsCertificates)
{
    const QString first = QString::fromLatin1(store().certificates().first().toBase64());
    QJsonArray nested;
    nested.append(QJsonArray{first});
    for (const QJsonValue &list :
         {QJsonValue(QJsonValue::Undefined), QJsonValue(QJsonValue::Null), QJsonValue(first), QJsonValue(QJsonObject()),
          QJsonValue(QJsonArray{1}), QJsonValue(QJsonArray{QStringLiteral("%")}),
          QJsonValue(QJsonArray{QString(first + u'\n')}), QJsonValue(nested)})
        EXPECT_EQ(faultOf(signedWith("x5c", list)), Case::InvalidEncoding)
            << json({{QStringLiteral("x5c"), list}}).constData();
}

TEST(SignedTransactionHeader, listsCertificatesAndNothingElse)
{
    QJsonArray good;
    for (const QByteArray &certificate : store().certificates())
        good.append(QString::fromLatin1(certificate.toBase64()));
    const QString garbage = QString::fromLatin1(QByteArray("no certificate").toBase64());
    const QString surplus = QString::fromLatin1((store().certificates().first() + '\0').toBase64());
    QJsonArray withSurplus = good;
    withSurplus[0] = surplus;
    QJsonArray withGarbage = good;
    withGarbage.insert(1, garbage);
    QJsonArray many;
    while (many.size() < 60)
        many.append(good.at(many.size() % 3));

    EXPECT_EQ(faultOf(signedWith("x5c", good)), std::nullopt);
    for (const QJsonArray &list :
         {QJsonArray(), QJsonArray{QString()}, QJsonArray{garbage}, withSurplus, withGarbage, many})
        EXPECT_EQ(faultOf(signedWith("x5c", list)), Case::InvalidCertificateChain)
            << QJsonDocument(list).toJson(QJsonDocument::Compact).constData();
}

} // namespace

} // namespace tarnwik::test
