import QtQuick
import Tarnwik.Controls

/// What a scroll bar shows of itself: it appears at once, and goes a little after the scrolling.
Rectangle {
    id: thumb

    property bool isShown: false

    implicitWidth: 6
    radius: 3
    color: Theme.scrollThumb
    opacity: 0

    states: State {
        name: "shown"
        when: thumb.isShown
        PropertyChanges { thumb.opacity: 1 }
    }

    transitions: Transition {
        from: "shown"
        SequentialAnimation {
            PauseAnimation { duration: 600 }
            NumberAnimation { target: thumb; property: "opacity"; duration: Theme.transitionDuration }
        }
    }
}
