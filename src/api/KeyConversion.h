#pragma once

#include <QString>

#include <array>
#include <cstddef>
#include <string_view>

/// The two rules by which a record's declared key and its key on the wire follow from each other. They are those of
/// the platform's JSON coders (JSONDecoder.convertFromSnakeCase, JSONEncoder.convertToSnakeCase), and are no inverses:
/// "signedTransactionJWS" is written as "signed_transaction_jws", which is read as "signedTransactionJws".
namespace tarnwik::keys {

/// The declared form of a key received: split at inner underscores, first part lower-cased, the others capitalised,
/// joined; leading and trailing underscores stay. A key of one part is kept as it is.
QString fromSnakeCase(const QString &key);

/// The wire form of a declared key: a new word begins at a capital that follows anything but a capital, and at the last
/// character of a run of capitals that a lower-case letter follows; words lower-cased, joined by "_".
QString toSnakeCase(const QString &key);

/// The wire form of a declared key that is known when the program is compiled. ASCII only, which declared keys are.
template<std::size_t Size>
struct WireKey
{
    std::array<char, 2 * Size> characters{};
    std::size_t length = 0;

    constexpr std::string_view view() const { return {characters.data(), length}; }
};

/// Calls \a emit(character index, begins a word) for each character of \a key in order. This is the splitting rule
/// itself, for any string type and any notion of case.
template<typename String, typename IsUpper, typename IsLower, typename Emit>
constexpr void splitIntoWords(const String &key, IsUpper isUpper, IsLower isLower, Emit emit)
{
    const auto size = static_cast<std::size_t>(key.size());
    const auto find = [&](std::size_t from, auto matches) {
        while (from < size && !matches(key[from]))
            ++from;
        return from;
    };
    std::size_t emitted = 0;
    const auto emitUntil = [&](std::size_t end) {
        for (bool begins = emitted > 0; emitted < end; begins = false, ++emitted)
            emit(emitted, begins);
    };

    // The first character never begins a word of its own.
    for (std::size_t searched = 1; searched < size;) {
        const std::size_t upper = find(searched, isUpper);
        if (upper == size)
            break;
        emitUntil(upper);
        const std::size_t lower = find(upper, isLower);
        if (lower == size)
            break;
        // Of a run of capitals before a lower-case letter, the last character belongs to the next word.
        if (lower > upper + 1)
            emitUntil(lower - 1);
        searched = lower + 1;
    }
    emitUntil(size);
}

template<std::size_t Size>
consteval WireKey<Size> wireKey(const char (&declaredKey)[Size])
{
    const auto isUpper = [](char c) { return c >= 'A' && c <= 'Z'; };
    const auto isLower = [](char c) { return c >= 'a' && c <= 'z'; };
    const std::string_view key(declaredKey, Size - 1);
    WireKey<Size> result;
    splitIntoWords(key, isUpper, isLower, [&](std::size_t i, bool beginsWord) {
        if (beginsWord)
            result.characters[result.length++] = '_';
        result.characters[result.length++] = isUpper(key[i]) ? static_cast<char>(key[i] - 'A' + 'a') : key[i];
    });
    return result;
}

/// Whether fromSnakeCase() makes \a declaredKey of \a wireKey, for keys of ASCII letters and digits whose words begin
/// with a letter.
constexpr bool readsBack(std::string_view wireKey, std::string_view declaredKey)
{
    std::size_t at = 0;
    bool beginsWord = false;
    for (const char c : wireKey) {
        if (c == '_') {
            beginsWord = true;
            continue;
        }
        const bool isLower = c >= 'a' && c <= 'z';
        const char expected = beginsWord && isLower ? static_cast<char>(c - 'a' + 'A') : c;
        if (at == declaredKey.size() || declaredKey[at] != expected)
            return false;
        ++at;
        beginsWord = false;
    }
    return at == declaredKey.size();
}

} // namespace tarnwik::keys
