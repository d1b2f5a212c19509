import QtQuick
import Tarnwik.Controls

/// One section in the sidebar; folded into the rail it shows its symbol, and its title in a tooltip.
Pressable {
    id: row

    required property string symbol
    property bool isSelected: false
    property bool isFolded: false

    implicitHeight: Theme.sidebarRowHeight
    leftPadding: 8
    rightPadding: 8
    // The ring lies over the neighbours.
    z: visualFocus ? 1 : 0

    readonly property int accessibleRole: Accessible.ListItem
    Accessible.role: accessibleRole
    Accessible.selectable: true
    Accessible.selected: isSelected

    background: Rectangle {
        radius: Theme.controlRadius
        color: row.isSelected ? Theme.accentFill
             : row.down ? Theme.rowPressed
             : row.hovered ? Theme.rowHover : "transparent"

        FocusRing {
            visible: row.visualFocus
            gap: row.isSelected ? Theme.ringGap : 0
        }
    }

    contentItem: SidebarRowContent {
        symbol: row.symbol
        text: row.text
        font: row.font
        isSelected: row.isSelected
        isFolded: row.isFolded
    }

    HoverToolTip {
        owner: row
        isWanted: row.isFolded && row.hovered
        isBeside: true
        text: row.text
    }
}
