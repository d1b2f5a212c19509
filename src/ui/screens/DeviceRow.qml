import QtQuick
import Tarnwik.Controls

/// One device of the account.
Item {
    id: row

    required property string name
    required property string detail
    required property bool isEnabled

    implicitHeight: lines.implicitHeight + 2 * 6
    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: detail + ", " + (isEnabled ? "enabled" : "disabled")

    Icon {
        id: mark

        objectName: "mark"
        anchors.verticalCenter: parent.verticalCenter
        symbol: row.isEnabled ? "checkmark.circle.fill" : "slash.circle"
        color: row.isEnabled ? Theme.green : Theme.red
    }
    Column {
        id: lines

        anchors {
            left: mark.right
            right: parent.right
            leftMargin: 8
            verticalCenter: parent.verticalCenter
        }
        spacing: 2

        ElidedLabel {
            objectName: "name"
            width: parent.width
            textStyle: "bodySemibold"
            text: row.name
        }
        ElidedLabel {
            objectName: "detail"
            width: parent.width
            textStyle: "caption"
            color: Theme.secondary
            text: row.detail
        }
    }
}
