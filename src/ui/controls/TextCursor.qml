import QtQuick
import QtQuick.Templates as T
import Tarnwik.Controls

/// The text cursor. It blinks while somebody types and for ten seconds after, then it stands still: a window in which
/// nothing happens costs nothing.
Rectangle {
    id: cursor

    required property T.TextField owner
    /// How often it came or went since somebody typed, half a second each.
    property int halfPeriods: 0
    /// After how many of these it stands still.
    property int restsAfter: 20

    readonly property bool isBlinking: owner.cursorVisible && !Theme.reducesMotion && halfPeriods < restsAfter

    width: Theme.scaled(1)
    color: Theme.primary
    visible: owner.cursorVisible && halfPeriods % 2 === 0

    Timer {
        interval: 500
        repeat: true
        running: cursor.isBlinking
        onTriggered: cursor.halfPeriods += 1
    }

    Connections {
        target: cursor.owner
        function onCursorPositionChanged() { cursor.halfPeriods = 0 }
        function onCursorVisibleChanged() { cursor.halfPeriods = 0 }
        function onTextChanged() { cursor.halfPeriods = 0 }
    }
}
