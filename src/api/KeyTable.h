#pragma once

#include "api/KeyConversion.h"

#include <QHashFunctions>

#include <concepts>
#include <string_view>
#include <tuple>
#include <type_traits>

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

/// Over all fields.
template<Record T>
size_t qHash(const T &record, size_t seed = 0)
{
    std::apply([&](const auto &...row) { ((seed = qHash(record.*row.field, seed)), ...); }, T::keyTable());
    return seed;
}

} // namespace tarnwik
