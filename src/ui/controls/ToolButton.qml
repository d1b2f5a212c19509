import QtQuick
import Tarnwik.Controls

/// A symbol that can be pressed, without a frame at rest. Its accessible name is its tooltip too.
Button {
    id: button

    /// Whether something stands open that the tooltip would cover.
    property bool isOpen: false

    implicitWidth: implicitHeight
    leftPadding: 0
    rightPadding: 0
    fill: !enabled ? "transparent" : down ? Theme.rowPressed : hovered ? Theme.rowHover : "transparent"
    stroke: "transparent"
    tint: enabled ? Theme.secondary : Theme.disabledText

    HoverToolTip {
        owner: button
        isWanted: button.hovered && !button.down && !button.isOpen
        text: button.Accessible.name
    }
}
