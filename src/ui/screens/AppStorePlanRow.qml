import QtQuick
import Tarnwik.Controls

/// One plan, with its price and the button that buys it. The button goes below the texts where they leave it no room.
Card {
    id: row

    required property string title
    required property string priceLine
    required property bool isActive
    required property bool isPurchasing
    required property bool isUnavailable

    signal subscribe

    readonly property int gap: 12
    readonly property real room: width - 2 * Theme.cardPadding
    readonly property bool isStacked: Math.max(titleLabel.implicitWidth, price.implicitWidth) + gap + side.width > room

    implicitHeight: 2 * Theme.cardPadding + (isStacked ? lines.height + gap + side.height
                                                        : Math.max(lines.height, side.height))
    Accessible.role: Accessible.ListItem
    Accessible.name: title
    Accessible.description: priceLine

    Column {
        id: lines

        x: Theme.cardPadding
        y: row.isStacked ? Theme.cardPadding : (row.height - height) / 2
        width: row.isStacked ? row.room : row.room - row.gap - side.width
        spacing: 4

        Label {
            id: titleLabel

            objectName: "title"
            width: parent.width
            textStyle: "bodySemibold"
            text: row.title
            wrapMode: Text.Wrap
        }
        Label {
            id: price

            objectName: "priceLine"
            width: parent.width
            color: Theme.secondary
            text: row.priceLine
            wrapMode: Text.Wrap
        }
    }
    Item {
        id: side

        x: row.isStacked ? Theme.cardPadding : row.width - Theme.cardPadding - width
        y: row.isStacked ? lines.y + lines.height + row.gap : (row.height - height) / 2
        width: row.isActive ? active.implicitWidth : button.implicitWidth
        height: Theme.prominentHeight

        StatusLabel {
            id: active

            objectName: "active"
            visible: row.isActive
            anchors.verticalCenter: parent.verticalCenter
            textStyle: "caption"
            symbol: "checkmark.seal.fill"
            text: "Active"
            tint: Theme.green
        }
        ProminentButton {
            id: button

            objectName: "subscribe"
            visible: !row.isActive
            text: row.isUnavailable ? "Unavailable" : "Subscribe"
            symbol: "creditcard"
            busy: row.isPurchasing
            enabled: !row.isPurchasing && !row.isUnavailable
            onClicked: row.subscribe()
        }
    }
}
