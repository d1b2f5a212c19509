import QtQuick
import QtQuick.Templates as T
import Tarnwik.Controls

/// A screen that scrolls as a whole: its blocks in one column, of at most the width that reads well, at the leading
/// edge.
FocusScope {
    id: screen

    default property alias blocks: column.data
    readonly property bool isScrolled: !view.atYBeginning

    Keys.forwardTo: [reach]

    Flickable {
        id: view

        objectName: "view"
        anchors.fill: parent
        clip: true
        contentWidth: width
        contentHeight: column.height + 2 * Theme.screenPadding
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollBar {}

        Column {
            id: column

            x: Theme.screenPadding
            y: Theme.screenPadding
            width: Math.min(view.width, Theme.screenMaximumWidth) - 2 * Theme.screenPadding
            spacing: Theme.blockGap
        }
    }
    ScrollReach {
        id: reach

        view: view
    }
}
