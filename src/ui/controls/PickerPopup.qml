import QtQuick
import QtQuick.Templates as T
import Tarnwik.Controls

/// The list of a picker. Its rows exist while it is open, and only those that are seen; it is as wide as the widest of
/// them, where the window has the room.
T.Popup {
    id: popup

    required property T.ComboBox picker

    y: picker.height + 4
    width: Math.max(picker.width, Math.min(widestRow + leftPadding + rightPadding, Theme.popupMaximumWidth,
                                           (parent?.Window.width ?? 0) - 2 * margins))
    implicitHeight: Math.min(contentItem.implicitHeight + topPadding + bottomPadding, Theme.popupMaximumHeight)
    padding: 5
    margins: 6

    /// Grows with the rows that were seen since it was opened.
    property real widestRow: 0

    onAboutToShow: widestRow = 0

    function showNeighbours() {
        const list = contentItem as ListView
        list.positionViewAtIndex(list.currentIndex, ListView.Center)
    }

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.transitionDuration }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.transitionDuration }
    }

    background: Card {
        border.color: Theme.controlBorder
    }

    contentItem: ListView {
        implicitHeight: contentHeight
        clip: true
        model: popup.visible ? popup.picker.delegateModel : null
        currentIndex: popup.picker.highlightedIndex
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: 0
        Accessible.role: Accessible.List
        Accessible.name: popup.picker.Accessible.name

        T.ScrollBar.vertical: ScrollBar {}

        // The combo box puts the chosen row at the top, right after opening: its neighbours are of interest too.
        Timer {
            interval: 0
            running: popup.visible
            onTriggered: popup.showNeighbours()
        }
    }
}
