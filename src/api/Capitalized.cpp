#include "api/Capitalized.h"

#include <QChar>
#include <QList>

namespace tarnwik {

namespace {

/// Unicode's Case_Ignorable: modifiers, marks, format characters and some punctuation within words. The colon, the
/// full stop and the middle dot, which newer tables list too, begin a new word here as on the platform.
bool isCaseIgnorable(char32_t c)
{
    switch (QChar::category(c)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format:
    case QChar::Letter_Modifier:
    case QChar::Symbol_Modifier:
        return true;
    default:
        return c == U'\'' || c == U'\u2019';
    }
}

/// Title case in full: QChar's own mapping is of one character to one. The ligatures of Armenian, and Latin and Greek
/// letters whose accented capitals are no characters of their own, stay as they are.
QString titleCased(char32_t c)
{
    switch (c) {
    case U'\u00DF':
        return QStringLiteral("Ss");
    case U'\uFB00':
        return QStringLiteral("Ff");
    case U'\uFB01':
        return QStringLiteral("Fi");
    case U'\uFB02':
        return QStringLiteral("Fl");
    case U'\uFB03':
        return QStringLiteral("Ffi");
    case U'\uFB04':
        return QStringLiteral("Ffl");
    case U'\uFB05':
    case U'\uFB06':
        return QStringLiteral("St");
    case U'\u0149':
        return QStringLiteral("\u02BCN");
    default: {
        const char32_t title = QChar::toTitleCase(c);
        return QString::fromUcs4(&title, 1);
    }
    }
}

} // namespace

QString capitalized(const QString &text)
{
    QString result;
    bool isInsideWord = false;
    for (const uint codePoint : text.toUcs4()) {
        const auto c = static_cast<char32_t>(codePoint);
        const QString same = QString::fromUcs4(&c, 1);
        if (QChar::isUpper(c) || QChar::isTitleCase(c)) {
            result += isInsideWord ? same.toLower() : same;
            isInsideWord = true;
        } else if (QChar::isLower(c)) {
            result += isInsideWord ? same : titleCased(c);
            isInsideWord = true;
        } else {
            result += same;
            isInsideWord = isInsideWord && isCaseIgnorable(c);
        }
    }
    return result;
}

} // namespace tarnwik
