import QtQuick
import Tarnwik.Controls

/// One line of a form, as high as its content asks.
Item {
    id: cell

    /// Whether a hairline stands above it.
    property bool isDivided: false
    /// The room above and below the content; controls have some of their own already.
    property int verticalPadding: Theme.cardPadding
    default property alias content: inner.data

    width: parent?.width ?? 0
    implicitHeight: Math.max(40, inner.height + 2 * verticalPadding)

    Hairline {
        visible: cell.isDivided
        x: Theme.cardPadding
        width: parent.width - 2 * Theme.cardPadding
    }
    Item {
        id: inner

        anchors {
            left: parent.left
            right: parent.right
            leftMargin: Theme.cardPadding
            rightMargin: Theme.cardPadding
            verticalCenter: parent.verticalCenter
        }
        height: childrenRect.height
    }
}
