#include "ui/controls/Announcer.h"

#include <QAccessible>

#include <utility>

namespace tarnwik {

void Announcer::announce(QQuickItem *item)
{
    if (m_waiting.contains(item))
        return;
    m_waiting.append(item);
    QMetaObject::invokeMethod(this, &Announcer::readOut, Qt::QueuedConnection);
}

void Announcer::readOut()
{
    for (const auto &item : std::exchange(m_waiting, {})) {
        if (!item || !item->isVisible())
            continue;
        // Screen readers on Linux read an alert when it is shown, those on macOS when it is one.
        for (const auto kind : {QAccessible::ObjectShow, QAccessible::Alert}) {
            QAccessibleEvent event(item, kind);
            QAccessible::updateAccessibility(&event);
        }
    }
}

} // namespace tarnwik
