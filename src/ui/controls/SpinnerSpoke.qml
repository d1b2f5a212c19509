import QtQuick

/// One of the eight spokes of a spinner.
Rectangle {
    id: spoke

    required property int index
    required property real unit
    required property int step

    x: 7 * unit
    y: 0.5 * unit
    width: 2 * unit
    height: 4.5 * unit
    radius: unit
    antialiasing: true
    opacity: 1 - 0.1 * ((step - index + 8) % 8)
    transform: Rotation {
        origin.x: spoke.unit
        origin.y: 7.5 * spoke.unit
        angle: spoke.index * 45
    }
}
