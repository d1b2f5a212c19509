#include "platform/embedded/store/StoreJSON.h"

#include "platform/AppStore.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <utility>

namespace tarnwik {

StoreJSON::StoreJSON(QJsonValue value, QString path, QString refusal)
    : m_value(std::move(value))
    , m_path(std::move(path))
    , m_refusal(std::move(refusal))
{
}

StoreJSON StoreJSON::parse(const QByteArray &json, const QString &refusal)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        throw StoreError(refusal + QStringLiteral(": it is not a JSON object."));
    return {document.object(), {}, refusal};
}

void StoreJSON::allowOnly(const QStringList &known) const
{
    for (const QString &key : keys()) {
        if (!known.contains(key))
            find(key)->refuse(QStringLiteral("is not a known key"));
    }
}

StoreJSON StoreJSON::operator[](const QString &key) const
{
    if (auto found = find(key))
        return *std::move(found);
    StoreJSON(QJsonValue(), m_path.isEmpty() ? key : QString(m_path + u'.' + key), m_refusal)
        .refuse(QStringLiteral("is missing"));
}

std::optional<StoreJSON> StoreJSON::find(const QString &key) const
{
    if (!keys().contains(key))
        return std::nullopt;
    return StoreJSON(m_value.toObject().value(key), m_path.isEmpty() ? key : QString(m_path + u'.' + key), m_refusal);
}

QStringList StoreJSON::keys() const
{
    if (!m_value.isObject())
        refuse(QStringLiteral("must be an object"));
    return m_value.toObject().keys();
}

QList<StoreJSON> StoreJSON::items() const
{
    if (!m_value.isArray())
        refuse(QStringLiteral("must be a list"));
    const QJsonArray array = m_value.toArray();
    QList<StoreJSON> items;
    items.reserve(array.size());
    for (qsizetype index = 0; index < array.size(); ++index)
        items.append(StoreJSON(array[index], QStringLiteral("%1[%2]").arg(m_path).arg(index), m_refusal));
    return items;
}

QString StoreJSON::text() const
{
    if (!m_value.isString())
        refuse(QStringLiteral("must be a text"));
    return m_value.toString();
}

QString StoreJSON::textThatIsNotEmpty() const
{
    QString found = text();
    if (found.isEmpty())
        refuse(QStringLiteral("must not be empty"));
    return found;
}

bool StoreJSON::flag() const
{
    if (!m_value.isBool())
        refuse(QStringLiteral("must be true or false"));
    return m_value.toBool();
}

qint64 StoreJSON::integer(qint64 least, qint64 most) const
{
    const double number = m_value.toDouble();
    if (!m_value.isDouble() || std::floor(number) != number || number < double(least) || number > double(most))
        refuse(QStringLiteral("must be a whole number from %1 to %2").arg(least).arg(most));
    return qint64(number);
}

void StoreJSON::refuse(const QString &problem) const
{
    throw StoreError(m_refusal + QStringLiteral(": ") + (m_path.isEmpty() ? QStringLiteral("it") : m_path) + u' '
                     + problem + u'.');
}

} // namespace tarnwik
