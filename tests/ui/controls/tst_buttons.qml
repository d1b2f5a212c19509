import QtQuick
import QtTest
import Tarnwik.Controls

ControlTest {
    id: testCase
    name: "Buttons"

    Component { id: button; Button { text: "Restore"; symbol: "arrow.clockwise" } }
    Component { id: large; Button { text: "Disconnect"; isLarge: true } }
    Component { id: destructive; Button { text: "Sign Out"; destructive: true } }
    Component { id: prominent; ProminentButton { text: "Connect"; symbol: "power" } }
    Component { id: tool; ToolButton { symbol: "arrow.clockwise"; Accessible.name: "Refresh" } }
    Component { id: link; LinkButton { text: "Email support" } }
    Component { id: row; SidebarRow { text: "Account"; symbol: "person.crop.circle"; width: 180 } }
    SignalSpy { id: clicks; signalName: "clicked" }

    function make(component: Component, properties: var): var {
        const item = createTemporaryObject(component, testCase, Object.assign({ x: 20, y: 20 }, properties))
        clicks.target = item
        clicks.clear()
        return item
    }

    function all(): var {
        return [
            { tag: "Button", component: button, text: "Restore", role: Accessible.Button },
            { tag: "large Button", component: large, text: "Disconnect", role: Accessible.Button },
            { tag: "destructive Button", component: destructive, text: "Sign Out", role: Accessible.Button },
            { tag: "ProminentButton", component: prominent, text: "Connect", role: Accessible.Button },
            { tag: "ToolButton", component: tool, text: "Refresh", role: Accessible.Button },
            { tag: "LinkButton", component: link, text: "Email support", role: Accessible.Link },
            { tag: "SidebarRow", component: row, text: "Account", role: Accessible.ListItem }
        ]
    }

    function test_hasANameAndARole_data() { return all() }
    function test_hasANameAndARole(data) {
        const item = make(data.component, {})
        compare(item.Accessible.name, data.text)
        compare(item.Accessible.role, data.role)
    }

    function test_isClickedOnceByMouseAndKeys_data() { return all() }
    function test_isClickedOnceByMouseAndKeys(data) {
        const item = make(data.component, {})
        mouseClick(item)
        compare(clicks.count, 1)
        item.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Space)
        compare(clicks.count, 2)
        keyClick(Qt.Key_Return)
        compare(clicks.count, 3)
        keyClick(Qt.Key_Enter)
        compare(clicks.count, 4)
    }

    function test_isPressedByAnAssistiveTechnology_data() { return all() }
    function test_isPressedByAnAssistiveTechnology(data) {
        const item = make(data.component, {})
        item.Accessible.pressAction()
        compare(clicks.count, 1)
    }

    function test_isNeverClickedWhileDisabled_data() { return all() }
    function test_isNeverClickedWhileDisabled(data) {
        const item = make(data.component, { enabled: false })
        mouseClick(item)
        item.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Space)
        keyClick(Qt.Key_Return)
        item.Accessible.pressAction()
        compare(clicks.count, 0)
    }

    function test_isReachedByTab_data() { return all() }
    function test_isReachedByTab(data) {
        const item = make(data.component, {})
        keyClick(Qt.Key_Tab)
        verify(item.activeFocus)
    }

    function hasRing(item: var): bool {
        return Array.from(item.background.children).some(child => child instanceof FocusRing && child.visible)
    }

    function test_showsItsFocusToTheKeyboardOnly_data() { return all() }
    function test_showsItsFocusToTheKeyboardOnly(data) {
        const item = make(data.component, {})
        mouseClick(item)
        verify(item.activeFocus)
        verify(!hasRing(item))
        testCase.forceActiveFocus()
        item.forceActiveFocus(Qt.TabFocusReason)
        verify(hasRing(item))
    }

    function pixels(item: var): string {
        // Beside the text and the symbol, within the frame.
        const image = grabImage(testCase)
        return image.pixel(item.x + 4, item.y + item.height - 4).toString()
    }

    function test_looksDifferentUnderThePointerAndPressed_data() {
        return all().filter(data => data.component !== link)
    }
    function test_looksDifferentUnderThePointerAndPressed(data) {
        const item = make(data.component, {})
        const atRest = pixels(item)
        mouseMove(item, item.width / 2, item.height / 2)
        const hovered = pixels(item)
        mousePress(item)
        const pressed = pixels(item)
        mouseRelease(item)
        verify(atRest !== hovered, atRest)
        verify(hovered !== pressed, hovered)
        verify(atRest !== pressed, atRest)
    }

    function test_looksDisabled_data() {
        return all().filter(data => data.component !== link && data.component !== row && data.component !== tool)
    }
    function test_looksDisabled(data) {
        const item = make(data.component, {})
        const atRest = pixels(item)
        item.enabled = false
        verify(atRest !== pixels(item), atRest)
        mouseMove(item, item.width / 2, item.height / 2)
        const disabled = pixels(item)
        mousePress(item)
        compare(pixels(item), disabled)
        mouseRelease(item)
    }

    function test_destructiveTextIsReadableInEveryState_data() {
        return [{ tag: "light", dark: false }, { tag: "dark", dark: true }]
    }
    function test_destructiveTextIsReadableInEveryState(data) {
        Theme.dark = data.dark
        const item = make(destructive, {})
        compare(item.fill, Theme.control)
        verify(Contrast.ratio(item.tint, item.fill) >= 4.5)
        verify(item.tint.hslHue > 0.95 || item.tint.hslHue < 0.05, "It is no longer red.")
        mouseMove(item, item.width / 2, item.height / 2)
        compare(item.fill, Theme.controlHover)
        verify(Contrast.ratio(item.tint, item.fill) >= 4.5)
        mousePress(item)
        compare(item.fill, Theme.controlPressed)
        verify(Contrast.ratio(item.tint, item.fill) >= 4.5)
        mouseRelease(item)
    }

    function test_hasTheHeightOfItsKind() {
        compare(make(button, {}).height, 28)
        compare(make(large, {}).height, 32)
        compare(make(prominent, {}).height, 32)
        compare(make(row, {}).height, 32)
        const square = make(tool, {})
        compare(square.height, 28)
        compare(square.width, 28)
    }

    function test_keepsItsSizeWhileBusy_data() { return all().filter(data => data.tag.endsWith("Button") && data.component !== link) }
    function test_keepsItsSizeWhileBusy(data) {
        const item = make(data.component, {})
        const width = item.width
        const height = item.height
        item.busy = true
        compare(item.width, width)
        compare(item.height, height)
    }

    function test_holdsTextTwiceTheSize_data() { return all() }
    function test_holdsTextTwiceTheSize(data) {
        const item = make(data.component, {})
        Theme.textScale = 2
        verify(item.implicitHeight >= item.contentItem.implicitHeight)
        verify(item.implicitWidth >= item.contentItem.implicitWidth)
    }

    function test_aFoldedRowShowsNoTitleAndKeepsItsName() {
        const item = make(row, { isFolded: true, width: 32 })
        compare(item.contentItem.implicitWidth, Theme.iconSize)
        compare(item.Accessible.name, "Account")
    }

    function test_aSelectedRowSaysSo() {
        const item = make(row, { isSelected: true })
        verify(item.Accessible.selectable)
        verify(item.Accessible.selected)
        compare(item.background.color, Theme.accentFill)
        item.isSelected = false
        verify(!item.Accessible.selected)
    }
}
