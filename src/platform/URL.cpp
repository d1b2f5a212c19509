#include "platform/URL.h"

#include <QByteArray>
#include <QUrl>

#include <algorithm>
#include <string_view>

namespace tarnwik {

namespace {

// The character classes of RFC 3986, appendix A.
constexpr bool isAlpha(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}
constexpr bool isHexDigit(char c)
{
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

constexpr bool isOneOf(char c, std::string_view characters)
{
    return characters.find(c) != std::string_view::npos;
}

constexpr bool isUnreservedOrSubDelimiter(char c)
{
    return isAlpha(c) || isDigit(c) || isOneOf(c, "-._~!$&'()*+,;=");
}

constexpr bool isUserCharacter(char c)
{
    return isUnreservedOrSubDelimiter(c);
}
constexpr bool isPasswordCharacter(char c)
{
    return isUnreservedOrSubDelimiter(c) || c == ':';
}
constexpr bool isPathCharacter(char c)
{
    return isUnreservedOrSubDelimiter(c) || isOneOf(c, ":@/");
}
constexpr bool isQueryCharacter(char c)
{
    return isPathCharacter(c) || c == '?';
}

using CharacterClass = bool (*)(char);

QByteArray percentEncoded(const QByteArray &text, CharacterClass isAllowed)
{
    QByteArray result;
    for (const char c : text) {
        if (isAllowed(c))
            result += c;
        else
            result += '%' + QByteArray(1, c).toHex().toUpper();
    }
    return result;
}

bool isEscape(const QByteArray &text, qsizetype i)
{
    return i + 2 < text.size() && text[i] == '%' && isHexDigit(text[i + 1]) && isHexDigit(text[i + 2]);
}

bool isValid(const QByteArray &text, CharacterClass isAllowed)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!isAllowed(text[i]) && !isEscape(text, i))
            return false;
    }
    return true;
}

/// A component that is valid as it stands is kept; in any other every "%" is taken for plain text.
QByteArray encodedIfNeeded(const QByteArray &component, CharacterClass isAllowed)
{
    return isValid(component, isAllowed) ? component : percentEncoded(component, isAllowed);
}

/// The first of \a characters in \a text from \a from on, or the end.
qsizetype indexOfAny(const QByteArray &text, std::string_view characters, qsizetype from = 0)
{
    const auto found = std::find_if(text.begin() + from, text.end(), [&](char c) { return isOneOf(c, characters); });
    return found - text.begin();
}

std::optional<QByteArray> encodedHost(const QByteArray &host)
{
    if (host.startsWith('[')) {
        const auto isLiteral = [](char c) { return isUnreservedOrSubDelimiter(c) || c == ':' || c == '%'; };
        if (!host.endsWith(']') || !std::all_of(host.begin() + 1, host.end() - 1, isLiteral))
            return std::nullopt;
        return host;
    }
    if (isValid(host, isUnreservedOrSubDelimiter))
        return host;
    QByteArray ascii = QUrl::toAce(QString::fromUtf8(host));
    if (ascii.isEmpty() || !isValid(ascii, isUnreservedOrSubDelimiter))
        return std::nullopt;
    return ascii;
}

std::optional<QByteArray> encodedAuthority(const QByteArray &authority)
{
    QByteArray result;
    QByteArray hostAndPort = authority;
    if (const auto at = authority.lastIndexOf('@'); at >= 0) {
        const QByteArray user = authority.left(at);
        hostAndPort = authority.mid(at + 1);
        const auto colon = user.indexOf(':');
        result += encodedIfNeeded(user.left(colon < 0 ? at : colon), isUserCharacter);
        if (colon >= 0)
            result += ':' + encodedIfNeeded(user.mid(colon + 1), isPasswordCharacter);
        result += '@';
    }

    const auto literalEnd = hostAndPort.startsWith('[') ? hostAndPort.indexOf(']') + 1 : 0;
    if (hostAndPort.startsWith('[') && literalEnd == 0)
        return std::nullopt;
    auto portStart = hostAndPort.indexOf(':', literalEnd);
    if (portStart < 0)
        portStart = hostAndPort.size();
    const QByteArray port = hostAndPort.mid(portStart + 1);
    const auto host = encodedHost(hostAndPort.left(portStart));
    if (!host || !std::all_of(port.begin(), port.end(), isDigit))
        return std::nullopt;
    return result + *host + hostAndPort.mid(portStart);
}

/// How long the scheme is: a colon before any other delimiter ends it. One that leads the text is part of the path.
qsizetype schemeLength(const QByteArray &text)
{
    const auto end = indexOfAny(text, ":/?#");
    return end < text.size() && text[end] == ':' ? end : 0;
}

/// Where a URL's path begins: behind scheme and authority.
qsizetype pathStart(const QByteArray &text)
{
    const auto scheme = schemeLength(text);
    auto start = scheme > 0 ? scheme + 1 : 0;
    if (text.mid(start, 2) == "//")
        start = indexOfAny(text, "/?#", start + 2);
    return start;
}

bool isScheme(const QByteArray &text)
{
    return isAlpha(text.front())
        && std::all_of(text.begin(), text.end(), [](char c) { return isAlpha(c) || isDigit(c) || isOneOf(c, "+-."); });
}

} // namespace

std::optional<URL> URL::fromString(const QString &text)
{
    // Half a character has no UTF-8: what it would turn into is another URL.
    if (text.isEmpty() || !text.isValidUtf16())
        return std::nullopt;
    const QByteArray bytes = text.toUtf8();

    QByteArray result;
    qsizetype position = 0;
    if (const auto scheme = schemeLength(bytes); scheme > 0) {
        if (!isScheme(bytes.left(scheme)))
            return std::nullopt;
        position = scheme + 1;
        result = bytes.left(position);
    }
    if (bytes.mid(position, 2) == "//") {
        const auto authorityEnd = indexOfAny(bytes, "/?#", position + 2);
        const auto authority = encodedAuthority(bytes.mid(position + 2, authorityEnd - position - 2));
        if (!authority)
            return std::nullopt;
        result += "//" + *authority;
        position = authorityEnd;
    }
    const auto pathEnd = indexOfAny(bytes, "?#", position);
    result += encodedIfNeeded(bytes.mid(position, pathEnd - position), isPathCharacter);
    const auto queryEnd = indexOfAny(bytes, "#", pathEnd);
    if (queryEnd > pathEnd)
        result += '?' + encodedIfNeeded(bytes.mid(pathEnd + 1, queryEnd - pathEnd - 1), isQueryCharacter);
    if (queryEnd < bytes.size())
        result += '#' + encodedIfNeeded(bytes.mid(queryEnd + 1), isQueryCharacter);
    return URL(QString::fromLatin1(result));
}

URL URL::appendingPath(const QString &path) const
{
    const QByteArray text = m_text.toLatin1();
    const auto start = pathStart(text);
    const auto end = indexOfAny(text, "?#", start);
    QByteArray appended = percentEncoded(path.toUtf8(), isPathCharacter);
    QByteArray base = text.left(end);
    if (end > start && base.endsWith('/'))
        base.chop(1);
    if (!appended.startsWith('/'))
        appended.prepend('/');
    return URL(QString::fromLatin1(base + appended + text.mid(end)));
}

} // namespace tarnwik
