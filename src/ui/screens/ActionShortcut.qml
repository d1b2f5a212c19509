import QtQuick

/// The keys of one action of the program, while its window is the active one.
Shortcut {
    required property var action

    sequence: action.shortcut
    enabled: action.isEnabled && action.shortcut !== ""
    onActivated: action.trigger()
}
