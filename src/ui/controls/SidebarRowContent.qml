import QtQuick
import Tarnwik.Controls

/// The symbol of a section, and its title beside it where there is room.
Item {
    id: content

    required property string symbol
    required property string text
    required property font font
    required property bool isSelected
    required property bool isFolded

    readonly property int gap: 8

    implicitWidth: isFolded ? icon.width : icon.width + gap + title.implicitWidth

    Icon {
        id: icon
        x: content.isFolded ? (parent.width - width) / 2 : 0
        anchors.verticalCenter: parent.verticalCenter
        symbol: content.symbol
        color: content.isSelected ? Theme.textOnAccent : Theme.accent
    }

    Text {
        id: title
        anchors {
            left: icon.right
            leftMargin: content.gap
            right: parent.right
            verticalCenter: parent.verticalCenter
        }
        visible: !content.isFolded
        text: content.text
        font: content.font
        color: content.isSelected ? Theme.textOnAccent : Theme.primary
        textFormat: Text.PlainText
        elide: Text.ElideRight
    }
}
