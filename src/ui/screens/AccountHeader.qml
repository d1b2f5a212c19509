import QtQuick
import Tarnwik.Controls

/// Whose account it is, and how it stands.
Column {
    id: header

    required property var account

    spacing: 8

    ElidedLabel {
        objectName: "email"
        width: parent.width
        textStyle: "title"
        text: header.account?.email ?? ""
        Accessible.role: Accessible.Heading
    }
    Label {
        objectName: "statusLine"
        width: parent.width
        color: header.account?.isServiceEnabled ? Theme.secondary : Theme.red
        text: header.account?.statusLine ?? ""
        wrapMode: Text.Wrap
    }
}
