#include "core/AppRuntime.h"

#include "platform/InformationDictionary.h"
#include "platform/PlatformServices.h"

#include <QStringView>

namespace tarnwik {

namespace {

const QString builtInServerURL = QStringLiteral("https://api.tarnwik.example");
const QString builtInTunnelIdentifier = QStringLiteral("example.tarnwik.client.tunnel");

/// The platform's set of white space and line breaks, which counts U+200B as well as what Qt counts.
bool isWhitespaceOrNewline(QChar c)
{
    return c.isSpace() || c == QChar(0x200B);
}

QString trimmed(QStringView text)
{
    while (!text.isEmpty() && isWhitespaceOrNewline(text.front()))
        text = text.mid(1);
    while (!text.isEmpty() && isWhitespaceOrNewline(text.back()))
        text.chop(1);
    return text.toString();
}

} // namespace

QString AppRuntime::defaultServerURLString()
{
    return value(QStringLiteral("TarnwikDefaultServerURL")).value_or(builtInServerURL);
}

URL AppRuntime::defaultServerURL()
{
    if (const auto url = URL::fromString(defaultServerURLString()))
        return *url;
    const auto builtIn = URL::fromString(builtInServerURL);
    if (!builtIn)
        // The platform's own words for a value that must be there.
        qFatal("Unexpectedly found nil while unwrapping an Optional value");
    return *builtIn;
}

QString AppRuntime::tunnelBundleIdentifier()
{
    return value(QStringLiteral("TarnwikTunnelBundleIdentifier")).value_or(builtInTunnelIdentifier);
}

std::optional<QString> AppRuntime::keychainAccessGroup()
{
    return value(QStringLiteral("TarnwikKeychainAccessGroup"));
}

std::optional<QString> AppRuntime::value(const QString &key)
{
    const QVariant object = PlatformServices::current().informationDictionary->object(key);
    if (object.typeId() != QMetaType::QString)
        return std::nullopt;
    QString text = trimmed(object.toString());
    if (text.isEmpty() || text.contains(QLatin1String("$(")))
        return std::nullopt;
    return text;
}

} // namespace tarnwik
