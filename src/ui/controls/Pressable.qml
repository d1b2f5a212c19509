import QtQuick
import QtQuick.Templates as T
import Tarnwik.Controls

/// What all that can be pressed has in common: Space and Return press it, and so does an assistive technology.
T.Button {
    id: pressable

    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    font: Theme.font("body")

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: if (enabled) clicked()

    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) pressable.clicked() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) pressable.clicked() }
}
