// What every field of every record does with what a server may send, generated from the records' own key tables.

#include "api/JSON.h"
#include "api/KeyConversion.h"
#include "support/RecordSamples.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <functional>

namespace tarnwik::test {

namespace {

template<typename>
inline constexpr bool isOptional = false;
template<typename T>
inline constexpr bool isOptional<std::optional<T>> = true;

template<typename T>
struct Unwrapped
{
    using Type = T;
};
template<typename T>
struct Unwrapped<std::optional<T>>
{
    using Type = T;
};

QJsonObject parsed(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).object();
}

QByteArray text(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

/// \a object with the value under \a key replaced by \a value, raw JSON text that QJsonValue could not hold.
QByteArray replaced(QJsonObject object, const QString &key, const QByteArray &value)
{
    const QString marker = QStringLiteral("<<marker>>");
    object.insert(key, marker);
    return text(object).replace("\"<<marker>>\"", value);
}

std::optional<DecodingError::Kind> failureKind(const std::function<void()> &decoding)
{
    try {
        decoding();
        return std::nullopt;
    } catch (const DecodingError &error) {
        return error.kind();
    }
}

using Kind = DecodingError::Kind;

} // namespace

template<typename T>
class RecordFields : public testing::Test
{
protected:
    const QByteArray m_json = sampleJSON<T>();
    const QJsonObject m_object = parsed(m_json);

    static std::optional<Kind> failure(const QByteArray &json)
    {
        return failureKind([&] { decode<T>(json); });
    }

