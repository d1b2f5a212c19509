import QtQuick
import Tarnwik.Controls

/// One exit node, to be read only.
Card {
    id: row

    required property string name
    required property string detail
    required property string statusText
    required property bool isOnline

    implicitHeight: lines.implicitHeight + 2 * Theme.cardPadding
    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: detail + ", " + statusText

    Column {
        id: lines

        anchors {
            left: parent.left
            right: status.left
            leftMargin: Theme.cardPadding
            rightMargin: 12
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
    ElidedLabel {
        id: status

        objectName: "status"
        anchors {
            right: parent.right
            rightMargin: Theme.cardPadding
            verticalCenter: parent.verticalCenter
        }
        width: Math.min(implicitWidth, row.width * 0.4)
        textStyle: "captionSemibold"
        color: row.isOnline ? Theme.green : Theme.orange
        text: row.statusText
    }
}
