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
    return beginning + u'\u2026';
}

/// \a text on one line, with a blank for each character that is not to be seen.
QString onOneLine(QString text)
{
    for (QChar &character : text) {
        const QChar::Category category = character.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line
            || category == QChar::Separator_Paragraph)
            character = u' ';
    }
    return text;
}

} // namespace

QString menuText(const QString &text, DesktopMenuBar menuBar)
{
    QString escaped = elided(onOneLine(text));
    if (menuBar == DesktopMenuBar::Always)
        return escaped.replace(u'&', QStringLiteral("&&"));
    // On the bus "_" marks the key; twice it is itself. Qt makes one of the first "&" alone: before a second one the
    // key is then "&", which the desktop shows as it is.
    escaped.replace(u'_', QStringLiteral("__"));
    if (const qsizetype first = escaped.indexOf(u'&'); first >= 0)
        escaped.insert(first, u'&');
    return escaped;
}

} // namespace tarnwik
