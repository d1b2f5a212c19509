import QtQuick
import Tarnwik.Controls

/// The surface on which things that belong together lie.
Rectangle {
    radius: Theme.cardRadius
    color: Theme.card
    border.width: 1
    border.color: Theme.hairline
}
