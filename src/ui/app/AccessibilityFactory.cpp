#include "ui/app/AccessibilityFactory.h"

#include <QAccessible>
#include <QQuickWindow>
#include <QtQuick/private/qaccessiblequickitem_p.h>
#include <QtQuick/private/qquickflickable_p.h>
#include <QtQuick/private/qquickitem_p.h>

#include <map>

namespace tarnwik {

namespace {

class AccessibleItem final : public QAccessibleQuickItem
{
public:
    using QAccessibleQuickItem::QAccessibleQuickItem;

    /// Qt 6.4 never reports that an item is disabled, as later versions do. It says of every label that it takes the
    /// focus, and of whatever surrounds the focused control that it has it too.
    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleQuickItem::state();
        const auto *item = qobject_cast<QQuickItem *>(object());
        if (item && !item->isEnabled()) {
            state.disabled = true;
            state.focusable = false;
        }
        const bool isShownOnly = role() == QAccessible::StaticText || role() == QAccessible::ScrollBar;
        if (item && isShownOnly && !item->activeFocusOnTab())
            state.focusable = false;
        if (item && item->window() && item->window()->activeFocusItem() != item)
            state.focused = false;
        return state;
    }

    /// Qt 6.4 puts the role of a control's C++ type over the one that its component gives: the component repeats it as
    /// a property.
    QAccessible::Role role() const override
    {
        const QVariant given = object()->property("accessibleRole");
        return given.isValid() ? static_cast<QAccessible::Role>(given.toInt()) : QAccessibleQuickItem::role();
    }

    /// A field's placeholder is its name, and its description too: that says the same twice. Of a field that holds a
    /// password Qt only gives the latter.
    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Value && holdsPassword())
            return {};
        if (kind == QAccessible::Name && holdsPassword())
            return QAccessibleQuickItem::text(QAccessible::Description);
        const QString text = QAccessibleQuickItem::text(kind);
        return kind == QAccessible::Description && text == this->text(QAccessible::Name) ? QString() : text;
    }

    /// A password has no text that could be read character by character.
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        const bool readsContents = type == QAccessible::TextInterface || type == QAccessible::ValueInterface;
        return readsContents && holdsPassword() ? nullptr : QAccessibleQuickItem::interface_cast(type);
    }

    QAccessibleInterface *child(int index) const override
    {
        const QList<QQuickItem *> children = orderedChildren();
        return index >= 0 && index < children.size() ? QAccessible::queryAccessibleInterface(children.at(index))
                                                     : nullptr;
    }

    int indexOfChild(const QAccessibleInterface *child) const override
    {
        return int(orderedChildren().indexOf(qobject_cast<QQuickItem *>(child->object())));
    }

private:
    /// A list makes its rows, header and footer in an order of its own: here they come as they are read.
    QList<QQuickItem *> orderedChildren() const
    {
        QList<QQuickItem *> children = childItems();
        const auto *list = qobject_cast<QQuickFlickable *>(object());
        if (!list || role() != QAccessible::List)
            return children;
        std::multimap<qreal, QQuickItem *> byPlace;
        for (QQuickItem *child : children) {
            const QQuickItem *part = child;
            while (part->parentItem() && part->parentItem() != list->contentItem())
                part = part->parentItem();
            byPlace.emplace(part->y(), child);
        }
        QList<QQuickItem *> ordered;
        for (const auto &[place, child] : byPlace)
            ordered.append(child);
        return ordered;
    }

    bool holdsPassword() const { return QAccessibleQuickItem::state().passwordEdit; }
};

QAccessibleInterface *accessibleItem(const QString &className, QObject *object)
{
    if (className != QStringLiteral("QQuickItem"))
        return nullptr;
    auto *item = qobject_cast<QQuickItem *>(object);
    return item && QQuickItemPrivate::get(item)->isAccessible ? new AccessibleItem(item) : nullptr;
}

} // namespace

void installAccessibilityFactory()
{
    QAccessible::installFactory(accessibleItem);
}

} // namespace tarnwik
