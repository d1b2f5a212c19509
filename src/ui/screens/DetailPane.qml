// Components that a loader or a list makes cannot be bound in Qt 6.4.
// qmllint disable unqualified
import QtQuick
import Tarnwik.Controls

/// The chosen section's screen below a header with its title. A screen lives only as long as it is shown.
FocusScope {
    id: pane

    required property var appModel
    required property var vpnController
    required property var appStoreSubscriptions
    required property var actions
    required property var tasks

    readonly property alias screen: loader.item
    readonly property string section: appModel.selectedSection
    readonly property string title: appModel.sections.find(candidate => candidate.section === section)?.title ?? ""
    readonly property var screens: ({
        connect: connectView,
        account: accountView,
        settings: settingsView
    })

    Label {
        id: heading

        objectName: "detailTitle"
        anchors {
            left: parent.left
            right: refresh.left
            leftMargin: Theme.screenPadding
        }
        height: Theme.headerHeight
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        textStyle: "windowTitle"
        text: pane.title
        Accessible.role: Accessible.Heading
    }
    ToolButton {
        id: refresh

        objectName: "refresh"
        visible: pane.section === "connect"
        anchors {
            right: parent.right
            rightMargin: 8
        }
        y: (Theme.headerHeight - height) / 2
        symbol: "arrow.clockwise"
        busy: pane.actions.refresh.isRunning
        enabled: !pane.actions.refresh.isRunning
        Accessible.name: "Refresh"
        onClicked: pane.actions.refresh.trigger()
    }
    Hairline {
        objectName: "headerLine"
        visible: pane.screen?.isScrolled ?? false
        y: Theme.headerHeight - 1
        width: parent.width
    }
    Loader {
        id: loader

        anchors {
            fill: parent
            topMargin: Theme.headerHeight
        }
        sourceComponent: pane.screens[pane.section] ?? null
    }
    Component {
        id: connectView

        ConnectView {
            appModel: pane.appModel
            vpnController: pane.vpnController
            actions: pane.actions
            tasks: pane.tasks
        }
    }
    Component {
        id: accountView

        AccountView {
            appModel: pane.appModel
            appStoreSubscriptions: pane.appStoreSubscriptions
            actions: pane.actions
            tasks: pane.tasks
        }
    }
    Component {
        id: settingsView

        SettingsView {
            appModel: pane.appModel
            actions: pane.actions
        }
    }
}
