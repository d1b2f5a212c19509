pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Window
import Tarnwik.Controls

/// Eight spokes, of which the darkest goes round, while they are seen and the desktop likes motion.
Item {
    id: spinner

    property color color: Theme.secondary
    property int size: Theme.iconSize
    property int step: 0

    readonly property bool isTurning: visible && !Theme.reducesMotion && Window.window !== null
                                      && Window.visibility !== Window.Hidden && Window.visibility !== Window.Minimized
    readonly property real unit: size / 16

    implicitWidth: size
    implicitHeight: size
    Accessible.role: Accessible.Indicator
    Accessible.name: "In progress"

    Timer {
        interval: 100
        repeat: true
        running: spinner.isTurning
        onTriggered: spinner.step = (spinner.step + 1) % 8
    }

    Repeater {
        model: 8

        SpinnerSpoke {
            unit: spinner.unit
            step: spinner.step
            color: spinner.color
        }
    }
}
