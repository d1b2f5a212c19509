import QtQuick
import Tarnwik.Controls

ControlTest {
    id: testCase
    name: "Texts"

    readonly property string hostile: "<b>bold</b> <img src=x> &amp; ‮abc"

    Component { id: label; Label { text: "Connected" } }
    Component { id: heading; SectionHeading { text: "Nodes" } }
    Component { id: elided; ElidedLabel { text: "a".repeat(200); width: 100 } }
    Component { id: error; ErrorText { width: 200; text: "No exit nodes are available." } }
    Component { id: labelled; LabelledRow { width: 300; label: "Plan"; value: "50 GB" } }
    Component { id: status; StatusLabel { symbol: "checkmark.circle.fill"; text: "Active"; tint: Theme.green } }
    Component { id: empty; EmptyState { width: 300; symbol: "network.slash"; title: "No nodes"; description: "Why." } }
    Component { id: meter; Meter { width: 100; value: 0.5; caption: "1 GB used of 2 GB" } }

    function make(component: Component, properties: var): var {
        return createTemporaryObject(component, testCase, Object.assign({ x: 20, y: 20 }, properties))
    }

    function textsIn(item: var): var {
        return Array.from(item.children).reduce((found, child) => found.concat(textsIn(child)), item instanceof Text ? [item] : [])
    }

    function test_aLabelIsReadOutAsItStands() {
        const item = make(label, {})
        compare(item.Accessible.role, Accessible.StaticText)
        compare(item.Accessible.name, "Connected")
        compare(make(heading, {}).Accessible.role, Accessible.Heading)
    }

    function test_markupIsTextEverywhere_data() {
        return [
            { tag: "Label", component: label, properties: { text: hostile } },
            { tag: "ElidedLabel", component: elided, properties: { text: hostile } },
            { tag: "LabelledRow", component: labelled, properties: { label: hostile, value: hostile } },
            { tag: "StatusLabel", component: status, properties: { text: hostile } },
            { tag: "EmptyState", component: empty, properties: { title: hostile, description: hostile } },
            { tag: "Meter", component: meter, properties: { caption: hostile } }
        ]
    }
    function test_markupIsTextEverywhere(data) {
        const texts = textsIn(make(data.component, data.properties))
        verify(texts.length > 0)
        for (const text of texts)
            compare(text.textFormat, Text.PlainText)
    }

    function test_markupInAnErrorIsText() {
        const item = make(error, { text: hostile })
        compare(item.textFormat, TextEdit.PlainText)
        compare(item.getText(0, item.length), hostile)
    }

    function test_longTextIsCutToOneLineAndWholeInATooltip() {
        const item = make(elided, {})
        verify(item.truncated)
        compare(item.lineCount, 1)
        mouseMove(item, 10, 5)
        const tip = findChild(item, "hoverToolTip")
        tryVerify(() => tip.item !== null && tip.item.opened, 3000)
        compare(tip.item.text, item.text)
        compare(tip.item.contentItem.text, item.text)
        mouseMove(testCase, 400, 400)
        tryCompare(tip, "active", false)
    }

    function test_severalLinesAreCutToOne() {
        const item = make(elided, { text: "one\ntwo\nthree" })
        compare(item.lineCount, 1)
        verify(item.truncated)
    }

    function test_textThatFitsHasNoTooltip() {
        const item = make(elided, { text: "short" })
        mouseMove(item, 10, 5)
        wait(50)
        verify(!findChild(item, "hoverToolTip").active)
    }

    function test_anErrorIsAnAlertThatCanBeSelectedAndIsNeverCut() {
        const item = make(error, { text: "word ".repeat(200) })
        compare(item.Accessible.role, Accessible.AlertMessage)
        compare(item.Accessible.name, item.text)
        verify(item.contentWidth <= item.width)
        verify(item.height >= item.contentHeight)
        verify(item.lineCount > 10)
        mouseDoubleClickSequence(item, 10, 5)
        compare(item.selectedText.trim(), "word")
        keyClick("x")
        verify(!item.text.includes("x"))
    }

    function test_anErrorWithoutBlanksIsBrokenAnywhere() {
        const item = make(error, { text: "x".repeat(500) })
        verify(item.contentWidth <= item.width)
        verify(item.lineCount > 5)
    }

    function test_noErrorTakesNoRoom() {
        verify(!make(error, { text: "" }).visible)
    }

    function test_anErrorIsReachedByTabAndLeftByTab() {
        const item = make(error, {})
        const next = make(status, {})
        keyClick(Qt.Key_Tab)
        verify(item.activeFocus)
        keyClick(Qt.Key_Tab)
        verify(!item.text.includes("\t"))
    }

    function test_aLabelledRowKeepsItsTextsApart_data() {
        return [
            { tag: "usual", scale: 1, value: "50 GB" },
            { tag: "long value", scale: 1, value: "v".repeat(300) },
            { tag: "text twice the size", scale: 2, value: "Not connected anywhere" }
        ]
    }
    function test_aLabelledRowKeepsItsTextsApart(data) {
        Theme.textScale = data.scale
        const item = make(labelled, { label: "Billing provider", value: data.value })
        const [first, second] = textsIn(item)
        const beside = second.x >= first.x + first.width
        const below = second.y >= first.y + first.height
        verify(beside || below)
        verify(second.x + second.width <= item.width)
        verify(item.height >= second.y + second.height)
    }

    function test_theMeterIsFilledByItsValue_data() {
        return [
            { tag: "nothing", value: 0, width: 0 },
            { tag: "less than nothing", value: -1, width: 0 },
            { tag: "hardly anything", value: 0.001, width: 6 },
            { tag: "half", value: 0.5, width: 50 },
            { tag: "all", value: 1, width: 100 },
            { tag: "more than all", value: 7, width: 100 },
            { tag: "no number", value: NaN, width: 0 }
        ]
    }
    function test_theMeterIsFilledByItsValue(data) {
        const item = make(meter, { value: data.value })
        compare(findChild(item, "meterFill").width, data.width)
    }

    function test_theMeterIsReadOut() {
        const bar = findChild(make(meter, {}), "meterFill").parent
        compare(bar.Accessible.role, Accessible.ProgressBar)
        compare(bar.Accessible.name, "Usage")
        compare(bar.Accessible.description, "1 GB used of 2 GB")
        compare(bar.height, 6)
    }

    function test_anEmptyStateWithoutDescriptionTakesNoRoomForIt() {
        verify(make(empty, { description: "" }).height < make(empty, {}).height)
    }
}
