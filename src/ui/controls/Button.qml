import QtQuick
import Tarnwik.Controls

/// A bordered button: a symbol, a text, or both. While it is busy a spinner stands in their place, and its size stays.
Pressable {
    id: button

    /// The SF Symbols name of its icon, or "" for none.
    property string symbol: ""
    property bool busy: false
    property bool destructive: false
    /// As high and as heavy as a prominent button: the bordered form of the same control.
    property bool isLarge: false

    property color fill: !enabled ? Theme.controlDisabled
                       : down ? Theme.controlPressed
                       : hovered ? Theme.controlHover : Theme.control
    property color stroke: enabled ? Theme.controlBorder : "transparent"
    property color tint: !enabled ? Theme.disabledText
                       : destructive ? Contrast.readable(Theme.red, fill, Theme.textContrast) : Theme.primary
    property int ringGap: 0

    implicitHeight: isLarge ? Theme.prominentHeight : Theme.controlHeight
    leftPadding: symbol === "" ? rightPadding : rightPadding - 2
    rightPadding: isLarge ? 14 : 12
    font: Theme.font(isLarge ? "bodyMedium" : "body")

    background: Rectangle {
        radius: Theme.controlRadius
        color: button.fill
        border.width: 1
        border.color: button.stroke

        FocusRing {
            visible: button.visualFocus
            gap: button.ringGap
        }
    }

    contentItem: ButtonContent {
        symbol: button.symbol
        text: button.text
        font: button.font
        tint: button.tint
        busy: button.busy
    }
}
