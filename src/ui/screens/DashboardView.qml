pragma ComponentBehavior: Bound
import QtQuick
import Tarnwik
import Tarnwik.Controls

/// The signed-in window: the sections at the left, as a rail of icons where there is little room, and the screen of the
/// chosen one.
FocusScope {
    id: dashboard

    required property var appModel
    required property var vpnController
    required property var appStoreSubscriptions
    required property var actions
    required property var tasks

    focus: true
    Keys.forwardTo: [detail.screen]

    AppearanceTask {
        tasks: dashboard.tasks
        kind: AppearanceTasks.Dashboard
    }
    Repeater {
        model: dashboard.appModel.sections

        Item {
            id: keys

            required property int index
            required property var modelData

            Shortcut {
                sequence: "Ctrl+" + (keys.index + 1)
                onActivated: dashboard.appModel.selectedSection = keys.modelData.section
            }
        }
    }
    Sidebar {
        id: sidebar

        anchors {
            top: parent.top
            bottom: parent.bottom
            left: parent.left
        }
        isFolded: dashboard.width < Theme.foldBelow
        appModel: dashboard.appModel
        actions: dashboard.actions
    }
    DetailPane {
        id: detail

        anchors {
            top: parent.top
            bottom: parent.bottom
            left: sidebar.right
            right: parent.right
        }
        appModel: dashboard.appModel
        vpnController: dashboard.vpnController
        appStoreSubscriptions: dashboard.appStoreSubscriptions
        actions: dashboard.actions
        tasks: dashboard.tasks
    }
}
