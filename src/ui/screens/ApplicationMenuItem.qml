import QtQuick
import QtQuick.Templates as T
import Tarnwik.Controls

/// One action in the application's menu, with its keys in the platform's notation.
T.MenuItem {
    id: item

    /// An action of the program: title, shortcut, isEnabled and trigger().
    required property var command

    readonly property string keys: notation.nativeText

    text: command.title
    enabled: command.isEnabled
    leftPadding: 10
    rightPadding: 10
    implicitWidth: leftPadding + implicitContentWidth + rightPadding
    implicitHeight: Theme.popupRowHeight
    onTriggered: command.trigger()

    Accessible.role: Accessible.MenuItem
    Accessible.name: text
    Accessible.description: keys
    Accessible.onPressAction: if (item.enabled) item.clicked()

    background: Rectangle {
        radius: 5
        color: item.highlighted && item.enabled ? Theme.accentFill : "transparent"
    }
    contentItem: ApplicationMenuItemContent {
        title: item.text
        keys: item.keys
        isEnabled: item.enabled
        isHighlighted: item.highlighted
    }

    Shortcut {
        id: notation

        // Only for its text: the keys themselves belong to the window.
        enabled: false
        sequence: item.command.shortcut
    }
}
