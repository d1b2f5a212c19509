// Components that a loader or a list makes cannot be bound in Qt 6.4.
// qmllint disable unqualified
import QtQuick
import QtQuick.Window
import Tarnwik.Controls

/// The settings in a window of their own, signed in or not.
Window {
    id: window

    required property var appModel
    required property var actions
    required property var tasks

    objectName: "settings"
    title: "Settings"
    width: 520
    height: 400
    minimumWidth: 360
    minimumHeight: 320
    color: Theme.window

    WindowShortcuts {
        actions: window.actions
        window: window
    }
    TarnwikEnvironment {
        anchors.fill: parent
        tasks: window.tasks
        isShown: window.visible

        SettingsView {
            appModel: window.appModel
            actions: window.actions
        }
    }
}
