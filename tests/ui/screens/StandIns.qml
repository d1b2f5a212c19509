// Stand-ins, and what is found on a screen, have no types that could be checked.
// qmllint disable
import QtQuick
import Tarnwik

/// Everything that the screens ask for, in plain objects that a test sets as it likes and that count their calls.
QtObject {
    id: standIns

    component Action: QtObject {
        property string title
        property string symbol
        property string shortcut
        property bool isEnabled: true
        property bool isRunning: false
        property int triggered: 0

        function trigger() { ++triggered }
    }

    readonly property var account: ({
        email: "mira@example.org",
        statusLine: "Account active · subscription in trial",
        isServiceEnabled: true,
        usageFraction: 0.248,
        usageCaption: "12.4 GB used of 50 GB",
        planText: "50 GB",
        monthlyPrice: "$14.99",
        billingProvider: "Not connected",
        billingPortalURL: "https://billing.example/portal"
    })
    readonly property var node: ({
        name: "fra-1",
        runtimeLine: "fra-1 · wireguard kernel",
        caption: "Frankfurt · fra-1"
    })

    /// The account of above with some of its values replaced.
    function accountWith(changes) { return Object.assign({}, account, changes) }

    /// Fills the model as a signed-in customer's is.
    function fill() {
        appModel.isSignedIn = true
        appModel.serverURLString = "https://api.tarnwik.example"
        appModel.account = account
        addNode("fra-1", "Northhost · frankfurt · 203.0.113.10:51820", "Online", true, "Frankfurt · fra-1")
        addNode("ams-2", "Meridian · amsterdam · 203.0.113.24:51820", "Online", true, "Amsterdam · ams-2")
        addNode("sto-1", "Fjordnet · stockholm · 198.51.100.7:51820", "Degraded", false, "Stockholm · sto-1")
        addNode("nyc-3", "Meridian · new york · 198.51.100.41:51820", "Online", true, "New York · nyc-3")
        addNode("sin-1", "Kestrel · singapore · 192.0.2.130:51820", "Online", true, "Singapore · sin-1")
        appModel.selectedNodeIndex = 0
        appModel.selectedNode = node
        appModel.devices.append({ name: "Mira’s ThinkPad", detail: "linux · 1 profile", isEnabled: true })
        appModel.devices.append({ name: "Old MacBook", detail: "macos · 2 profiles", isEnabled: false })
    }
    /// Has the model say that this row's node is the one chosen.
    function choose(index) {
        appModel.selectedNodeIndex = index
        const row = appModel.nodes.get(index)
        appModel.selectedNode = { runtimeLine: row.name + " · wireguard kernel", caption: row.caption }
    }
    function addNode(name, detail, statusText, isOnline, caption) {
        appModel.nodes.append({ name: name, detail: detail, statusText: statusText, isOnline: isOnline, caption: caption })
    }

    readonly property QtObject appModel: QtObject {
        property string serverURLString
        property bool isSignedIn: false
        property bool isLoading: false
        property var errorMessage
        property var account
        property ListModel nodes: ListModel {}
        property ListModel devices: ListModel {}
        property int selectedNodeIndex: -1
        property var selectedNode
        property string selectedSection: "connect"
        readonly property var sections: [
            { section: "connect", title: "Connect", symbol: "network" },
            { section: "account", title: "Account", symbol: "person.crop.circle" },
            { section: "settings", title: "Settings", symbol: "gearshape" }
        ]
        property var signIns: []
        property var chosen: []
        property bool obeysChoice: true

        function signIn(email, password) { signIns = signIns.concat([[email, password]]) }
        function selectNode(index) {
            chosen = chosen.concat([index])
            if (obeysChoice)
                standIns.choose(index)
        }
    }
    readonly property QtObject vpnController: QtObject {
        property string statusLabel: "Disconnected"
    }
    readonly property QtObject appStoreSubscriptions: QtObject {
        property ListModel plans: ListModel {
            ListElement { title: "Monthly"; priceLine: "$14.99/month"; isActive: false; isPurchasing: false; isUnavailable: false }
            ListElement { title: "Yearly"; priceLine: "$119.00/year · $9.99/month"; isActive: false; isPurchasing: false; isUnavailable: false }
        }
        property bool hasActiveSubscription: false
        property bool isLoadingProducts: false
        property bool isRestoringPurchases: false
        property var statusMessage
        property var errorMessage
        property var purchased: []
        property int restored: 0

        function purchase(planIndex) { purchased = purchased.concat([planIndex]) }
        function restorePurchases() { ++restored }
    }
    readonly property QtObject actions: QtObject {
        readonly property QtObject openDashboard: Action { title: "Open Dashboard"; shortcut: "Ctrl+0" }
        readonly property QtObject vpn: Action {
            property int state: VPNActionState.CanConnect
            property bool isEnabledOnScreen: true

            title: "Connect"; symbol: "power"; shortcut: "Ctrl+Shift+C"
        }
        readonly property QtObject refresh: Action { title: "Refresh"; shortcut: "Ctrl+R" }
        readonly property QtObject settings: Action { title: "Settings" }
        readonly property QtObject signOut: Action { title: "Sign Out" }
        readonly property QtObject quit: Action { title: "Quit"; shortcut: "Ctrl+Q" }
        readonly property QtObject settingsRefresh: Action { title: "Refresh" }
        readonly property QtObject settingsSignOut: Action { title: "Sign Out"; symbol: "rectangle.portrait.and.arrow.right" }
        readonly property QtObject emailSupport: Action { title: "Email support" }
        readonly property QtObject manageBilling: Action { title: "Manage billing"; symbol: "creditcard" }
    }
    readonly property QtObject tasks: QtObject {
        property int lastHandle: 0
        property var begun: []
        property var running: ({})

        function begin(kind) {
            begun = begun.concat([kind])
            running[++lastHandle] = kind
            return lastHandle
        }
        function end(handle) { delete running[handle] }
        function runningKinds() { return Object.values(running).sort() }
    }
}
