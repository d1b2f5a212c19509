// Components that a loader or a list makes cannot be bound in Qt 6.4.
// qmllint disable unqualified
import QtQuick
import QtQuick.Window
import Tarnwik.Controls

/// The main window: sign-in, or the dashboard.
Window {
    id: window

    required property var appModel
    required property var vpnController
    required property var appStoreSubscriptions
    required property var actions
    required property var tasks

    objectName: "main"
    title: "Tarnwik"
    width: 960
    height: 680
    minimumWidth: Theme.windowMinimumWidth
    minimumHeight: Theme.windowMinimumHeight
    color: Theme.window

    WindowShortcuts {
        actions: window.actions
        window: window
    }
    TarnwikEnvironment {
        anchors.fill: parent
        tasks: window.tasks
        isShown: window.visible

        RootView {
            appModel: window.appModel
            vpnController: window.vpnController
            appStoreSubscriptions: window.appStoreSubscriptions
            actions: window.actions
            tasks: window.tasks
        }
    }
}
