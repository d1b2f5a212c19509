pragma ComponentBehavior: Bound
import QtQuick
import Tarnwik.Controls

/// The plans of the App Store: what is bought, what can be bought, and how the last purchase went.
Column {
    id: section

    required property var account
    required property var appStoreSubscriptions

    spacing: 12

    Hairline {
        width: parent.width
    }
    Item {
        width: parent.width
        height: Math.max(heading.height, status.height)

        SectionHeading {
            id: heading

            objectName: "appStoreHeading"
            anchors.verticalCenter: parent.verticalCenter
            text: "App Store"
        }
        StatusLabel {
            id: status

            readonly property bool isActive: section.appStoreSubscriptions.hasActiveSubscription

            objectName: "appStoreStatus"
            anchors {
                right: parent.right
                verticalCenter: parent.verticalCenter
            }
            symbol: isActive ? "checkmark.circle.fill" : "circle"
            text: isActive ? "Active" : "Not active"
            tint: isActive ? Theme.green : Theme.secondary
        }
    }
    Label {
        objectName: "waitingForSync"
        visible: section.appStoreSubscriptions.hasActiveSubscription && section.account?.isServiceEnabled === false
        width: parent.width
        textStyle: "footnote"
        color: Theme.secondary
        text: "App Store subscription found. Account access is waiting for server sync."
        wrapMode: Text.Wrap
    }
    Repeater {
        model: section.appStoreSubscriptions.plans

        AppStorePlanRow {
            required property int index

            width: section.width
            onSubscribe: section.appStoreSubscriptions.purchase(index)
        }
    }
    Label {
        objectName: "storeStatus"
        visible: text !== ""
        width: parent.width
        textStyle: "footnote"
        color: Theme.secondary
        text: section.appStoreSubscriptions.statusMessage ?? ""
        wrapMode: Text.Wrap
    }
    ErrorText {
        objectName: "storeError"
        width: parent.width
        textStyle: "footnote"
        text: section.appStoreSubscriptions.errorMessage ?? ""
    }
    Button {
        objectName: "restore"
        text: "Restore"
        symbol: "arrow.clockwise"
        busy: section.appStoreSubscriptions.isRestoringPurchases
        enabled: !section.appStoreSubscriptions.isRestoringPurchases
        onClicked: section.appStoreSubscriptions.restorePurchases()
    }
}
