import QtQuick
import QtQuick.Templates as T
import Tarnwik.Controls

/// A thumb over the edge of what it scrolls, seen while that moves or the pointer is on the edge.
T.ScrollBar {
    id: bar

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    padding: 3
    minimumSize: height > 0 ? Math.min(1, 28 / height) : 0
    visible: size < 1
    Accessible.role: Accessible.ScrollBar
    Accessible.name: "Scroll bar"

    contentItem: ScrollThumb {
        isShown: bar.active && bar.size < 1
    }
}
