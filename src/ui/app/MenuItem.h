#pragma once

class QAction;
class QMenu;

namespace tarnwik {

class Action;

/// Whether an item of a menu shows the keys of its action. Either way they are the window's to listen to.
enum class MenuItemKeys {
    Hidden,
    Shown,
};

/// Appends an item that looks as \a action does, follows its changes and triggers it. \a action must outlive the menu.
QAction *addMenuItem(QMenu *menu, Action *action, MenuItemKeys keys);

} // namespace tarnwik
