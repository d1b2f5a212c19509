// Stand-ins, and what is found on a screen, have no types that could be checked.
// qmllint disable
import QtQuick
import QtQuick.Window
import QtTest
import Tarnwik
import Tarnwik.Controls

TestCase {
    id: test

    property StandIns standIns
    property Window window

    name: "Windows"
    when: windowShown

    Component {
        id: standInsComponent
        StandIns {}
    }
    Component {
        id: mainWindow
        MainWindow {
            appModel: test.standIns.appModel
            vpnController: test.standIns.vpnController
            appStoreSubscriptions: test.standIns.appStoreSubscriptions
            actions: test.standIns.actions
            tasks: test.standIns.tasks
        }
    }
    Component {
        id: settingsWindow
        SettingsWindow {
            appModel: test.standIns.appModel
            actions: test.standIns.actions
            tasks: test.standIns.tasks
        }
    }

    function init() { standIns = createTemporaryObject(standInsComponent, test) }
    function cleanup() {
        window?.destroy()
        window = null
        wait(0)
    }
    function open(component) {
        window = component.createObject(null)
        window.show()
        window.requestActivate()
        tryVerify(() => window.active)
    }
    function press(sequence) { keySequence(sequence) }

    function test_titles() {
        open(mainWindow)
        compare(window.title, "Tarnwik")
        cleanup()
        open(settingsWindow)
        compare(window.title, "Settings")
    }
    function test_mainWindowIsNeverSmallerThan420By540() {
        open(mainWindow)
        compare(window.minimumWidth, 420)
        compare(window.minimumHeight, 540)
    }
    function test_environmentsTaskRunsWhileAWindowIsOpen_data() {
        return [{ tag: "main", component: mainWindow }, { tag: "settings", component: settingsWindow }]
    }
    function test_environmentsTaskRunsWhileAWindowIsOpen(data) {
        window = data.component.createObject(null)
        compare(standIns.tasks.begun, [])
        window.show()
        tryVerify(() => standIns.tasks.begun.length === 1)
        compare(standIns.tasks.begun, [AppearanceTasks.Environment])
        window.close()
        tryVerify(() => standIns.tasks.runningKinds().length === 0)
        window.show()
        tryVerify(() => standIns.tasks.begun.length === 2)
        compare(standIns.tasks.begun, [AppearanceTasks.Environment, AppearanceTasks.Environment])
    }
    function test_closedWindowKeepsNoScreen() {
        standIns.fill()
        open(mainWindow)
        verify(standIns.tasks.runningKinds().includes(AppearanceTasks.Dashboard))
        window.close()
        tryVerify(() => standIns.tasks.runningKinds().length === 0)
    }
    function test_keysOfTheActions_data() {
        return [
            { tag: "Ctrl+0", action: "openDashboard" },
            { tag: "Ctrl+Shift+C", action: "vpn" },
            { tag: "Ctrl+R", action: "refresh" },
            { tag: "Ctrl+Q", action: "quit" },
            { tag: "Ctrl+,", action: "settings" }
        ]
    }
    function test_keysOfTheActions(data) {
        open(mainWindow)
        press(data.tag)
        compare(standIns.actions[data.action].triggered, 1)
    }
    function test_keysOfDisabledActionsDoNothing() {
        standIns.actions.refresh.isEnabled = false
        open(mainWindow)
        press("Ctrl+R")
        compare(standIns.actions.refresh.triggered, 0)
    }
    function test_keysFollowTheVPNAction() {
        standIns.actions.vpn.shortcut = "Ctrl+Shift+D"
        open(mainWindow)
        press("Ctrl+Shift+C")
        compare(standIns.actions.vpn.triggered, 0)
        press("Ctrl+Shift+D")
        compare(standIns.actions.vpn.triggered, 1)
    }
    function test_controlWClosesTheWindow_data() {
        return [{ tag: "main", component: mainWindow }, { tag: "settings", component: settingsWindow }]
    }
    function test_controlWClosesTheWindow(data) {
        open(data.component)
        press("Ctrl+W")
        tryVerify(() => !window.visible)
    }
    function test_controlQQuitsFromTheSettingsWindow() {
        open(settingsWindow)
        press("Ctrl+Q")
        compare(standIns.actions.quit.triggered, 1)
    }
    function test_settingsWindowWorksSignedOut() {
        standIns.appModel.serverURLString = "https://typed.example"
        open(settingsWindow)
        const view = window.contentItem.children[1].item.children[0].item
        verify(view instanceof SettingsView)
    }
}
