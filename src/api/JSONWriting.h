#pragma once

// How records are written. Only the units that instantiate toJSON() and encode() for a library's records include this.

#include "api/JSON.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QList>
#include <QMap>

#include <optional>

namespace tarnwik::json {

inline QString keyText(std::string_view key)
{
    return QString::fromLatin1(key.data(), qsizetype(key.size()));
}

inline QJsonValue write(const QString &value)
{
    return value;
}
inline QJsonValue write(bool value)
{
    return value;
}
inline QJsonValue write(qint64 value)
{
    return value;
}

template<Record T>
QJsonValue write(const T &record)
{
    return toJSON(record);
}

template<typename T>
QJsonValue write(const QList<T> &list)
{
    QJsonArray array;
    for (const T &item : list)
        array.append(write(item));
    return array;
}

template<typename T>
QJsonValue write(const QMap<QString, T> &map)
{
    QJsonObject object;
    for (auto item = map.begin(); item != map.end(); ++item)
        object.insert(item.key(), write(item.value()));
    return object;
}

template<typename T>
void writeField(QJsonObject &object, const QString &key, const T &value)
{
    object.insert(key, write(value));
}

template<typename T>
void writeField(QJsonObject &object, const QString &key, const std::optional<T> &value)
{
    if (value)
        object.insert(key, write(*value));
}

} // namespace tarnwik::json

namespace tarnwik {

template<Record T>
QJsonObject toJSON(const T &record)
{
    QJsonObject object;
    std::apply(
        [&](const auto &...row) {
            (json::writeField(object, json::keyText(row.wireKey.view()), record.*row.field), ...);
        },
        T::keyTable());
    return object;
}

template<Record T>
QByteArray encode(const T &record)
{
    return QJsonDocument(toJSON(record)).toJson(QJsonDocument::Compact);
}

} // namespace tarnwik
