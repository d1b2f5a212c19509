// Stand-ins, and what is found on a screen, have no types that could be checked.
// qmllint disable
import QtQuick
import QtTest
import Tarnwik.Controls

/// A test of one screen over stand-ins that are new for each test function.
TestCase {
    id: test

    /// The component under test; its required properties are set from the stand-ins.
    property Component screen
    property var standIns
    property Item shown

    width: 960
    height: 680
    visible: true
    when: windowShown

    Component {
        id: standInsComponent

        StandIns {}
    }

    function init() {
        standIns = createTemporaryObject(standInsComponent, test)
    }
    function cleanup() {
        if (shown)
            shown.destroy()
        shown = null
        Theme.textScale = 1
        wait(0)
    }

    /// Shows the screen, in all of the test's window or in a part of it.
    function show(size) {
        shown = screen.createObject(test, { width: size?.width ?? test.width, height: size?.height ?? test.height })
        verify(shown)
        waitForRendering(shown)
        return shown
    }

    /// What carries this name and can be seen, or null.
    function find(name, root) { return findWhere(item => item.objectName === name, root) }

    /// What shows this text and can be seen, or null.
    function findText(text, root) { return findWhere(item => item.text === text, root) }

    function findWhere(matches, root) { return all(matches, root)[0] ?? null }

    /// Everything that can be seen below an item, in the order of the tree.
    function all(matches, root) {
        const found = []
        const visit = item => {
            if (!item.visible)
                return
            if (matches(item))
                found.push(item)
            for (let index = 0; index < item.children.length; ++index)
                visit(item.children[index])
        }
        visit(root ?? shown)
        return found
    }

    function click(item) {
        verify(item)
        mouseClick(item)
    }

    function placeOf(item) { return item.mapToItem(shown, 0, 0, item.width, item.height) }

    /// The items that the Tab key goes through from here, until it comes back.
    function focusChain() {
        const chain = []
        let item = shown.nextItemInFocusChain(true)
        while (item && !chain.includes(item)) {
            chain.push(item)
            item = item.nextItemInFocusChain(true)
        }
        return chain
    }
}
