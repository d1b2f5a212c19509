import QtQuick
import Tarnwik.Controls

/// A menu item's title, and its keys at the right.
Item {
    id: content

    required property string title
    required property string keys
    required property bool isEnabled
    required property bool isHighlighted

    readonly property int gap: keys === "" ? 0 : 24

    implicitWidth: titleLabel.implicitWidth + gap + keysLabel.implicitWidth

    Label {
        id: titleLabel

        anchors {
            left: parent.left
            right: keysLabel.left
            rightMargin: content.gap
            verticalCenter: parent.verticalCenter
        }
        text: content.title
        elide: Text.ElideRight
        color: !content.isEnabled ? Theme.disabledText : content.isHighlighted ? Theme.textOnAccent : Theme.primary
        Accessible.ignored: true
    }
    Label {
        id: keysLabel

        anchors {
            right: parent.right
            verticalCenter: parent.verticalCenter
        }
        text: content.keys
        color: !content.isEnabled ? Theme.disabledText : content.isHighlighted ? Theme.textOnAccent : Theme.secondary
        Accessible.ignored: true
    }
}
