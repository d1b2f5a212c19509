// Stand-ins, and what is found on a screen, have no types that could be checked.
// qmllint disable
import QtQuick
import QtQuick.Templates as T
import QtTest
import Tarnwik
import Tarnwik.Controls

ScreenTest {
    id: test

    name: "ApplicationMenu"
    screen: Component {
        Item {
            readonly property alias button: menuButton
            readonly property alias field: textField

            TextField {
                id: textField
                y: 300
            }

            ApplicationMenuButton {
                id: menuButton
                actions: test.standIns.actions
            }
        }
    }

    function open() {
        show()
        click(shown.button)
        const menu = shown.button.menu
        tryVerify(() => menu.opened)
        return menu
    }
    function rows(menu) {
        const result = []
        for (let index = 0; index < menu.count; ++index)
            result.push(menu.itemAt(index))
        return result
    }
    function titles(menu) { return rows(menu).map(row => row.text ?? "—").map(text => text === "" ? "—" : text) }
    function row(menu, title) { return rows(menu).find(candidate => candidate.text === title) }

    function test_isNotBuiltBeforeItIsAskedFor() {
        show()
        compare(shown.button.menu, null)
    }
    function test_hasTheItemsInTheirOrder() {
        compare(titles(open()), ["Open Dashboard", "—", "Connect", "—", "Refresh", "Settings", "—", "Sign Out", "—", "Quit"])
    }
    function test_showsTheKeysInThePlatformsNotation() {
        const menu = open()
        compare(row(menu, "Open Dashboard").keys, "Ctrl+0")
        compare(row(menu, "Connect").keys, "Ctrl+Shift+C")
        compare(row(menu, "Refresh").keys, "Ctrl+R")
        compare(row(menu, "Quit").keys, "Ctrl+Q")
    }
    function test_settingsAndSignOutShowNoKeys() {
        const menu = open()
        compare(row(menu, "Settings").keys, "")
        compare(row(menu, "Sign Out").keys, "")
    }
    function test_whatIsDisabledCannotBePressed() {
        standIns.actions.signOut.isEnabled = false
        const menu = open()
        compare(row(menu, "Sign Out").enabled, false)
        mouseClick(row(menu, "Sign Out"))
        compare(standIns.actions.signOut.triggered, 0)
    }
    function test_signedOutDisablesConnectRefreshAndSignOut() {
        standIns.actions.vpn.isEnabled = false
        standIns.actions.refresh.isEnabled = false
        standIns.actions.signOut.isEnabled = false
        const menu = open()
        compare(rows(menu).filter(item => item.text !== undefined && item.text !== "").filter(item => item.enabled).map(item => item.text),
                ["Open Dashboard", "Settings", "Quit"])
    }
    function test_inTransitionShowsTheStatusWithoutKeys() {
        standIns.actions.vpn.title = "Disconnecting"
        standIns.actions.vpn.shortcut = ""
        standIns.actions.vpn.isEnabled = false
        const menu = open()
        compare(row(menu, "Disconnecting").enabled, false)
        compare(row(menu, "Disconnecting").keys, "")
    }
    function test_followsTheActionWhileOpen() {
        const menu = open()
        standIns.actions.vpn.title = "Disconnect"
        standIns.actions.vpn.shortcut = "Ctrl+Shift+D"
        compare(row(menu, "Disconnect").keys, "Ctrl+Shift+D")
    }
    function test_aPressTriggersItsActionOnceAndCloses_data() {
        return ["Open Dashboard", "Connect", "Refresh", "Settings", "Sign Out", "Quit"].map(title => ({ tag: title }))
    }
    function test_aPressTriggersItsActionOnceAndCloses(data) {
        const menu = open()
        const actions = standIns.actions
        mouseClick(row(menu, data.tag))
        tryVerify(() => !menu.visible)
        const all = [actions.openDashboard, actions.vpn, actions.refresh, actions.settings, actions.signOut, actions.quit]
        compare(all.filter(action => action.triggered === 1).map(action => action.title), [data.tag])
        compare(all.filter(action => action.triggered > 1).length, 0)
    }
    function test_escapeClosesIt() {
        const menu = open()
        keyClick(Qt.Key_Escape)
        tryVerify(() => !menu.visible)
    }
    function test_escapeGivesTheFocusBackToTheFieldThatHadIt() {
        show()
        shown.field.forceActiveFocus()
        click(shown.button)
        tryVerify(() => shown.button.menu?.opened ?? false)
        keyClick(Qt.Key_Escape)
        tryVerify(() => shown.field.activeFocus)
    }
    function test_itsButtonGivesTheFocusBackToTheFieldThatHadIt() {
        show()
        shown.field.forceActiveFocus()
        click(shown.button)
        tryVerify(() => shown.button.menu?.opened ?? false)
        click(shown.button)
        tryVerify(() => !shown.button.menu.visible)
        tryVerify(() => shown.field.activeFocus)
    }
    function test_noTooltipCoversIt() {
        show()
        const tooltip = findChild(shown.button, "hoverToolTip")
        mouseMove(shown.button, 5, 5)
        tryVerify(() => tooltip.active)
        click(shown.button)
        tryVerify(() => shown.button.menu?.opened ?? false)
        verify(!tooltip.active)
    }
    function test_itsButtonClosesItAgain() {
        const menu = open()
        mouseClick(shown.button)
        tryVerify(() => !menu.visible)
    }
    function test_theKeyboardAloneWorksIt() {
        show()
        shown.button.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Space)
        tryVerify(() => shown.button.menu?.opened ?? false)
        const menu = shown.button.menu
        compare(menu.itemAt(menu.currentIndex).text, "Open Dashboard")
        keyClick(Qt.Key_Down)
        compare(menu.itemAt(menu.currentIndex).text, "Connect")
        keyClick(Qt.Key_Return)
        tryVerify(() => !menu.visible)
        compare(standIns.actions.vpn.triggered, 1)
        tryVerify(() => shown.button.activeFocus)
    }
    function test_everyItemHasNameAndRole() {
        for (const item of rows(open()).filter(candidate => candidate.text))
            compare(item.Accessible.role, Accessible.MenuItem)
    }
    function test_theButtonHasANameAndARole() {
        show()
        compare(shown.button.Accessible.name, "Menu")
        compare(shown.button.Accessible.role, Accessible.ButtonMenu)
    }
    function test_textTwiceTheSizeFits() {
        Theme.textScale = 2
        const menu = open()
        verify(menu.width <= 420)
        for (const item of rows(menu))
            verify(item.width >= item.implicitWidth, item.text)
    }
}
