#pragma once

// How records are read. Only the unit that instantiates decode() for the records includes this.

#include "api/JSON.h"

#include <QList>
#include <QMap>

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwik::json {

using Element = simdjson::dom::element;
using Kind = DecodingError::Kind;

inline QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

/// Runs \a read; a failure inside carries \a place in front of its path.
template<typename Read>
void readWithin(Read read, auto place)
{
    try {
        read();
    } catch (const DecodingError &error) {
        throw error.within(place());
    }
}

/// A record's keys as plain lists, in the order of its key table.
template<Record T>
struct KeyNames
{
    static constexpr auto table = T::keyTable();
    static constexpr std::size_t count = std::tuple_size_v<decltype(table)>;
    using List = std::array<std::string_view, count>;

    static constexpr List declared = std::apply([](const auto &...row) { return List{row.declaredKey...}; }, table);
    /// Wire keys that reading converts back; empty for the others.
    static constexpr List received = std::apply(
        [](const auto &...row) { return List{(row.isReadByWireKey() ? row.wireKey.view() : std::string_view())...}; },
        table);
};

/// Where \a key stands in \a list, the place \a expected tried before all others; the list's size when it is not there.
template<std::size_t Count>
std::size_t indexOf(const std::array<std::string_view, Count> &list, std::string_view key, std::size_t expected)
{
    if (expected < Count && list[expected] == key)
        return expected;
    return std::size_t(std::find(list.begin(), list.end(), key) - list.begin());
}

/// The same for a key as it was received.
template<Record T>
std::size_t indexOfReceived(std::string_view key, std::size_t expected)
{
    using Names = KeyNames<T>;
    if (key.find('_') == std::string_view::npos)
        return indexOf(Names::declared, key, expected);
    if (const auto index = indexOf(Names::received, key, expected); index < Names::count)
        return index;
    const std::string declared = keys::fromSnakeCase(toQString(key)).toStdString();
    return indexOf(Names::declared, declared, expected);
}

/// The elements of a record's fields, in the order of its key table; nothing where the key is missing.
template<Record T>
auto findFields(const simdjson::dom::object &object)
{
    std::array<std::optional<Element>, KeyNames<T>::count> found;
    // Servers send keys in one order: the row behind the last one found is the likely one.
    std::size_t expected = 0;
    for (const auto &[key, value] : object) {
        const std::size_t index = indexOfReceived<T>(key, expected);
        if (index == found.size())
            continue;
        if (!found[index])
            found[index] = value;
        expected = index + 1;
    }
    return found;
}

inline void read(const Element &element, QString &value)
{
    std::string_view text;
    if (element.get(text))
        throw DecodingError(element.is_null() ? Kind::ValueNotFound : Kind::TypeMismatch);
    value = toQString(text);
}

inline void read(const Element &element, bool &value)
{
    if (element.get(value))
        throw DecodingError(element.is_null() ? Kind::ValueNotFound : Kind::TypeMismatch);
}

/// Any number whose value is integral and fits, however it is written.
inline void read(const Element &element, qint64 &value)
{
    // The range of doubles whose integer fits: the upper end itself, 2^63, does not.
    constexpr double end = 9223372036854775808.0;
    std::int64_t integer = 0;
    double number = 0;
    if (!element.get(integer)) {
        value = integer;
    } else if (element.is_double() && !element.get(number)) {
        if (!(number >= -end && number < end) || number != std::trunc(number))
            throw DecodingError(Kind::DataCorrupted);
        value = qint64(number);
    } else if (element.is_uint64()) {
        throw DecodingError(Kind::DataCorrupted);
    } else {
        throw DecodingError(element.is_null() ? Kind::ValueNotFound : Kind::TypeMismatch);
    }
}

template<Record T>
void read(const Element &element, T &record);

template<typename T>
void read(const Element &element, QList<T> &list)
{
    simdjson::dom::array array;
    if (element.get(array))
        throw DecodingError(element.is_null() ? Kind::ValueNotFound : Kind::TypeMismatch);
    list.reserve(qsizetype(array.size()));
    for (const Element item : array) {
        readWithin([&] { read(item, list.emplaceBack()); },
                   [&] { return QStringLiteral("[%1]").arg(list.size() - 1); });
    }
}

/// A map's keys are data, not field names: they are kept as they came.
template<typename T>
void read(const Element &element, QMap<QString, T> &map)
{
    simdjson::dom::object object;
    if (element.get(object))
        throw DecodingError(element.is_null() ? Kind::ValueNotFound : Kind::TypeMismatch);
    for (const auto &[key, item] : object) {
        const QString name = toQString(key);
        T value{};
        readWithin([&, item = item] { read(item, value); }, [&] { return name; });
        if (!map.contains(name))
            map.insert(name, value);
    }
}

template<typename T>
void readField(const std::optional<Element> &element, T &value)
{
    if (!element)
        throw DecodingError(Kind::KeyNotFound);
    read(*element, value);
}

template<typename T>
void readField(const std::optional<Element> &element, std::optional<T> &value)
{
    if (element && !element->is_null())
        read(*element, value.emplace());
}

template<Record T>
void read(const Element &element, T &record)
{
    simdjson::dom::object object;
    if (element.get(object))
        throw DecodingError(element.is_null() ? Kind::ValueNotFound : Kind::TypeMismatch);
    // Fields are read in the table's order, so that of several failures the first declared one is told.
    const auto found = findFields<T>(object);
    std::apply(
        [&](const auto &...row) {
            auto element = found.begin();
            (readWithin([&] { readField(*element++, record.*row.field); },
                        [&] { return toQString(row.wireKey.view()); }),
             ...);
        },
        T::keyTable());
}

} // namespace tarnwik::json

namespace tarnwik {

template<Record T>
T decode(const QByteArray &bytes)
{
    // The platform's parser lets 512 levels pass.
    constexpr std::size_t deepest = 512;
    simdjson::dom::parser parser;
    json::Element document;
    const auto size = std::size_t(bytes.size());
    if (bytes.isEmpty() || parser.allocate(size, deepest) || parser.parse(bytes.constData(), size).get(document))
        throw DecodingError(DecodingError::Kind::DataCorrupted);
    T record;
    json::read(document, record);
    return record;
}

} // namespace tarnwik
