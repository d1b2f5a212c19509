import QtQuick
import Tarnwik.Controls

ControlTest {
    id: testCase
    name: "Spinner"

    Component { id: spinner; Spinner {} }
    Component { id: busy; Button { text: "Refresh" } }

    function test_turnsWhileItIsSeen() {
        const item = createTemporaryObject(spinner, testCase)
        verify(item.isTurning)
        const step = item.step
        tryVerify(() => item.step !== step)
    }

    function test_standsStillWhileItOrWhatHoldsItIsHidden() {
        const item = createTemporaryObject(spinner, testCase, { visible: false })
        verify(!item.isTurning)
        item.visible = true
        verify(item.isTurning)
        testCase.visible = false
        verify(!item.isTurning)
        testCase.visible = true
        verify(item.isTurning)
    }

    function test_standsStillWithReducedMotion() {
        const item = createTemporaryObject(spinner, testCase)
        Theme.reducesMotion = true
        verify(!item.isTurning)
        const step = item.step
        wait(250)
        compare(item.step, step)
    }

    function test_aButtonTurnsItOnlyWhileBusy() {
        const item = createTemporaryObject(busy, testCase)
        const inside = findChild(item, "spinner")
        verify(!inside.isTurning)
        item.busy = true
        verify(inside.isTurning)
        item.busy = false
        verify(!inside.isTurning)
    }
}
