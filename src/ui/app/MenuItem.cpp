#include "ui/app/MenuItem.h"

#include "ui/app/MenuText.h"
#include "ui/model/Action.h"

#include <QMenu>

namespace tarnwik {

QAction *addMenuItem(QMenu *menu, Action *action, MenuItemKeys keys)
{
    QAction *item = menu->addAction(QString());
    const auto update = [item, action, keys] {
        item->setText(menuText(action->title()));
        item->setEnabled(action->isEnabled());
        if (keys == MenuItemKeys::Shown)
            item->setShortcut(QKeySequence(action->shortcut(), QKeySequence::PortableText));
    };
    QObject::connect(action, &Action::changed, item, update);
    QObject::connect(item, &QAction::triggered, action, &Action::trigger);
    update();
    return item;
}

} // namespace tarnwik
