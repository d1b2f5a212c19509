import QtQuick
import Tarnwik.Controls

/// One line of text that may be longer than its room: it is then cut with an ellipsis, and whole in a tooltip.
Label {
    id: label

    elide: Text.ElideRight
    maximumLineCount: 1

    HoverHandler {
        id: pointer
        enabled: label.truncated
    }

    HoverToolTip {
        owner: label
        isWanted: pointer.hovered && label.truncated
        text: label.text
    }
}
