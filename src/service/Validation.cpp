#include "service/Validation.h"

#include <QHostAddress>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace tarnwik::service {

namespace {

bool matches(const QString &text, const char *pattern)
{
    const QString whole = QRegularExpression::anchoredPattern(QLatin1String(pattern));
    return QRegularExpression(whole, QRegularExpression::UseUnicodePropertiesOption).match(text).hasMatch();
}

bool isControl(QChar c)
{
    return c.category() == QChar::Other_Control;
}

bool isBase64URL(const QByteArray &text)
{
    const auto decoded = QByteArray::fromBase64Encoding(
        text, QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals | QByteArray::AbortOnBase64DecodingErrors);
    return decoded && !text.isEmpty() && !text.contains('=');
}

} // namespace

bool isEmailAddress(const QString &text)
{
    constexpr qsizetype longest = 254;
    return text.toUtf8().size() <= longest && std::none_of(text.begin(), text.end(), isControl)
        && matches(text, R"([^\s@]{1,64}@[\p{L}\p{N}-]+(\.[\p{L}\p{N}-]+)*)");
}

bool isDisplayName(const QString &text)
{
    constexpr qsizetype longest = 128;
    return text.size() <= longest && !text.trimmed().isEmpty() && std::none_of(text.begin(), text.end(), isControl);
}

bool isPassword(const QString &text)
{
    constexpr qsizetype longest = 1024;
    return !text.isEmpty() && text.toUtf8().size() <= longest;
}

bool isPlatform(const QString &text)
{
    return text == QLatin1String("ios") || text == QLatin1String("macos");
}

bool isEndpoint(const QString &text)
{
    const qsizetype colon = text.lastIndexOf(u':');
    const QString host = text.left(colon);
    const QString port = text.mid(colon + 1);
    if (colon < 1 || !matches(port, "[1-9][0-9]{0,4}") || port.toInt() > 65535)
        return false;
    if (host.startsWith(u'[') && host.endsWith(u']'))
        return QHostAddress(host.mid(1, host.size() - 2)).protocol() == QAbstractSocket::IPv6Protocol;
    return matches(host, R"([A-Za-z0-9-]+(\.[A-Za-z0-9-]+)*)");
}

bool isCompactJWS(const QString &text)
{
    const QList<QByteArray> parts = text.toUtf8().split('.');
    if (parts.size() != 3 || !std::all_of(parts.begin(), parts.end(), isBase64URL))
        return false;
    return std::all_of(parts.begin(), parts.end() - 1, [](const QByteArray &part) {
        return QJsonDocument::fromJson(QByteArray::fromBase64(part, QByteArray::Base64UrlEncoding)).isObject();
    });
}

} // namespace tarnwik::service
