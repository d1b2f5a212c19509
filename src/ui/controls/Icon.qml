import QtQuick
import Tarnwik.Controls

/// The icon with an SF Symbols name, in one colour. An image in an Item: a source size would otherwise be taken for the
/// room that a layout should give.
Item {
    id: icon

    property string symbol: ""
    property color color: Theme.primary
    property int size: Theme.iconSize

    implicitWidth: size
    implicitHeight: size

    Image {
        anchors.fill: parent
        // Points: the image is asked for in the screen's pixels.
        sourceSize { width: icon.size; height: icon.size }
        source: icon.symbol === "" ? "" : "image://icon/" + icon.symbol + "/" + icon.color
    }
}
