// Components that a loader or a list makes cannot be bound in Qt 6.4.
// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Tarnwik
import Tarnwik.Controls

/// The tunnel's state and its control, the exit nodes and the devices. The nodes' rows are built only when seen: all
/// else stands above or below them in the same list.
FocusScope {
    id: screen

    required property var appModel
    required property var vpnController
    required property var actions
    required property var tasks

    readonly property bool isScrolled: !list.atYBeginning
    readonly property real contentWidth: Math.min(width, Theme.screenMaximumWidth) - 2 * Theme.screenPadding

    AppearanceTask {
        tasks: screen.tasks
        kind: AppearanceTasks.ConnectScreen
    }
    Keys.forwardTo: [reach]

    ListView {
        id: list

        /// A header grows upwards, away from the rows. What is seen of it stays where it is instead.
        function resizeHeader(header: Item, height: real) {
            const top = contentY + header.height;
            const isSeen = contentY <= 0;
            header.height = height;
            if (isSeen)
                contentY = top - height;
        }

        objectName: "nodes"
        anchors.fill: parent
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        spacing: Theme.listGap
        model: screen.appModel.nodes
        reuseItems: true
        // The list scrolls; it has no current row.
        keyNavigationEnabled: false
        currentIndex: -1
        Accessible.role: Accessible.List
        Accessible.name: "Nodes"
        T.ScrollBar.vertical: ScrollBar {}

        header: Item {
            id: headerItem

            width: list.width
            implicitHeight: 0

            ConnectHeader {
                x: Theme.screenPadding
                topPadding: Theme.screenPadding
                bottomPadding: hasNodes ? Theme.listGap : 0
                width: screen.contentWidth
                appModel: screen.appModel
                vpnController: screen.vpnController
                vpnAction: screen.actions.vpn
                onHeightChanged: list.resizeHeader(headerItem, height)
            }
        }
        delegate: NodeRow {
            x: Theme.screenPadding
            width: screen.contentWidth
            // A row that waits to be used again is drawn nowhere; nobody should be told of it either.
            ListView.onPooled: visible = false
            ListView.onReused: visible = true
        }
        footer: Item {
            width: list.width
            height: deviceList.height

            DeviceList {
                id: deviceList

                x: Theme.screenPadding
                topPadding: Theme.blockGap
                bottomPadding: Theme.screenPadding
                width: screen.contentWidth
                devices: screen.appModel.devices
            }
        }
    }
    ScrollReach {
        id: reach

        view: list
    }
}
