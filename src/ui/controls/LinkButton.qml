import QtQuick
import Tarnwik.Controls

/// A text that opens something elsewhere, underlined under the pointer.
Pressable {
    id: link

    /// The SF Symbols name of its icon, or "" for none.
    property string symbol: ""

    readonly property int accessibleRole: Accessible.Link

    implicitHeight: Theme.controlHeight

    Accessible.role: accessibleRole

    background: Item {
        FocusRing {
            visible: link.visualFocus
            innerRadius: 3
            anchors.leftMargin: -Theme.ringWidth - 2
            anchors.rightMargin: -Theme.ringWidth - 2
        }
    }

    contentItem: ButtonContent {
        symbol: link.symbol
        text: link.text
        font: link.font
        isUnderlined: link.enabled && link.hovered
        tint: !link.enabled ? Theme.disabledText : link.down ? Contrast.readable(Theme.link, Theme.card, 6) : Theme.link
    }
}
