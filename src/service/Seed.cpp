#include "service/Seed.h"

#include "api/JSON.h"
#include "service/SeedRules.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tarnwik::service {

namespace {

QString problem(const DecodingError &error)
{
    if (error.path().isEmpty())
        return QStringLiteral("it is not a JSON object");
    switch (error.kind()) {
    case DecodingError::Kind::KeyNotFound:
        return error.path() + QStringLiteral(" is missing");
    case DecodingError::Kind::ValueNotFound:
        return error.path() + QStringLiteral(" is null");
    case DecodingError::Kind::TypeMismatch:
        return error.path() + QStringLiteral(" is of the wrong type");
    case DecodingError::Kind::DataCorrupted:
        break;
    }
    return error.path() + QStringLiteral(" is no whole number of 64 bits");
}

/// The path of a key of \a given that reading did not take up, since it does not come back in \a understood; or nothing.
/// Only the seed is read that closely: a slip of the pen in it would otherwise go unnoticed.
std::optional<QString> unknownKey(const QJsonValue &given, const QJsonValue &understood, const QString &path)
{
    if (given.isArray()) {
        const QJsonArray items = given.toArray();
        for (qsizetype index = 0; index < items.size(); ++index) {
            const QString place = QStringLiteral("%1[%2]").arg(path).arg(index);
            if (const auto found = unknownKey(items[index], understood.toArray().at(index), place))
                return found;
        }
        return std::nullopt;
    }
    const QJsonObject object = given.toObject();
    for (auto item = object.begin(); item != object.end(); ++item) {
        QString place = path.isEmpty() ? item.key() : QString(path + u'.' + item.key());
        if (!understood.toObject().contains(item.key())) {
            if (!item.value().isNull())
                return place;
        } else if (const auto found = unknownKey(item.value(), understood.toObject().value(item.key()), place)) {
            return found;
        }
    }
    return std::nullopt;
}

Seed decodeSeed(const QByteArray &json)
{
    try {
        return decode<Seed>(json);
    } catch (const DecodingError &error) {
        throw SeedError(QStringLiteral("The seed is refused: %1.").arg(problem(error)));
    }
}

} // namespace

QList<SubscriptionProduct> defaultSubscriptionProducts()
{
    return {{.productId = QStringLiteral("tarnwik.sub.monthly"), .planGb = 500, .monthlyPriceCents = 1499},
            {.productId = QStringLiteral("tarnwik.sub.yearly"), .planGb = 1000, .monthlyPriceCents = 999}};
}

Seed parseSeed(const QByteArray &json)
{
    const Seed seed = decodeSeed(json);
    if (const auto path = unknownKey(QJsonDocument::fromJson(json).object(), toJSON(seed), {}))
        throw SeedError(QStringLiteral("The seed is refused: %1 is not a known key.").arg(*path));
    checkSeed(seed);
    return seed;
}

Seed readSeedFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw SeedError(QStringLiteral("The seed file %1 cannot be read: %2.").arg(path, file.errorString()));
    try {
        return parseSeed(file.readAll());
    } catch (const SeedError &error) {
        throw SeedError(path + QStringLiteral(": ") + error.localizedDescription());
    }
}

} // namespace tarnwik::service
