import QtQuick
import QtQuick.Templates as T
import Tarnwik.Controls

/// A few words about what the pointer rests on, below it or beside it.
T.ToolTip {
    id: tip

    property bool isBeside: false

    implicitWidth: Math.min(Math.ceil(implicitContentWidth) + leftPadding + rightPadding, Theme.tooltipMaximumWidth)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    x: parent && isBeside ? parent.width + 8 : 0
    y: !parent ? 0 : isBeside ? (parent.height - height) / 2 : parent.height + 4
    margins: 6
    horizontalPadding: 8
    verticalPadding: 5
    delay: 600
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent | T.Popup.CloseOnReleaseOutsideParent

    background: Rectangle {
        radius: Theme.controlRadius
        color: Theme.card
        border.color: Theme.controlBorder
    }

    contentItem: Label {
        textStyle: "caption"
        text: tip.text
        wrapMode: Text.Wrap
        // A text of kilobytes would cover the screen.
        maximumLineCount: 12
        elide: Text.ElideRight
        Accessible.role: Accessible.ToolTip
    }
}
