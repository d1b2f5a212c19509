#include "platform/macos/storekit/StoreKitReplies.h"

#include <simdjson.h>

#include <cmath>
#include <optional>
#include <string_view>

namespace tarnwik {

namespace {

using Element = simdjson::dom::element;
using Object = simdjson::dom::object;

/// What the platform says of a failure.
struct Failure
{
    std::string_view type;
    std::string_view name;
    QString message;

    bool isCancellation() const
    {
        return type == "CancellationError" || (type == "StoreKitError" && name == "userCancelled");
    }
};

[[noreturn]] void refuse()
{
    throw StoreError(QStringLiteral("The App Store gave an answer that cannot be read."));
}

template<typename T>
T as(const Element &element)
{
    T value{};
    if (element.get(value))
        refuse();
    return value;
}

std::optional<Element> find(const Object &object, std::string_view key)
{
    Element found;
    if (object.at_key(key).get(found))
        return std::nullopt;
    return found;
}

template<typename T>
T required(const Object &object, std::string_view key)
{
    const auto found = find(object, key);
    if (!found)
        refuse();
    return as<T>(*found);
}

QString readAnyText(const Object &object, std::string_view key)
{
    const auto text = required<std::string_view>(object, key);
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

QString readText(const Object &object, std::string_view key)
{
    QString text = readAnyText(object, key);
    if (text.isEmpty())
        refuse();
    return text;
}

Failure readFailure(const Element &element)
{
    const auto object = as<Object>(element);
    Failure failure;
    failure.type = required<std::string_view>(object, "type");
    failure.name = required<std::string_view>(object, "case");
    const auto message = required<std::string_view>(object, "message");
    failure.message = QString::fromUtf8(message.data(), qsizetype(message.size()));
    // The platform's own words when it has none.
    if (failure.message.isEmpty())
        failure.message = QStringLiteral("The operation couldn’t be completed.");
    return failure;
}

/// A reply, which lives as long as \a parser. Throws the failure that it tells.
Object parse(simdjson::dom::parser &parser, const std::string &json)
{
    Object object;
    if (parser.parse(json).get(object))
        refuse();
    const auto error = find(object, "error");
    if (!error)
        return object;
    const Failure failure = readFailure(*error);
    if (failure.isCancellation())
        throw async::Cancelled();
    throw StoreError(failure.message);
}

quint64 readTransactionID(const Object &object)
{
    const QString text = readText(object, "id");
    const quint64 number = text.toULongLong();
    // In the one way that a number is written: without signs, blanks and leading zeros.
    if (QString::number(number) != text)
        refuse();
    return number;
}

QDateTime readDate(const Element &element)
{
    const auto seconds = as<double>(element);
    // The year 9999: what is beyond was never meant as a date.
    constexpr double latest = 253402300799.0;
    if (std::abs(seconds) > latest)
        refuse();
    return QDateTime::fromMSecsSinceEpoch(std::llround(seconds * 1000), Qt::UTC);
}

VerificationResult readTransaction(const Object &object)
{
    VerificationResult result;
    result.jwsRepresentation = readText(object, "jws");
    result.transaction.id = readTransactionID(object);
    result.transaction.productID = readText(object, "productId");
    if (const auto date = find(object, "revocationDate"))
        result.transaction.revocationDate = readDate(*date);
    if (const auto error = find(object, "verificationError"))
        result.verificationError = StoreError(readFailure(*error).message);
    return result;
}

} // namespace

QList<StoreProduct> readProducts(const std::string &json)
{
    simdjson::dom::parser parser;
    QList<StoreProduct> products;
    for (const Element &element : required<simdjson::dom::array>(parse(parser, json), "products")) {
        const auto object = as<Object>(element);
        products.append(StoreProduct{readText(object, "id"), readAnyText(object, "displayPrice")});
    }
    return products;
}

PurchaseResult readPurchase(const std::string &json, const QString &productID)
{
    simdjson::dom::parser parser;
    const Object object = parse(parser, json);
    const auto outcome = required<std::string_view>(object, "outcome");
    PurchaseResult result;
    if (outcome == "success") {
        result.outcome = PurchaseOutcome::Success;
        result.verification = readTransaction(required<Object>(object, "transaction"));
    } else if (outcome == "pending") {
        result.outcome = PurchaseOutcome::Pending;
    } else if (outcome == "cancelled") {
        result.outcome = PurchaseOutcome::UserCancelled;
    } else if (outcome == "missingProduct") {
        throw StoreError(QStringLiteral("The App Store does not offer “%1”.").arg(productID));
    }
    return result;
}

QList<VerificationResult> readEntitlements(const std::string &json)
{
    simdjson::dom::parser parser;
    QList<VerificationResult> entitlements;
    for (const Element &element : required<simdjson::dom::array>(parse(parser, json), "transactions"))
        entitlements.append(readTransaction(as<Object>(element)));
    return entitlements;
}

void readCompletion(const std::string &json)
{
    simdjson::dom::parser parser;
    parse(parser, json);
}

VerificationResult readUpdate(const std::string &json)
{
    try {
        simdjson::dom::parser parser;
        Object object;
        if (parser.parse(json).get(object))
            refuse();
        return readTransaction(object);
    } catch (const StoreError &error) {
        VerificationResult result;
        result.verificationError = error;
        return result;
    }
}

} // namespace tarnwik
