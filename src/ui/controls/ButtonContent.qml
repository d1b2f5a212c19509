import QtQuick
import Tarnwik.Controls

/// The symbol and the text in the middle of a button, or the spinner that stands for both.
Item {
    id: content

    property string symbol: ""
    property string text: ""
    property font font
    property color tint
    property bool busy: false
    property bool isUnderlined: false

    readonly property int gap: symbol !== "" && text !== "" ? 6 : 0
    readonly property int iconWidth: symbol !== "" ? Theme.iconSize : 0

    implicitWidth: Math.max(Theme.iconSize, iconWidth + gap + label.implicitWidth)
    implicitHeight: Math.max(Theme.iconSize, label.implicitHeight)

    Row {
        anchors.centerIn: parent
        visible: !content.busy
        spacing: content.gap

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            visible: content.symbol !== ""
            symbol: content.symbol
            color: content.tint
        }

        Text {
            id: label
            anchors.verticalCenter: parent.verticalCenter
            visible: text !== ""
            width: Math.min(implicitWidth, content.width - content.iconWidth - content.gap)
            text: content.text
            font { family: content.font.family; pixelSize: content.font.pixelSize; weight: content.font.weight }
            font.underline: content.isUnderlined
            color: content.tint
            textFormat: Text.PlainText
            elide: Text.ElideRight
        }
    }

    Spinner {
        objectName: "spinner"
        anchors.centerIn: parent
        visible: content.busy
        color: content.enabled ? content.tint : Theme.secondary
    }
}
