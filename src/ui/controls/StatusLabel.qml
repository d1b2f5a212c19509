import QtQuick
import Tarnwik.Controls

/// A symbol and a word or two, both in the colour that says how good that is.
Row {
    id: status

    required property string symbol
    required property string text
    property color tint: Theme.secondary
    property string textStyle: "captionSemibold"
    property int iconSize: Theme.statusIconSize

    spacing: 4

    Icon {
        anchors.verticalCenter: parent.verticalCenter
        symbol: status.symbol
        size: status.iconSize
        color: status.tint
    }

    Label {
        anchors.verticalCenter: parent.verticalCenter
        text: status.text
        textStyle: status.textStyle
        color: status.tint
    }
}
