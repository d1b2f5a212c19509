#pragma once

// How records are read. Only the units that instantiate decode() for a library's records include this.

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

/// Where a record's keys stand in a document: the row of the key table, by the key's place in the object. The records
/// of a list mostly have their keys in one order, so each record tells where to look in the next one.
template<Record T>
class KeyOrder
{
    using Names = KeyNames<T>;

public:
    /// The row of \a key, which is the object's key number \a place; the table's size when it has none.
    std::size_t row(std::string_view key, std::size_t place)
    {
        if (place >= m_rows.size())
            return search(key);
        std::size_t &row = m_rows[place];
        if (row == Names::count || (Names::received[row] != key && Names::declared[row] != key))
            row = search(key);
        return row;
    }

private:
    static std::size_t search(std::string_view key)
    {
        const auto find = [](const typename Names::List &list, std::string_view name) {
            return std::size_t(std::find(list.begin(), list.end(), name) - list.begin());
        };
        if (key.find('_') == std::string_view::npos)
            return find(Names::declared, key);
        if (const std::size_t row = find(Names::received, key); row < Names::count)
            return row;
        return find(Names::declared, keys::fromSnakeCase(toQString(key)).toStdString());
    }

    std::array<std::size_t, Names::count> m_rows = [] {
        std::array<std::size_t, Names::count> rows{};
        rows.fill(Names::count);
        return rows;
    }();
};

/// A field's text in the record before, and the string that was made of it.
struct LastText
{
    std::string_view text;
    QString string;
};

/// What one record of a list leaves for the next one: where its keys stood, and its texts, so that what a server
/// repeats in every record, a region or a status, is converted and stored once.
template<Record T>
struct RecordMemory
{
    KeyOrder<T> order;
    std::array<LastText, KeyNames<T>::count> texts;
};

/// The elements of a record's fields, in the order of its key table; nothing where the key is missing.
template<Record T>
auto findFields(const simdjson::dom::object &object, KeyOrder<T> &order)
{
    std::array<std::optional<Element>, KeyNames<T>::count> found;
    std::size_t place = 0;
    for (const auto &[key, value] : object) {
        const std::size_t row = order.row(key, place++);
        if (row < found.size() && !found[row])
            found[row] = value;
    }
    return found;
}

inline DecodingError mismatch(const Element &element)
{
    return DecodingError(element.is_null() ? Kind::ValueNotFound : Kind::TypeMismatch);
}

inline void require(const Element &element, simdjson::error_code error)
{
    if (error)
        throw mismatch(element);
}

inline std::string_view textOf(const Element &element)
{
    std::string_view text;
    require(element, element.get(text));
    return text;
}

inline void read(const Element &element, QString &value)
{
    value = toQString(textOf(element));
}

inline void read(const Element &element, bool &value)
{
    require(element, element.get(value));
}

/// Any number whose value is integral and fits, however it is written.
inline void read(const Element &element, qint64 &value)
{
    // 2^63, which itself does not fit.
    constexpr double end = 9223372036854775808.0;
    std::int64_t integer = 0;
    double number = 0;
    if (!element.get(integer)) {
        value = integer;
    } else if (element.is_double() && !element.get(number)) {
        const bool fits = number >= -end && number < end;
        if (!fits || number != std::trunc(number))
            throw DecodingError(Kind::DataCorrupted);
        value = qint64(number);
    } else {
        throw element.is_uint64() ? DecodingError(Kind::DataCorrupted) : mismatch(element);
    }
}

template<Record T>
void read(const Element &element, T &record, RecordMemory<T> &memory);

template<Record T>
void read(const Element &element, T &record)
{
    RecordMemory<T> memory;
    read(element, record, memory);
}

/// What one item of a list leaves for the next one: nothing, but for records.
template<typename T>
struct ItemMemory
{
};
template<Record T>
struct ItemMemory<T> : RecordMemory<T>
{
};

template<typename T>
void read(const Element &element, QList<T> &list)
{
    simdjson::dom::array array;
    require(element, element.get(array));
    list.reserve(qsizetype(array.size()));
    [[maybe_unused]] ItemMemory<T> memory;
    for (const Element item : array) {
        const auto readItem = [&] {
            if constexpr (Record<T>)
                read(item, list.emplaceBack(), memory);
            else
                read(item, list.emplaceBack());
        };
        readWithin(readItem, [&] { return QStringLiteral("[%1]").arg(list.size() - 1); });
    }
}

/// A map's keys are data, not field names: they are kept as they came.
template<typename T>
void read(const Element &element, QMap<QString, T> &map)
{
    simdjson::dom::object object;
    require(element, element.get(object));
    for (const auto &[key, item] : object) {
        const QString name = toQString(key);
        T value{};
        readWithin([&, item = item] { read(item, value); }, [&] { return QString(name); });
        if (!map.contains(name))
            map.insert(name, value);
    }
}

template<typename T>
void readField(const std::optional<Element> &element, T &value, LastText & /*last*/)
{
    if (!element)
        throw DecodingError(Kind::KeyNotFound);
    read(*element, value);
}

template<typename T>
void readField(const std::optional<Element> &element, std::optional<T> &value, LastText & /*last*/)
{
    if (element && !element->is_null())
        read(*element, value.emplace());
}

inline void readField(const std::optional<Element> &element, QString &value, LastText &last)
{
    if (!element)
        throw DecodingError(Kind::KeyNotFound);
    const std::string_view text = textOf(*element);
    if (last.text != text || last.string.isNull())
        last = {text, toQString(text)};
    // A copy that is moved in: both are inline, the assignment of a QString is not.
    value = QString(last.string);
}

template<Record T>
void read(const Element &element, T &record, RecordMemory<T> &memory)
{
    simdjson::dom::object object;
    require(element, element.get(object));
    // Fields are read in the table's order, so that of several failures the first declared one is told.
    const auto found = findFields(object, memory.order);
    std::apply(
        [&](const auto &...row) {
            auto field = found.begin();
            auto last = memory.texts.begin();
            (readWithin([&] { readField(*field++, record.*row.field, *last++); },
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
