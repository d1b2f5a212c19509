#include "api/KeyConversion.h"

#include "api/Capitalized.h"

#include <QList>
#include <QStringList>

#include <algorithm>

namespace tarnwik::keys {

QString fromSnakeCase(const QString &key)
{
    const auto isUnderscore = [](QChar c) { return c == u'_'; };
    const auto first = std::find_if_not(key.begin(), key.end(), isUnderscore);
    if (first == key.end())
        return key;
    const auto last = std::find_if_not(key.rbegin(), key.rend(), isUnderscore);
    const auto leading = first - key.begin();
    const auto trailing = last - key.rbegin();
    const QStringList parts = key.mid(leading, key.size() - leading - trailing).split(u'_', Qt::SkipEmptyParts);
    if (parts.size() == 1)
        return key;

    QString result = key.left(leading) + parts.front().toLower();
    for (const QString &part : parts.mid(1))
        result += capitalized(part);
    return result + key.right(trailing);
}

QString toSnakeCase(const QString &key)
{
    const QList<uint> characters = key.toUcs4();
    const auto isUpper = [](char32_t c) { return QChar::isUpper(c) || QChar::isTitleCase(c); };
    const auto isLower = [](char32_t c) { return QChar::isLower(c); };
    QString result;
    splitIntoWords(characters, isUpper, isLower, [&](std::size_t i, bool beginsWord) {
        if (beginsWord)
            result += u'_';
        const auto character = static_cast<char32_t>(characters[qsizetype(i)]);
        result += QString::fromUcs4(&character, 1).toLower();
    });
    return result;
}

} // namespace tarnwik::keys
