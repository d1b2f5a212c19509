import QtQuick
import Tarnwik.Controls

/// The ring around what it fills, outside it. Round an accent fill a gap keeps it from melting into the fill.
Rectangle {
    property int gap: 0
    property int innerRadius: Theme.controlRadius
    property color tint: Theme.ring

    anchors.fill: parent
    anchors.margins: -Theme.ringWidth - gap
    radius: innerRadius + Theme.ringWidth + gap
    color: "transparent"
    border.width: Theme.ringWidth
    border.color: tint
}
