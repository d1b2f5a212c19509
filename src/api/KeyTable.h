#pragma once

#include "api/KeyConversion.h"

#include <QHashFunctions>
#include <QList>
#include <QMap>
#include <QString>

#include <optional>
#include <string_view>
#include <tuple>

namespace tarnwik {

/// One row of a record's key table: the declared key, the wire key that follows from it, and the field.
template<std::size_t Size, typename Record, typename Field>
struct Key
{
    keys::WireKey<Size> wireKey;
    std::string_view declaredKey;
    Field Record::*field;

    /// Whether a received wire key is converted back to the declared one. A run of capitals is not.
    constexpr bool isReadByWireKey() const { return keys::readsBack(wireKey.view(), declaredKey); }
};

template<std::size_t Size, typename Record, typename Field>
consteval auto key(const char (&declaredKey)[Size], Field Record::*field)
{
    return Key<Size, Record, Field>{keys::wireKey(declaredKey), std::string_view(declaredKey, Size - 1), field};
}

/// A record that crosses the wire: a struct with a static `keyTable()`, a tuple of key() rows in the order of its
/// fields. Reading, writing, equality and hashing all follow from that table.
template<typename T>
concept Record = requires { T::keyTable(); };

/// Field by field.
template<Record T>
bool operator==(const T &left, const T &right)
{
    return std::apply([&](const auto &...row) { return ((left.*row.field == right.*row.field) && ...); },
                      T::keyTable());
}

template<Record T>
size_t qHash(const T &record, size_t seed = 0);

namespace detail {

template<typename T>
size_t hashField(const T &value, size_t seed)
{
    if constexpr (Record<T>)
        return tarnwik::qHash(value, seed);
    else
        return ::qHash(value, seed);
}

template<typename T>
size_t hashField(const std::optional<T> &value, size_t seed)
{
    return value ? hashField(*value, seed + 1) : seed;
}

template<typename T>
size_t hashField(const QMap<QString, T> &map, size_t seed)
{
    for (auto item = map.begin(); item != map.end(); ++item)
        seed = hashField(item.value(), hashField(item.key(), seed));
    return hashField(map.size(), seed);
}

} // namespace detail

/// Over all fields.
template<Record T>
size_t qHash(const T &record, size_t seed)
{
    std::apply([&](const auto &...row) { ((seed = detail::hashField(record.*row.field, seed)), ...); }, T::keyTable());
    return seed;
}

} // namespace tarnwik