    /// Calls \a check(wire key, declared key, value-initialised field) for every field.
    template<typename Check>
    static void forEachField(Check check)
    {
        std::apply(
            [&](const auto &...row) {
                const auto one = [&](const auto &key) {
                    const auto view = key.wireKey.view();
                    const QString wireKey = QString::fromLatin1(view.data(), qsizetype(view.size()));
                    const QString declared = QString::fromLatin1(key.declaredKey.data(), key.declaredKey.size());
                    SCOPED_TRACE(wireKey.toStdString());
                    check(wireKey, declared, std::remove_cvref_t<decltype(std::declval<T &>().*key.field)>());
                };
                (one(row), ...);
            },
            T::keyTable());
    }
};

using ReadRecords =
    testing::Types<Account, SessionResponse, AccountResponse, SubscriptionResponse, APIErrorEnvelope, ExitNode,
                   NodeListResponse, DeviceProfile, CustomerDevice, DeviceListResponse, DeviceCreateResponse,
                   TunnelInterface, TunnelPeer, TunnelNode, TunnelProfile, DeviceProfileResponse>;
TYPED_TEST_SUITE(RecordFields, ReadRecords);

TYPED_TEST(RecordFields, haveTheKeysOfTheWire)
{
    QStringList keys;
    this->forEachField([&](const QString &wireKey, const QString &, auto) { keys << wireKey; });
    keys.sort();
    EXPECT_EQ(keys, this->m_object.keys());
}

TYPED_TEST(RecordFields, surviveReadingAndWriting)
{
    const auto record = decode<TypeParam>(this->m_json);
    EXPECT_EQ(toJSON(record), this->m_object);
    EXPECT_TRUE(decode<TypeParam>(encode(record)) == record);
}

TYPED_TEST(RecordFields, failWhenMissingUnlessTheyMayBeAbsent)
{
    this->forEachField([&](const QString &wireKey, const QString &, auto field) {
        QJsonObject object = this->m_object;
        object.remove(wireKey);
        const auto kind = this->failure(text(object));
        if constexpr (isOptional<decltype(field)>) {
            EXPECT_EQ(kind, std::nullopt);
            EXPECT_EQ(toJSON(decode<TypeParam>(text(object))), object) << "an absent field was written";
        } else {
            EXPECT_EQ(kind, Kind::KeyNotFound);
        }
    });
}

TYPED_TEST(RecordFields, failWhenNullUnlessTheyMayBeAbsent)
{
    this->forEachField([&](const QString &wireKey, const QString &, auto field) {
        const auto kind = this->failure(replaced(this->m_object, wireKey, "null"));
        if constexpr (isOptional<decltype(field)>)
            EXPECT_EQ(kind, std::nullopt);
        else
            EXPECT_EQ(kind, Kind::ValueNotFound);
    });
}

TYPED_TEST(RecordFields, failOnAnyOtherJSONType)
{
    this->forEachField([&](const QString &wireKey, const QString &, auto field) {
        using Type = typename Unwrapped<decltype(field)>::Type;
        for (const QByteArray &value : {"\"text\"", "5", "true", "[]", "{}"}) {
            // An empty list and an empty map are good values of their fields; an empty object lacks a record's keys.
            const bool fits = (std::is_same_v<Type, QString> && value == "\"text\"")
                || (std::is_same_v<Type, qint64> && value == "5") || (std::is_same_v<Type, bool> && value == "true")
                || (!Record<Type> && std::is_class_v<Type> && !std::is_same_v<Type, QString>
                    && (value == "[]") != std::is_same_v<Type, QMap<QString, qint64>>
                    && (value == "[]" || value == "{}"));
            const auto kind = this->failure(replaced(this->m_object, wireKey, value));
            if (fits)
                EXPECT_EQ(kind, std::nullopt) << value.constData();
            else if (Record<Type> && value == "{}")
                EXPECT_EQ(kind, Kind::KeyNotFound) << value.constData();
            else
                EXPECT_EQ(kind, Kind::TypeMismatch) << value.constData();
        }
    });
}

TYPED_TEST(RecordFields, takeIntegersHoweverTheyAreWrittenAndNothingElse)
{
    this->forEachField([&](const QString &wireKey, const QString &, auto field) {
        using Type = typename Unwrapped<decltype(field)>::Type;
        if constexpr (std::is_same_v<Type, qint64>) {
            const auto failure = [&](const QByteArray &value) {
                return this->failure(replaced(this->m_object, wireKey, value));
            };
            const auto read = [&](const QByteArray &value) {
                const auto record = decode<TypeParam>(replaced(this->m_object, wireKey, value));
                return toJSON(record).value(wireKey).toInteger();
            };
            EXPECT_EQ(read("5.0"), 5);
            EXPECT_EQ(read("1e3"), 1000);
            EXPECT_EQ(read("1.5e1"), 15);
            EXPECT_EQ(read("-0.0"), 0);
            EXPECT_EQ(read("5000000000"), 5000000000);
            EXPECT_EQ(read("9007199254740993"), 9007199254740993);
            EXPECT_EQ(read("9223372036854775807"), std::numeric_limits<qint64>::max());
            EXPECT_EQ(read("-9223372036854775808"), std::numeric_limits<qint64>::min());
            EXPECT_EQ(failure("\"5\""), Kind::TypeMismatch);
            EXPECT_EQ(failure("5.5"), Kind::DataCorrupted);
            EXPECT_EQ(failure("1e-1"), Kind::DataCorrupted);
            EXPECT_EQ(failure("9223372036854775808"), Kind::DataCorrupted);
            EXPECT_EQ(failure("9223372036854775808.0"), Kind::DataCorrupted);
            EXPECT_EQ(failure("1e20"), Kind::DataCorrupted);
            EXPECT_EQ(failure("1e400"), Kind::DataCorrupted);
            EXPECT_EQ(failure("-9223372036854775809"), Kind::DataCorrupted);
        }
    });
}

TYPED_TEST(RecordFields, areAcceptedUnderTheirDeclaredKeys)
{
    this->forEachField([&](const QString &wireKey, const QString &declaredKey, auto) {
        QJsonObject object = this->m_object;
        const QJsonValue value = object.take(wireKey);
        object.insert(declaredKey, value);
        EXPECT_EQ(toJSON(decode<TypeParam>(text(object))), this->m_object);
    });
}

TYPED_TEST(RecordFields, areAcceptedUnderAnySpellingThatConvertsToTheirKeys)
{
    this->forEachField([&](const QString &wireKey, const QString &, auto) {
        if (!wireKey.contains(u'_'))
            return;
        QJsonObject object = this->m_object;
        const QJsonValue value = object.take(wireKey);
        object.insert(QString(wireKey).replace(QStringLiteral("_"), QStringLiteral("__")).toUpper(), value);
        EXPECT_EQ(toJSON(decode<TypeParam>(text(object))), this->m_object);
    });
}

TYPED_TEST(RecordFields, countOnlyOnceWhenAKeyComesTwice)
{
    const auto record = decode<TypeParam>(this->m_json);
    this->forEachField([&](const QString &wireKey, const QString &declaredKey, auto) {
        for (const QString &second : {wireKey, declaredKey}) {
            QByteArray json = this->m_json.trimmed();
            json.chop(1);
            json += ",\"" + second.toUtf8() + "\":null}";
            EXPECT_TRUE(decode<TypeParam>(json) == record) << "the second value counted";
        }
    });
}

TYPED_TEST(RecordFields, areNotDisturbedByUnknownKeys)
{
    QByteArray json = this->m_json.trimmed();
    json.insert(1, R"("unknown":null,"other_unknown":[{"id":"x"},5.5],"":{},"_":1,"ünknown_ñ":"\ud83d\udc27",)");
    EXPECT_TRUE(decode<TypeParam>(json) == decode<TypeParam>(this->m_json));
}

TYPED_TEST(RecordFields, failWhenTheBodyIsCutShortAnywhere)
{
    for (qsizetype length = 0; length < this->m_json.size(); ++length)
        ASSERT_EQ(this->failure(this->m_json.left(length)), Kind::DataCorrupted) << "cut at byte " << length;
}

TYPED_TEST(RecordFields, failWhenAnyByteIsNoUTF8)
{
    for (qsizetype i = 0; i < this->m_json.size(); ++i) {
        QByteArray json = this->m_json;
        json[i] = char(0xff);
        ASSERT_EQ(this->failure(json), Kind::DataCorrupted) << "at byte " << i;
    }
}

TYPED_TEST(RecordFields, makeTwoRecordsDifferOneByOne)
{
    const auto record = decode<TypeParam>(this->m_json);
    EXPECT_EQ(qHash(record), qHash(decode<TypeParam>(this->m_json)));
    this->forEachField([&](const QString &wireKey, const QString &, auto field) {
        using Type = typename Unwrapped<decltype(field)>::Type;
        QByteArray other;
        if constexpr (std::is_same_v<Type, QString>)
            other = "\"another\"";
        else if constexpr (std::is_same_v<Type, qint64>)
            other = "123456";
        else if constexpr (std::is_same_v<Type, bool>)
            other = this->m_object.value(wireKey).toBool() ? "false" : "true";
        else if constexpr (std::is_same_v<Type, QMap<QString, qint64>>)
            other = "{}";
        else if constexpr (!Record<Type>)
            other = "[]";
        else
            return;
        const auto changed = decode<TypeParam>(replaced(this->m_object, wireKey, other));
        EXPECT_FALSE(changed == record);
        EXPECT_NE(qHash(changed), qHash(record));
    });
}

} // namespace tarnwik::test
