// Stand-ins, and what is found on a screen, have no types that could be checked.
// qmllint disable
import QtQuick
import Tarnwik
import Tarnwik.Controls
import "../screens"

/// Shows the program's screens in one state after the other, over stand-ins.
Rectangle {
    id: stage

    property var standIns
    property Item screen
    property bool atEnd: false

    readonly property string error: "The server could not be reached. Check the address and your network."
    readonly property string longName: "A name of a hundred characters and more that a server may well send ".repeat(3)
    readonly property var names: Object.keys(states)
    readonly property var states: ({
        "signin": () => { standIns.appModel.serverURLString = "https://api.tarnwik.example" },
        "signin-filled": () => fillSignIn(),
        "signin-busy": () => { fillSignIn(); standIns.appModel.isLoading = true },
        "signin-error": () => { fillSignIn(); standIns.appModel.errorMessage = "Invalid email or password." },
        "signin-large": () => { Theme.textScale = 2; fillSignIn(); standIns.appModel.errorMessage = error },
        "connect": () => standIns.fill(),
        "connect-menu": () => { standIns.fill(); find("menuButton").clicked() },
        "connect-picker": () => { standIns.fill(); find("picker").popup.open() },
        "connect-end": () => { standIns.fill(); atEnd = true },
        "connect-connected": () => { standIns.fill(); tunnel("Connected", VPNActionState.CanDisconnect, "Disconnect", "xmark.circle") },
        "connect-connecting": () => {
            standIns.fill()
            tunnel("Connecting", VPNActionState.InTransition, "Connecting", "")
            standIns.actions.refresh.isRunning = true
        },
        "connect-loading": () => { standIns.fill(); standIns.actions.vpn.isEnabledOnScreen = false; standIns.actions.refresh.isRunning = true },
        "connect-empty": () => {
            standIns.appModel.isSignedIn = true
            standIns.appModel.account = standIns.account
            standIns.actions.vpn.isEnabledOnScreen = false
            standIns.appModel.errorMessage = error
        },
        "connect-large": () => { Theme.textScale = 2; standIns.fill(); standIns.appModel.errorMessage = error },
        "connect-long": () => {
            standIns.fill()
            standIns.appModel.nodes.clear()
            for (let index = 0; index < 40; ++index)
                standIns.addNode(longName, longName, longName, index % 3 > 0, longName)
            standIns.choose(0)
            standIns.appModel.errorMessage = longName
        },
        "account": () => account({}),
        "account-active": () => {
            account({})
            standIns.appStoreSubscriptions.hasActiveSubscription = true
            standIns.appStoreSubscriptions.plans.setProperty(0, "isActive", true)
        },
        "account-waiting": () => {
            account({ isServiceEnabled: false, statusLine: "Account suspended · subscription past due", billingPortalURL: undefined })
            standIns.appStoreSubscriptions.hasActiveSubscription = true
            standIns.appStoreSubscriptions.statusMessage = "Purchase is pending approval."
            standIns.appStoreSubscriptions.errorMessage = "The App Store could not be reached."
            standIns.appStoreSubscriptions.plans.setProperty(0, "isPurchasing", true)
            standIns.appStoreSubscriptions.plans.setProperty(1, "isUnavailable", true)
            standIns.appStoreSubscriptions.isRestoringPurchases = true
        },
        "account-large": () => { Theme.textScale = 2; account({}) },
        "account-absent": () => { account({}); standIns.appModel.account = undefined },
        "settings": () => { standIns.fill(); standIns.appModel.selectedSection = "settings" },
        "settings-large": () => { Theme.textScale = 2; standIns.fill(); standIns.appModel.selectedSection = "settings" },
        "focus": () => { standIns.fill(); find("connect").forceActiveFocus(Qt.TabFocusReason) }
    })

    function prepare(state, isDark) {
        screen?.destroy()
        standIns?.destroy()
        Theme.textScale = 1
        Theme.dark = isDark
        standIns = standInsComponent.createObject(stage)
        screen = rootComponent.createObject(stage)
        atEnd = false
        states[state]()
    }
    /// What can be done only once the screen is laid out.
    function settle() {
        if (!atEnd)
            return
        const list = find("nodes")
        list.contentY = list.originY + list.contentHeight - list.height
    }
    function fillSignIn() {
        standIns.appModel.serverURLString = "https://api.tarnwik.example"
        find("email").text = "mira@example.org"
        find("password").text = "correcthorse"
    }
    function tunnel(label, state, title, symbol) {
        standIns.vpnController.statusLabel = label
        standIns.actions.vpn.state = state
        standIns.actions.vpn.title = title
        standIns.actions.vpn.symbol = symbol
    }
    function account(changes) {
        standIns.fill()
        standIns.appModel.account = standIns.accountWith(changes)
        standIns.appModel.selectedSection = "account"
    }
    function find(name, from) {
        const root = from ?? screen
        if (root.objectName === name)
            return root
        for (let index = 0; index < root.children.length; ++index) {
            const found = find(name, root.children[index])
            if (found)
                return found
        }
        return null
    }

    color: Theme.window

    Component {
        id: standInsComponent

        StandIns {}
    }
    Component {
        id: rootComponent

        RootView {
            anchors.fill: stage
            appModel: stage.standIns.appModel
            vpnController: stage.standIns.vpnController
            appStoreSubscriptions: stage.standIns.appStoreSubscriptions
            actions: stage.standIns.actions
            tasks: stage.standIns.tasks
        }
    }
}
