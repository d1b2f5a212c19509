import QtQuick
import Tarnwik.Controls

/// The line between two things, one below the other.
Rectangle {
    implicitHeight: 1
    color: Theme.hairline
}
