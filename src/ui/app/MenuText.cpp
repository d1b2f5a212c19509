#include "ui/app/MenuText.h"

namespace tarnwik {

namespace {

/// Desktops make a menu as wide as its longest title, be it wider than the screen.
constexpr qsizetype longestTitle = 80;

/// \a line with an ellipsis in place of what is too long.
QString elided(const QString &line)
{
    if (line.size() <= longestTitle)
        return line;
    QString beginning = line.first(longestTitle - 1);
    if (beginning.back().isHighSurrogate())
        beginning.chop(1);
    return beginning.trimmed() + u'\u2026';
}

} // namespace

QString menuText(const QString &text)
{
    QString escaped = elided(text.simplified());
    // On the bus "_" marks the key; twice it is itself. Qt makes one of the first "&" alone: before a second one the
    // key is then "&", which the desktop shows as it is.
    escaped.replace(u'_', QStringLiteral("__"));
    if (const qsizetype first = escaped.indexOf(u'&'); first >= 0)
        escaped.insert(first, u'&');
    return escaped;
}

} // namespace tarnwik
