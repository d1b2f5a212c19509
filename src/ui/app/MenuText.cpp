#include "ui/app/MenuText.h"

namespace tarnwik {

QString menuText(const QString &text)
{
    QString escaped = text.simplified();
    // On the bus "_" marks the key; twice it is itself. Qt makes one of the first "&" alone: before a second one the
    // key is then "&", which the desktop shows as it is.
    escaped.replace(u'_', QStringLiteral("__"));
    if (const qsizetype first = escaped.indexOf(u'&'); first >= 0)
        escaped.insert(first, u'&');
    return escaped;
}

} // namespace tarnwik
