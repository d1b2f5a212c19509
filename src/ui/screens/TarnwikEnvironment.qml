// Components that a loader or a list makes cannot be bound in Qt 6.4.
// qmllint disable unqualified
import QtQuick
import Tarnwik

/// What stands around each scene: it builds the scene when its window is shown, drops it when the window is closed, and
/// runs the subscription store's start-up task in between.
Loader {
    id: environment

    required property var tasks
    /// Whether the window of the scene is on the screen, or minimised.
    required property bool isShown
    default property Component scene

    active: isShown
    focus: true
    sourceComponent: FocusScope {
        focus: true

        AppearanceTask {
            tasks: environment.tasks
            kind: AppearanceTasks.Environment
        }
        Loader {
            anchors.fill: parent
            focus: true
            sourceComponent: environment.scene
        }
    }
}
