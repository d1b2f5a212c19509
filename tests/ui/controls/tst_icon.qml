import QtQuick
import Tarnwik.Controls

ControlTest {
    id: testCase
    name: "Icon"

    Component { id: icon; Icon {} }
    Component { id: bar; ScrollBar { orientation: Qt.Vertical; height: 200; size: 0.5 } }

    function test_isAsLargeAsItsKindAndGrowsWithTheText() {
        const item = createTemporaryObject(icon, testCase, { symbol: "power" })
        compare(item.implicitWidth, 16)
        Theme.textScale = 2
        compare(item.implicitWidth, 32)
        compare(item.implicitHeight, 32)
    }

    function test_isDrawnInItsColor() {
        const item = createTemporaryObject(icon, testCase, { symbol: "checkmark.circle.fill", color: "#ff0000", size: 32 })
        compare(grabImage(item).pixel(16, 3), Qt.color("#ff0000"))
        item.color = "#0000ff"
        compare(grabImage(item).pixel(16, 3), Qt.color("#0000ff"))
    }

    function test_withoutASymbolNothingIsAskedFor() {
        failOnWarning(/./)
        createTemporaryObject(icon, testCase, {})
        wait(0)
    }

    function test_theScrollBarHasARoleAndANameAndGoesWhenAllIsSeen() {
        const item = createTemporaryObject(bar, testCase)
        compare(item.Accessible.role, Accessible.ScrollBar)
        compare(item.Accessible.name, "Scroll bar")
        verify(item.visible)
        compare(item.contentItem.opacity, 0)
        item.active = true
        compare(item.contentItem.opacity, 1)
        item.active = false
        tryCompare(item.contentItem, "opacity", 0, 2000)
        item.size = 1
        verify(!item.visible)
    }
}
