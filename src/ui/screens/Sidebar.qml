pragma ComponentBehavior: Bound
import QtQuick
import Tarnwik.Controls

/// The program's sections, one of which is chosen: with their titles, or folded to a rail of icons.
Rectangle {
    id: sidebar

    required property var appModel
    required property var actions
    required property bool isFolded

    width: isFolded ? Theme.railWidth : Theme.sidebarWidth
    color: Theme.sidebar

    Label {
        objectName: "sidebarTitle"
        visible: !sidebar.isFolded
        anchors {
            left: parent.left
            right: menuButton.left
            leftMargin: 18
        }
        height: Theme.headerHeight
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        textStyle: "windowTitle"
        text: "Tarnwik"
        Accessible.role: Accessible.Heading
    }
    ApplicationMenuButton {
        id: menuButton

        anchors {
            right: parent.right
            rightMargin: sidebar.isFolded ? (parent.width - width) / 2 : 10
        }
        y: (Theme.headerHeight - height) / 2
        actions: sidebar.actions
    }
    Column {
        anchors {
            top: parent.top
            left: parent.left
            right: parent.right
            topMargin: Theme.headerHeight + 4
            leftMargin: 10
            rightMargin: 10
        }
        spacing: 2
        Accessible.role: Accessible.List
        Accessible.name: "Sections"

        Repeater {
            id: rows

            function choose(index: int) {
                const row = itemAt(index);
                row?.forceActiveFocus(Qt.TabFocusReason);
                row?.clicked();
            }

            model: sidebar.appModel.sections

            SidebarRow {
                required property int index
                required property var modelData

                width: parent.width
                text: modelData.title
                symbol: modelData.symbol
                isFolded: sidebar.isFolded
                isSelected: sidebar.appModel.selectedSection === modelData.section
                onClicked: sidebar.appModel.selectedSection = modelData.section
                Keys.onUpPressed: rows.choose(index - 1)
                Keys.onDownPressed: rows.choose(index + 1)
            }
        }
    }
    Rectangle {
        anchors {
            top: parent.top
            bottom: parent.bottom
            right: parent.right
        }
        width: 1
        color: Theme.hairline
    }
}
