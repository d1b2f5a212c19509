import QtQuick
import Tarnwik.Controls

/// Plan, price and who bills it, and the way to the billing portal where there is one.
Column {
    id: billing

    required property var account
    /// Opens the portal.
    required property var manageBilling

    readonly property bool hasPortal: account?.billingPortalURL !== undefined

    spacing: Theme.blockGap

    LabelledRow {
        objectName: "plan"
        width: parent.width
        label: "Plan"
        value: billing.account?.planText ?? ""
    }
    LabelledRow {
        objectName: "monthlyPrice"
        width: parent.width
        label: "Monthly price"
        value: billing.account?.monthlyPrice ?? ""
    }
    LabelledRow {
        objectName: "billingProvider"
        width: parent.width
        isDivided: false
        label: "Billing provider"
        value: billing.account?.billingProvider ?? ""
    }
    ProminentButton {
        objectName: "manageBilling"
        visible: billing.hasPortal
        text: billing.manageBilling.title
        symbol: billing.manageBilling.symbol
        onClicked: billing.manageBilling.trigger()
    }
    Label {
        objectName: "noPortal"
        visible: !billing.hasPortal
        width: parent.width
        textStyle: "footnote"
        color: Theme.secondary
        text: "Billing portal is not enabled for this build."
        wrapMode: Text.Wrap
    }
}
