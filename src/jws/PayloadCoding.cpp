#include "jws/PayloadCoding.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <tuple>

namespace tarnwik {

namespace {

template<typename T>
struct Property
{
    const char *key;
    T TransactionPayload::*field;
};

/// Every property: the optional fields are those that a transaction may lack.
constexpr std::tuple properties{
    Property{"transactionId", &TransactionPayload::transactionId},
    Property{"originalTransactionId", &TransactionPayload::originalTransactionId},
    Property{"bundleId", &TransactionPayload::bundleId},
    Property{"productId", &TransactionPayload::productId},
    Property{"subscriptionGroupIdentifier", &TransactionPayload::subscriptionGroupIdentifier},
    Property{"purchaseDate", &TransactionPayload::purchaseDate},
    Property{"originalPurchaseDate", &TransactionPayload::originalPurchaseDate},
    Property{"expiresDate", &TransactionPayload::expiresDate},
    Property{"quantity", &TransactionPayload::quantity},
    Property{"type", &TransactionPayload::type},
    Property{"inAppOwnershipType", &TransactionPayload::inAppOwnershipType},
    Property{"signedDate", &TransactionPayload::signedDate},
    Property{"environment", &TransactionPayload::environment},
    Property{"transactionReason", &TransactionPayload::transactionReason},
    Property{"storefront", &TransactionPayload::storefront},
    Property{"revocationDate", &TransactionPayload::revocationDate},
    Property{"revocationReason", &TransactionPayload::revocationReason},
    Property{"isUpgraded", &TransactionPayload::isUpgraded},
    Property{"appAccountToken", &TransactionPayload::appAccountToken},
};

using Value = std::optional<JSONObject::Value>;

bool read(const Value &value, QString &field)
{
    std::string_view text;
    if (!value || value->get(text))
        return false;
    field = QString::fromUtf8(text.data(), qsizetype(text.size()));
    return true;
}

bool read(const Value &value, qint64 &field)
{
    std::int64_t number = 0;
    if (!value || value->get(number))
        return false;
    field = number;
    return true;
}

bool read(const Value &value, bool &field)
{
    return value && !value->get(field);
}

template<typename T>
bool read(const Value &value, std::optional<T> &field)
{
    return !value || value->is_null() || read(value, field.emplace());
}

template<typename T>
void write(QJsonObject &object, const char *key, const T &field)
{
    object.insert(QLatin1String(key), field);
}

template<typename T>
void write(QJsonObject &object, const char *key, const std::optional<T> &field)
{
    if (field)
        write(object, key, *field);
}

/// In the one way that a number is written: without signs, blanks and leading zeros.
bool isIdentifier(const QString &text)
{
    return QString::number(text.toULongLong()) == text;
}

} // namespace

QByteArray encodePayload(const TransactionPayload &payload)
{
    QJsonObject object;
    std::apply([&](const auto &...property) { (write(object, property.key, payload.*property.field), ...); },
               properties);
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<TransactionPayload> decodePayload(const JSONObject &object)
{
    TransactionPayload payload;
    const bool isComplete = std::apply(
        [&](const auto &...property) { return (read(object.value(property.key), payload.*property.field) && ...); },
        properties);
    if (!isComplete || !isIdentifier(payload.transactionId) || !isIdentifier(payload.originalTransactionId))
        return std::nullopt;
    return payload;
}

} // namespace tarnwik
