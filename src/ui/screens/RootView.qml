// Components that a loader or a list makes cannot be bound in Qt 6.4.
// qmllint disable unqualified
import QtQuick

/// What the main window shows: the dashboard while there is a session, else the sign-in screen.
FocusScope {
    id: root

    required property var appModel
    required property var vpnController
    required property var appStoreSubscriptions
    required property var actions
    required property var tasks

    focus: true

    Loader {
        anchors.fill: parent
        focus: true
        sourceComponent: root.appModel.isSignedIn ? dashboard : signIn
    }
    Component {
        id: signIn

        SignInView {
            appModel: root.appModel
            actions: root.actions
        }
    }
    Component {
        id: dashboard

        DashboardView {
            appModel: root.appModel
            vpnController: root.vpnController
            appStoreSubscriptions: root.appStoreSubscriptions
            actions: root.actions
            tasks: root.tasks
        }
    }
}
