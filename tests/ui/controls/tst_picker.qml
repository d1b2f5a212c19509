import QtQuick
import QtTest
import Tarnwik.Controls

ControlTest {
    id: testCase
    name: "Picker"

    Component {
        id: picker
        Picker { textRole: "caption"; Accessible.name: "Exit node" }
    }
    Component {
        id: rows
        ListModel {
            function fill(count: int) {
                for (let i = 0; i < count; ++i)
                    append({ caption: "Region · node-" + i })
            }
        }
    }
    SignalSpy { id: choices; signalName: "activated" }

    function make(count: int, properties: var): var {
        const model = createTemporaryObject(rows, testCase)
        model.fill(count)
        const item = createTemporaryObject(picker, testCase, Object.assign({ x: 20, y: 20, model: model }, properties))
        choices.target = item
        choices.clear()
        return item
    }

    function open(item: var): var {
        mouseClick(item)
        tryVerify(() => item.popup.opened)
        return item.popup.contentItem
    }

    function builtRows(list: var): var {
        return Array.from(list.contentItem.children).filter(child => child instanceof PickerRow)
    }

    function test_hasANameARoleAndAValue() {
        const item = make(3, { currentIndex: 1 })
        compare(item.Accessible.role, Accessible.ComboBox)
        compare(item.Accessible.name, "Exit node")
        compare(item.Accessible.description, "Region · node-1")
    }

    function test_choosesByMouse() {
        const item = make(3, { currentIndex: 0 })
        const list = open(item)
        mouseClick(list.itemAtIndex(2))
        compare(choices.count, 1)
        compare(choices.signalArguments[0][0], 2)
        tryVerify(() => !item.popup.visible)
    }

    function test_choosesByKeys() {
        const item = make(3, { currentIndex: 0 })
        item.forceActiveFocus(Qt.TabFocusReason)
        keyClick(Qt.Key_Space)
        tryVerify(() => item.popup.opened)
        keyClick(Qt.Key_Down)
        keyClick(Qt.Key_Return)
        compare(choices.count, 1)
        compare(choices.signalArguments[0][0], 1)
    }

    function test_escapeClosesTheListAndChoosesNothing() {
        const item = make(3, { currentIndex: 0 })
        open(item)
        keyClick(Qt.Key_Down)
        keyClick(Qt.Key_Escape)
        tryVerify(() => !item.popup.visible)
        compare(choices.count, 0)
        compare(item.currentIndex, 0)
    }

    function test_anAssistiveTechnologyOpensItAndChooses() {
        const item = make(3, { currentIndex: 0 })
        item.Accessible.pressAction()
        tryVerify(() => item.popup.opened)
        const row = item.popup.contentItem.itemAtIndex(1)
        compare(row.Accessible.role, Accessible.ListItem)
        compare(row.Accessible.name, "Region · node-1")
        verify(!row.Accessible.selected)
        verify(item.popup.contentItem.itemAtIndex(0).Accessible.selected)
        row.Accessible.pressAction()
        compare(choices.signalArguments[0][0], 1)
    }

    function test_isNotOpenedWhileDisabled() {
        const item = make(3, { enabled: false })
        mouseClick(item)
        item.Accessible.pressAction()
        verify(!item.popup.visible)
    }

    function test_showsNothingChosenForAnAbsentSelection() {
        const item = make(3, { currentIndex: -1 })
        compare(item.displayText, "")
        const list = open(item)
        verify(builtRows(list).every(row => !row.isChosen))
    }

    function test_showsNothingChosenWhenRowsComeLater() {
        const item = make(0, { currentIndex: -1 })
        item.model.fill(3)
        wait(0)
        compare(item.currentIndex, -1)
        compare(item.displayText, "")
        item.model.clear()
        item.model.fill(2)
        compare(item.currentIndex, -1)
        compare(item.displayText, "")
    }

    function test_followsACaptionThatChanges() {
        const item = make(3, { currentIndex: 1 })
        const list = open(item)
        item.model.setProperty(1, "caption", "Elsewhere")
        compare(list.itemAtIndex(1).caption, "Elsewhere")
        compare(item.displayText, "Elsewhere")
    }

    function test_buildsRowsOnlyWhenTheyAreSeen() {
        const item = make(10000, { currentIndex: 5000 })
        compare(builtRows(item.popup.contentItem).length, 0)
        const list = open(item)
        const built = builtRows(list).length
        verify(built > 5 && built < 40, built)
        verify(list.itemAtIndex(5000) !== null)
        verify(item.popup.height <= Theme.popupMaximumHeight)
    }

    function isSeen(list: var, index: int): bool {
        const row = list.itemAtIndex(index)
        return row !== null && row.y >= list.contentY && row.y + row.height <= list.contentY + list.height
    }

    function test_opensWithTheChosenRowAmongItsNeighbours_data() {
        return [
            { tag: "near the beginning", count: 10000, index: 1, seen: [0, 1, 2] },
            { tag: "in the middle", count: 10000, index: 5000, seen: [4998, 5000, 5002] },
            { tag: "at the end", count: 10000, index: 9999, seen: [9997, 9999] },
            { tag: "of few", count: 3, index: 2, seen: [0, 1, 2] }
        ]
    }
    function test_opensWithTheChosenRowAmongItsNeighbours(data) {
        const list = open(make(data.count, { currentIndex: data.index }))
        for (const index of data.seen)
            tryVerify(() => isSeen(list, index), 1000, "row " + index)
    }

    function test_anAmpersandIsText() {
        const item = make(0, {})
        item.model.append({ caption: "Salt & Pepper <b>" })
        const list = open(item)
        compare(list.itemAtIndex(0).contentItem.text, "Salt & Pepper <b>")
        compare(list.itemAtIndex(0).contentItem.textFormat, Text.PlainText)
    }

    function test_isAsWideAsItsTextButNeverNarrow() {
        compare(make(1, { currentIndex: 0 }).implicitWidth, 180)
        const item = make(0, {})
        item.model.append({ caption: "A region with quite a long name · and a node" })
        item.currentIndex = 0
        verify(item.implicitWidth > 250)
    }

    function test_theListIsAsWideAsItsWidestEntryWhereThereIsRoom() {
        const item = make(3, { currentIndex: 0 })
        open(item)
        compare(item.popup.width, item.width, "short entries")
        keyClick(Qt.Key_Escape)
        tryVerify(() => !item.popup.visible)
        item.model.append({ caption: "A region with quite a long name · and a node" })
        const entry = open(item).itemAtIndex(3)
        verify(item.popup.width > item.width)
        verify(!entry.contentItem.truncated)
        keyClick(Qt.Key_Escape)
        tryVerify(() => !item.popup.visible)
        item.model.append({ caption: "A name that never ends ".repeat(200) })
        open(item)
        verify(item.popup.width <= Math.min(Theme.popupMaximumWidth, testCase.Window.width - 12))
    }

    function test_takesPlainListsToo() {
        const item = createTemporaryObject(picker, testCase, { textRole: "", model: ["a", "b"], currentIndex: 1 })
        const list = open(item)
        compare(item.displayText, "b")
        compare(list.itemAtIndex(0).caption, "a")
    }
}
