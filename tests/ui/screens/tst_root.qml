// Stand-ins, and what is found on a screen, have no types that could be checked.
// qmllint disable
import QtQuick
import QtTest
import Tarnwik
import Tarnwik.Controls

ScreenTest {
    id: test

    name: "RootAndDashboard"
    screen: Component {
        RootView {
            appModel: test.standIns.appModel
            vpnController: test.standIns.vpnController
            appStoreSubscriptions: test.standIns.appStoreSubscriptions
            actions: test.standIns.actions
            tasks: test.standIns.tasks
        }
    }

    function showSignedIn(size) {
        standIns.fill()
        return show(size)
    }
    function rows() { return all(item => item instanceof SidebarRow) }
    function row(title) { return rows().find(candidate => candidate.text === title) }
    function selected() { return rows().filter(candidate => candidate.isSelected).map(candidate => candidate.text) }

    function test_signedOutShowsTheSignInScreen() {
        show()
        verify(find("signIn"))
        compare(rows().length, 0)
        compare(standIns.tasks.begun, [])
    }
    function test_signedInShowsTheDashboard() {
        showSignedIn()
        verify(!find("signIn"))
        compare(rows().length, 3)
    }
    function test_signingOutReplacesTheDashboardAtOnce() {
        showSignedIn()
        standIns.appModel.isSignedIn = false
        verify(find("signIn"))
        compare(rows().length, 0)
    }
    function test_signingOutEndsTheDashboardsTasks() {
        showSignedIn()
        compare(standIns.tasks.runningKinds(), [AppearanceTasks.Dashboard, AppearanceTasks.ConnectScreen])
        standIns.appModel.isSignedIn = false
        tryVerify(() => standIns.tasks.runningKinds().length === 0)
    }
    function test_everySignInBeginsTheDashboardsTaskAnew() {
        showSignedIn()
        standIns.appModel.isSignedIn = false
        wait(0)
        standIns.appModel.isSignedIn = true
        compare(standIns.tasks.begun.filter(kind => kind === AppearanceTasks.Dashboard).length, 2)
    }
    function test_choosingASectionLeavesTheDashboardsTaskAlone() {
        showSignedIn()
        standIns.appModel.selectedSection = "settings"
        tryCompare(standIns.tasks, "lastHandle", 2)
        tryVerify(() => standIns.tasks.runningKinds().length === 1)
        compare(standIns.tasks.runningKinds(), [AppearanceTasks.Dashboard])
    }
    function test_leavingASectionEndsItsTask() {
        showSignedIn()
        standIns.appModel.selectedSection = "account"
        tryVerify(() => standIns.tasks.runningKinds().length === 2)
        compare(standIns.tasks.runningKinds(), [AppearanceTasks.Dashboard, AppearanceTasks.AccountScreen])
    }
    function test_sidebarHasTheSectionsInTheirOrder() {
        showSignedIn()
        compare(rows().map(item => item.text), ["Connect", "Account", "Settings"])
        compare(rows().map(item => item.symbol), ["network", "person.crop.circle", "gearshape"])
        compare(find("sidebarTitle").text, "Tarnwik")
    }
    function test_highlightedRowFollowsTheModel() {
        showSignedIn()
        compare(selected(), ["Connect"])
        standIns.appModel.selectedSection = "account"
        compare(selected(), ["Account"])
    }
    function test_pressingARowChoosesItsSection() {
        showSignedIn()
        click(row("Settings"))
        compare(standIns.appModel.selectedSection, "settings")
        compare(selected(), ["Settings"])
        compare(find("detailTitle").text, "Settings")
    }
    function test_detailShowsTheSectionsScreenUnderItsTitle_data() {
        return [
            { tag: "connect", title: "Connect", shows: "nodes" },
            { tag: "account", title: "Account", shows: "email" },
            { tag: "settings", title: "Settings", shows: "serverURL" }
        ]
    }
    function test_detailShowsTheSectionsScreenUnderItsTitle(data) {
        standIns.appModel.selectedSection = data.tag
        showSignedIn()
        compare(find("detailTitle").text, data.title)
        verify(find(data.shows))
    }
    function test_unknownSectionShowsNothingSelected() {
        standIns.appModel.selectedSection = "elsewhere"
        showSignedIn()
        compare(selected(), [])
        compare(find("detailTitle").text, "")
    }
    function test_selectedSectionSurvivesARebuiltDashboard() {
        standIns.appModel.selectedSection = "account"
        showSignedIn()
        standIns.appModel.isSignedIn = false
        standIns.appModel.isSignedIn = true
        compare(selected(), ["Account"])
    }
    function test_controlAndADigitChooseTheSection() {
        showSignedIn()
        keyClick(Qt.Key_2, Qt.ControlModifier)
        compare(standIns.appModel.selectedSection, "account")
        keyClick(Qt.Key_3, Qt.ControlModifier)
        compare(standIns.appModel.selectedSection, "settings")
        keyClick(Qt.Key_1, Qt.ControlModifier)
        compare(standIns.appModel.selectedSection, "connect")
    }
    function test_arrowsMoveThroughTheSections() {
        showSignedIn()
        row("Connect").forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Down)
        compare(standIns.appModel.selectedSection, "account")
        keyClick(Qt.Key_Down)
        keyClick(Qt.Key_Down)
        compare(standIns.appModel.selectedSection, "settings")
        keyClick(Qt.Key_Up)
        compare(standIns.appModel.selectedSection, "account")
        verify(row("Account").activeFocus)
    }
    function test_sidebarIs200WideAndARailBelow600_data() {
        return [
            { tag: "960", width: 960, sidebar: 200, isFolded: false },
            { tag: "600", width: 600, sidebar: 200, isFolded: false },
            { tag: "599", width: 599, sidebar: 52, isFolded: true },
            { tag: "420", width: 420, sidebar: 52, isFolded: true }
        ]
    }
    function test_sidebarIs200WideAndARailBelow600(data) {
        showSignedIn({ width: data.width, height: 540 })
        const sidebar = findWhere(item => item instanceof Sidebar)
        compare(sidebar.width, data.sidebar)
        compare(rows().every(item => item.isFolded === data.isFolded), true)
        compare(find("sidebarTitle") === null, data.isFolded)
        verify(find("menuButton"))
        compare(rows().map(item => item.Accessible.name), ["Connect", "Account", "Settings"])
    }
    function test_refreshIsOnTheConnectScreenAlone() {
        showSignedIn()
        verify(find("refresh"))
        compare(find("refresh").symbol, "arrow.clockwise")
        compare(find("refresh").Accessible.name, "Refresh")
        standIns.appModel.selectedSection = "account"
        compare(find("refresh"), null)
        standIns.appModel.selectedSection = "settings"
        compare(find("refresh"), null)
    }
    function test_refreshIsBusyUntilItIsDone() {
        showSignedIn()
        verify(!find("refresh").busy)
        click(find("refresh"))
        compare(standIns.actions.refresh.triggered, 1)
        standIns.actions.refresh.isRunning = true
        verify(find("refresh").busy)
        click(find("refresh"))
        compare(standIns.actions.refresh.triggered, 1)
        standIns.actions.refresh.isRunning = false
        verify(!find("refresh").busy)
        click(find("refresh"))
        compare(standIns.actions.refresh.triggered, 2)
    }
    function test_refreshDoesNotAskTheMenusRule() {
        standIns.actions.refresh.isEnabled = false
        standIns.appModel.isLoading = true
        showSignedIn()
        verify(find("refresh").enabled)
    }
    function test_headerLineAppearsOnceScrolled() {
        showSignedIn({ width: 420, height: 540 })
        compare(find("headerLine"), null)
        find("nodes").contentY += 30
        verify(find("headerLine"))
        find("nodes").contentY -= 30
        compare(find("headerLine"), null)
    }
    function test_tabGoesInReadingOrder() {
        showSignedIn()
        const names = focusChain().map(item => item.objectName || item.text)
        compare(names.slice(0, 7), ["menuButton", "Connect", "Account", "Settings", "refresh", "picker", "connect"])
    }
    function test_settingsHereIsTheScreenOfTheWindow() {
        standIns.appModel.selectedSection = "settings"
        showSignedIn()
        verify(findWhere(item => item instanceof SettingsView))
    }
}
