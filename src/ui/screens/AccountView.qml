// Components that a loader or a list makes cannot be bound in Qt 6.4.
// qmllint disable unqualified
import QtQuick
import Tarnwik
import Tarnwik.Controls

/// Who is signed in, what the account may use and costs, and the plans of the App Store.
FocusScope {
    id: screen

    required property var appModel
    required property var appStoreSubscriptions
    required property var actions
    required property var tasks

    readonly property bool hasAccount: appModel.account !== undefined
    readonly property bool isScrolled: details.item?.isScrolled ?? false

    Keys.forwardTo: [details.item]

    AppearanceTask {
        tasks: screen.tasks
        kind: AppearanceTasks.AccountScreen
    }
    EmptyState {
        objectName: "noAccount"
        visible: !screen.hasAccount
        width: parent.width
        y: (parent.height - height) * 0.44
        symbol: "person.crop.circle.badge.exclamationmark"
        title: "No account"
    }
    Loader {
        id: details

        anchors.fill: parent
        active: screen.hasAccount
        sourceComponent: ScreenScroll {
            AccountHeader {
                width: parent.width
                account: screen.appModel.account
            }
            UsageMeter {
                objectName: "meter"
                width: parent.width
                account: screen.appModel.account
            }
            AccountBilling {
                width: parent.width
                account: screen.appModel.account
                manageBilling: screen.actions.manageBilling
            }
            AppStoreSubscriptionSection {
                width: parent.width
                account: screen.appModel.account
                appStoreSubscriptions: screen.appStoreSubscriptions
            }
        }
    }
}
