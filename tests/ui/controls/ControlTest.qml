import QtQuick
import QtTest
import Tarnwik.Controls

/// A test of one control in a window of its own, under the usual theme.
TestCase {
    id: testCase

    when: windowShown
    visible: true
    width: 500
    height: 500

    function cleanup() {
        Theme.dark = false
        Theme.textScale = 1
        Theme.reducesMotion = false
        testCase.forceActiveFocus()
        mouseMove(testCase, testCase.width - 1, testCase.height - 1)
    }
}
