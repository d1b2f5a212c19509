// Stand-ins, and what is found on a screen, have no types that could be checked.
// qmllint disable
import QtQuick
import QtTest
import Tarnwik
import Tarnwik.Controls

ScreenTest {
    id: test

    name: "ConnectLists"
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
    function nodeRows() { return all(item => item instanceof NodeRow) }
    function deviceRows() { return all(item => item instanceof DeviceRow) }

    function test_errorLineIsThereOnlyWithAnError() {
        showFull()
        compare(find("error"), null)
        standIns.appModel.errorMessage = "The server could not be reached."
        compare(find("error").text, "The server could not be reached.")
        compare(find("error").color, Theme.red)
        compare(find("error").textStyle, "footnote")
        compare(find("error").Accessible.role, Accessible.AlertMessage)
        standIns.appModel.errorMessage = undefined
        compare(find("error"), null)
    }
    function test_errorThatAppearsLeavesTheTopInView() {
        showFull()
        const before = placeOf(find("status")).y
        standIns.appModel.errorMessage = "The server could not be reached."
        waitForRendering(shown)
        compare(placeOf(find("status")).y, before)
        standIns.appModel.errorMessage = undefined
        waitForRendering(shown)
        compare(placeOf(find("status")).y, before)
    }

    function test_errorThatAppearsBelowLeavesTheRowsInPlace() {
        for (let index = 0; index < 100; ++index)
            standIns.addNode("node-" + index, "detail", "Online", true, "x")
        show({ width: 420, height: 540 })
        find("nodes").positionViewAtIndex(50, ListView.Beginning)
        waitForRendering(shown)
        const row = () => nodeRows().find(candidate => candidate.name === "node-52")
        const before = placeOf(row()).y
        standIns.appModel.errorMessage = "The server could not be reached."
        waitForRendering(shown)
        compare(placeOf(row()).y, before)
    }
    function test_refreshedNodesDoNotScroll() {
        showFull({ width: 420, height: 540 })
        find("nodes").contentY += 100
        const before = find("nodes").contentY
        standIns.appModel.nodes.setProperty(1, "statusText", "Degraded")
        waitForRendering(shown)
        compare(find("nodes").contentY, before)
    }
    function test_nodesThatArriveLaterLeaveTheTopInView() {
        show({ width: 420, height: 540 })
        standIns.fill()
        waitForRendering(shown)
        compare(placeOf(find("status")).y, 24)
    }

    function test_nodesHaveARowEachInOrder() {
        showFull()
        compare(nodeRows().map(row => find("name", row).text), ["fra-1", "ams-2", "sto-1", "nyc-3", "sin-1"])
        const row = nodeRows()[0]
        compare(find("name", row).textStyle, "bodySemibold")
        compare(find("detail", row).text, "Northhost · frankfurt · 203.0.113.10:51820")
        compare(find("detail", row).textStyle, "caption")
        compare(find("detail", row).color, Theme.secondary)
        compare(find("status", row).text, "Online")
        compare(find("status", row).textStyle, "captionSemibold")
    }
    function test_nodeStatusIsGreenWhenOnlineElseOrange() {
        showFull()
        compare(find("status", nodeRows()[0]).color, Theme.green)
        compare(find("status", nodeRows()[2]).color, Theme.orange)
    }
    function test_statusThatOnlyLooksOnlineIsOrange() {
        standIns.addNode("x", "", "Online", false, "X")
        show()
        compare(find("status", nodeRows()[0]).text, "Online")
        compare(find("status", nodeRows()[0]).color, Theme.orange)
    }
    function test_pressingANodeRowChoosesNothing() {
        showFull()
        mouseClick(nodeRows()[1])
        compare(standIns.appModel.chosen, [])
    }
    function test_noNodesAreExplained() {
        show()
        verify(find("noNodes"))
        verify(findText("No nodes"))
        verify(findText("No Tarnwik exit nodes are available for this account."))
        verify(findWhere(item => item instanceof Icon && item.symbol === "network.slash"))
        standIns.addNode("x", "", "Online", true, "X")
        compare(find("noNodes"), null)
    }
    function test_noDevicesAreExplained() {
        show()
        compare(find("noDevices").text, "A local device profile will be created on first connect.")
        compare(find("noDevices").color, Theme.secondary)
        standIns.appModel.devices.append({ name: "x", detail: "linux · 0 profiles", isEnabled: true })
        compare(find("noDevices"), null)
    }
    function test_devicesHaveARowEachInOrder() {
        showFull()
        const rows = deviceRows()
        compare(rows.map(row => find("name", row).text), ["Mira’s ThinkPad", "Old MacBook"])
        compare(rows.map(row => find("detail", row).text), ["linux · 1 profile", "macos · 2 profiles"])
        compare(rows.map(row => find("mark", row).symbol), ["checkmark.circle.fill", "slash.circle"])
        compare(find("mark", rows[0]).color, Theme.green)
        compare(find("mark", rows[1]).color, Theme.red)
        compare(find("name", rows[0]).textStyle, "bodySemibold")
    }
    function test_gapsAndPaddingAreThoseOfTheScreen() {
        showFull()
        const gap = (upper, lower) => placeOf(lower).y - placeOf(upper).y - upper.height
        compare(placeOf(find("status")).x, 24)
        compare(placeOf(find("status")).y, 24)
        compare(gap(find("status"), find("runtimeLine")), 8)
        compare(gap(find("runtimeLine"), find("meter")), 8)
        compare(gap(find("meter"), find("exitNode")), 18)
        compare(gap(find("exitNode"), find("connect")), 18)
        compare(gap(find("connect"), find("nodesHeading")), 18)
        compare(gap(find("nodesHeading"), nodeRows()[0]), 10)
        compare(gap(nodeRows()[0], nodeRows()[1]), 10)
        compare(gap(nodeRows()[4], find("devicesHeading")), 18)
        compare(nodeRows()[0].width, 720 - 48)
    }
    function test_gapsAndPaddingOfANodeRow() {
        showFull()
        const row = nodeRows()[0]
        const name = find("name", row)
        const detail = find("detail", row)
        const status = find("status", row)
        compare(row.radius, 8)
        compare(placeOf(name).x - placeOf(row).x, 12)
        compare(placeOf(name).y - placeOf(row).y, 12)
        compare(placeOf(row).y + row.height - placeOf(detail).y - detail.height, 12)
        compare(placeOf(row).x + row.width - placeOf(status).x - status.width, 12)
        compare(placeOf(status).x - placeOf(name).x - name.width, 12)
        compare(name.parent.spacing, 2)
        compare(placeOf(detail).y - placeOf(name).y - name.height, 2)
    }
    function test_gapsAndPaddingOfADeviceRow() {
        showFull()
        find("nodes").positionViewAtEnd()
        waitForRendering(shown)
        const row = deviceRows()[0]
        const name = find("name", row)
        const detail = find("detail", row)
        const mark = find("mark", row)
        compare(placeOf(name).y - placeOf(row).y, 6)
        compare(placeOf(row).y + row.height - placeOf(detail).y - detail.height, 6)
        compare(placeOf(mark).x, placeOf(row).x)
        compare(placeOf(name).x - placeOf(mark).x - mark.width, 8)
        compare(placeOf(row).x + row.width, placeOf(name).x + name.width)
        compare(name.parent.spacing, 2)
        compare(placeOf(detail).y - placeOf(name).y - name.height, 2)
    }
    function test_gapOfTheMeter() {
        showFull()
        const meter = find("meter")
        compare(meter.spacing, 6)
        const bar = meter.children[0]
        const caption = meter.children[1]
        compare(placeOf(caption).y - placeOf(bar).y - bar.height, 6)
    }
    function test_gapOfTheEmptyScreen() {
        show()
        const panel = find("noNodes")
        compare(placeOf(find("devicesHeading")).y - placeOf(panel).y - panel.height, 18)
    }

    function test_tenThousandNodesBuildOnlyWhatIsSeen() {
        for (let index = 0; index < 10000; ++index)
            standIns.addNode("node-" + index, "detail", "Online", true, "Somewhere · node-" + index)
        show()
        verify(nodeRows().length < 40, nodeRows().length)
        const list = find("nodes")
        list.positionViewAtIndex(5000, ListView.Center)
        waitForRendering(shown)
        verify(nodeRows().some(row => row.name === "node-5000"))
        verify(nodeRows().length < 60, nodeRows().length)
        shown.forceActiveFocus()
        keyClick(Qt.Key_End)
        tryVerify(() => list.atYEnd)
    }
    function test_rowsOutOfSightAreToldToNobody() {
        for (let index = 0; index < 200; ++index)
            standIns.addNode("node-" + index, "detail", "Online", true, "x")
        show({ width: 420, height: 540 })
        for (const index of [40, 120, 199, 3, 80]) {
            find("nodes").positionViewAtIndex(index, ListView.Center)
            waitForRendering(shown)
            const places = nodeRows().map(row => placeOf(row).y).sort((one, other) => one - other)
            for (let row = 1; row < places.length; ++row)
                verify(places[row] - places[row - 1] >= nodeRows()[0].height + 10)
            verify(nodeRows().some(row => row.name === "node-" + index))
        }
    }
    function test_pagingKeysScroll() {
        showFull({ width: 420, height: 400 })
        const list = find("nodes")
        find("connect").forceActiveFocus()
        verify(list.atYBeginning)
        keyClick(Qt.Key_PageDown)
        verify(!list.atYBeginning)
        keyClick(Qt.Key_End)
        verify(list.atYEnd)
        keyClick(Qt.Key_Home)
        verify(list.atYBeginning)
    }
    function test_whatTakesTheFocusComesIntoView() {
        showFull({ width: 420, height: 400 })
        const list = find("nodes")
        list.positionViewAtEnd()
        const connect = findWhere(item => item.objectName === "picker", list.headerItem)
        connect.forceActiveFocus(Qt.TabFocusReason)
        const place = placeOf(connect)
        verify(place.y >= 0 && place.y + place.height <= 400, place.y)
    }
}
