import QtQuick
import QtQuick.Window

/// The keys that every window of the program understands. "Ctrl" is the command key where the platform has one.
Item {
    id: shortcuts

    required property var actions
    required property Window window

    ActionShortcut { action: shortcuts.actions.openDashboard }
    ActionShortcut { action: shortcuts.actions.vpn }
    ActionShortcut { action: shortcuts.actions.refresh }
    ActionShortcut { action: shortcuts.actions.quit }
    Shortcut {
        // The menu shows no keys for its settings item: these belong to the window.
        sequence: "Ctrl+,"
        onActivated: shortcuts.actions.settings.trigger()
    }
    Shortcut {
        sequence: "Ctrl+W"
        onActivated: shortcuts.window.close()
    }
}
