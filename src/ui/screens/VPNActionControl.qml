import QtQuick
import Tarnwik
import Tarnwik.Controls

/// Connects or disconnects; while the tunnel changes its state, tells which way. Whoever works it with the keyboard
/// keeps the focus through its three forms.
FocusScope {
    id: control

    /// The program's action of that name, by the rule of its screen instead of the menus'.
    required property var action

    implicitHeight: Theme.prominentHeight

    ProminentButton {
        objectName: "connect"
        visible: control.action.state === VPNActionState.CanConnect
        focus: visible
        text: control.action.title
        symbol: control.action.symbol
        enabled: control.action.isEnabledOnScreen
        onClicked: control.action.trigger()
    }
    Button {
        objectName: "disconnect"
        visible: control.action.state === VPNActionState.CanDisconnect
        focus: visible
        isLarge: true
        text: control.action.title
        symbol: control.action.symbol
        enabled: control.action.isEnabledOnScreen
        onClicked: control.action.trigger()
    }
    Row {
        objectName: "transition"
        visible: control.action.state === VPNActionState.InTransition
        height: parent.height
        spacing: 6

        Spinner {
            anchors.verticalCenter: parent.verticalCenter
        }
        Label {
            objectName: "transitionTitle"
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.secondary
            text: control.action.title
        }
    }
}
