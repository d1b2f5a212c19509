// Stand-ins, and what is found on a screen, have no types that could be checked.
// qmllint disable
import QtQuick
import QtTest
import Tarnwik
import Tarnwik.Controls

ScreenTest {
    id: test

    name: "Connect"
    screen: Component {
        ConnectView {
            appModel: test.standIns.appModel
            vpnController: test.standIns.vpnController
            actions: test.standIns.actions
            tasks: test.standIns.tasks
        }
    }

    function showFull(size) {
        standIns.fill()
        return show(size)
    }
    function inState(state, title, symbol) {
        standIns.actions.vpn.state = state
        standIns.actions.vpn.title = title
        standIns.actions.vpn.symbol = symbol
    }

    function test_asksForTheStatusWhileItIsShown() {
        showFull()
        compare(standIns.tasks.runningKinds(), [AppearanceTasks.ConnectScreen])
        shown.destroy()
        tryVerify(() => standIns.tasks.runningKinds().length === 0)
        shown = null
    }
    function test_blocksStandInTheirOrder() {
        standIns.appModel.errorMessage = "Something failed."
        showFull()
        const order = ["status", "runtimeLine", "meter", "exitNode", "connect", "error", "nodesHeading", "devicesHeading"].map(name => find(name))
        for (let index = 1; index < order.length; ++index)
            verify(placeOf(order[index]).y >= placeOf(order[index - 1]).y + order[index - 1].height, order[index].objectName)
    }
    function test_statusIsShownInLargeType() {
        standIns.vpnController.statusLabel = "Connected"
        showFull()
        compare(find("status").text, "Connected")
        compare(find("status").textStyle, "largeTitle")
        standIns.vpnController.statusLabel = "Disconnecting"
        compare(find("status").text, "Disconnecting")
    }
    function test_selectedNodeIsShownWithItsRuntime() {
        showFull()
        compare(find("runtimeLine").text, "fra-1 · wireguard kernel")
        compare(find("runtimeLine").color, Theme.secondary)
    }
    function test_noSelectedNodeIsSaid() {
        show()
        compare(find("runtimeLine").text, "No node selected")
    }
    function test_nodesButNoSelectedNode() {
        standIns.fill()
        standIns.appModel.selectedNode = undefined
        standIns.appModel.selectedNodeIndex = -1
        standIns.actions.vpn.isEnabledOnScreen = false
        show()
        compare(find("runtimeLine").text, "No node selected")
        compare(find("connect").enabled, false)
        compare(find("picker").displayText, "")
        compare(find("picker").currentIndex, -1)
        verify(find("picker").enabled)
    }
    function test_meterIsThereOnlyWithAnAccount() {
        show()
        compare(find("meter"), null)
        standIns.appModel.account = standIns.account
        verify(find("meter"))
        compare(find("meter").caption, "12.4 GB used of 50 GB")
        standIns.appModel.account = undefined
        compare(find("meter"), null)
    }
    function test_meterIsFilledByItsFraction_data() {
        return [
            { tag: "quota of 0", fraction: 0, filled: 0 },
            { tag: "half", fraction: 0.5, filled: 0.5 },
            { tag: "beyond the quota", fraction: 1, filled: 1 },
            { tag: "negative", fraction: -0.25, filled: 0 }
        ]
    }
    function test_meterIsFilledByItsFraction(data) {
        standIns.appModel.account = standIns.accountWith({ usageFraction: data.fraction })
        show()
        const fill = find("meterFill")
        fuzzyCompare(fill ? fill.width : 0, find("meter").width * data.filled, 0.5)
    }

    function test_pickerIsThereOnlyWithNodes() {
        show()
        compare(find("exitNode"), null)
        standIns.addNode("fra-1", "", "Online", true, "Frankfurt · fra-1")
        verify(find("exitNode"))
        standIns.appModel.nodes.clear()
        compare(find("exitNode"), null)
    }
    function test_pickerHasItsTitleAndAnEntryForEachNodeInOrder() {
        showFull()
        verify(findText("Exit node"))
        compare(find("picker").Accessible.name, "Exit node")
        const captions = []
        for (let index = 0; index < find("picker").count; ++index)
            captions.push(find("picker").textAt(index))
        compare(captions, ["Frankfurt · fra-1", "Amsterdam · ams-2", "Stockholm · sto-1", "New York · nyc-3", "Singapore · sin-1"])
    }
    function test_pickerShowsTheModelsChoice() {
        showFull()
        compare(find("picker").displayText, "Frankfurt · fra-1")
        standIns.choose(3)
        compare(find("picker").displayText, "New York · nyc-3")
        compare(standIns.appModel.chosen, [])
    }
    function test_pickerShowsNothingForAStaleChoice() {
        standIns.fill()
        standIns.appModel.selectedNodeIndex = -1
        show()
        compare(find("picker").displayText, "")
        compare(find("runtimeLine").text, "fra-1 · wireguard kernel")
    }
    function test_pickerWritesOnlyWhatAPersonChooses() {
        showFull()
        standIns.appModel.nodes.clear()
        standIns.addNode("ams-2", "", "Online", true, "Amsterdam · ams-2")
        standIns.choose(0)
        compare(standIns.appModel.chosen, [])
        compare(find("picker").currentIndex, 0)
        compare(find("picker").displayText, "Amsterdam · ams-2")
    }
    function test_nodesThatArriveLaterSelectNothingByAccident() {
        show()
        standIns.addNode("fra-1", "", "Online", true, "Frankfurt · fra-1")
        compare(find("picker").currentIndex, -1)
        compare(find("picker").displayText, "")
    }
    function test_pickerFollowsARenamedNode() {
        showFull()
        standIns.appModel.nodes.setProperty(0, "caption", "Frankfurt · fra-9")
        standIns.choose(0)
        compare(find("picker").displayText, "Frankfurt · fra-9")
    }
    function test_choosingInThePickerSelectsTheNode() {
        showFull()
        const picker = find("picker")
        click(picker)
        tryVerify(() => picker.popup.opened)
        keyClick(Qt.Key_Down)
        keyClick(Qt.Key_Down)
        keyClick(Qt.Key_Return)
        compare(standIns.appModel.chosen, [2])
        compare(picker.displayText, "Stockholm · sto-1")
        standIns.choose(1)
        compare(picker.displayText, "Amsterdam · ams-2")
        compare(picker.currentIndex, 1)
    }
    function test_aChoiceThatTheModelDoesNotTakeIsNotShown() {
        showFull()
        standIns.appModel.obeysChoice = false
        find("picker").forceActiveFocus()
        keyClick(Qt.Key_Down)
        compare(standIns.appModel.chosen, [1])
        compare(find("picker").displayText, "Frankfurt · fra-1")
        compare(find("picker").currentIndex, 0)
    }
    function test_escapeClosesThePickerAndChoosesNothing() {
        showFull()
        const picker = find("picker")
        click(picker)
        tryVerify(() => picker.popup.opened)
        keyClick(Qt.Key_Down)
        keyClick(Qt.Key_Escape)
        tryVerify(() => !picker.popup.visible)
        compare(standIns.appModel.chosen, [])
    }
    function test_pickerIsNeverDisabled_data() {
        return [
            { tag: "connected", state: VPNActionState.CanDisconnect, isLoading: false },
            { tag: "in transition", state: VPNActionState.InTransition, isLoading: false },
            { tag: "loading", state: VPNActionState.CanConnect, isLoading: true }
        ]
    }
    function test_pickerIsNeverDisabled(data) {
        standIns.fill()
        inState(data.state, "x", "")
        standIns.appModel.isLoading = data.isLoading
        show()
        verify(find("picker").enabled)
    }

    function test_canConnectShowsConnect() {
        showFull()
        const button = find("connect")
        verify(button instanceof ProminentButton)
        compare(button.text, "Connect")
        compare(button.symbol, "power")
        compare(find("disconnect"), null)
        compare(find("transition"), null)
        click(button)
        compare(standIns.actions.vpn.triggered, 1)
    }
    function test_canDisconnectShowsAnOrdinaryButton() {
        standIns.fill()
        inState(VPNActionState.CanDisconnect, "Disconnect", "xmark.circle")
        show()
        const button = find("disconnect")
        verify(!(button instanceof ProminentButton))
        compare(button.text, "Disconnect")
        compare(button.symbol, "xmark.circle")
        compare(find("connect"), null)
        compare(find("transition"), null)
        click(button)
        compare(standIns.actions.vpn.triggered, 1)
    }
    function test_inTransitionShowsTheStatusBesideASpinner() {
        standIns.fill()
        inState(VPNActionState.InTransition, "Connecting", "")
        show()
        compare(find("connect"), null)
        compare(find("disconnect"), null)
        compare(find("transitionTitle").text, "Connecting")
        compare(find("transitionTitle").color, Theme.secondary)
        verify(findWhere(item => item instanceof Spinner, find("transition")))
        mouseClick(find("transition"))
        compare(standIns.actions.vpn.triggered, 0)
    }
    function test_actionControlAsksTheScreensRuleNotTheMenus() {
        standIns.fill()
        standIns.actions.vpn.isEnabled = false
        show()
        verify(find("connect").enabled)
        standIns.actions.vpn.isEnabledOnScreen = false
        verify(!find("connect").enabled)
        inState(VPNActionState.CanDisconnect, "Disconnect", "xmark.circle")
        verify(!find("disconnect").enabled)
        standIns.actions.vpn.isEnabledOnScreen = true
        verify(find("disconnect").enabled)
    }
    function test_formsOfTheActionControlHaveOneHeightAndPlace() {
        showFull()
        const before = placeOf(find("nodesHeading")).y
        compare(find("connect").height, 32)
        inState(VPNActionState.InTransition, "Connecting", "")
        compare(find("transition").height, 32)
        compare(placeOf(find("nodesHeading")).y, before)
        inState(VPNActionState.CanDisconnect, "Disconnect", "xmark.circle")
        compare(find("disconnect").height, 32)
        compare(placeOf(find("nodesHeading")).y, before)
    }
    function test_keyboardFocusStaysOnTheActionControl() {
        showFull()
        find("connect").forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Return)
        compare(standIns.actions.vpn.triggered, 1)
        standIns.actions.vpn.isEnabledOnScreen = false
        inState(VPNActionState.InTransition, "Connecting", "")
        wait(0)
        inState(VPNActionState.CanDisconnect, "Disconnect", "xmark.circle")
        standIns.actions.vpn.isEnabledOnScreen = true
        tryVerify(() => find("disconnect").activeFocus)
        keyClick(Qt.Key_Space)
        compare(standIns.actions.vpn.triggered, 2)
    }
}
