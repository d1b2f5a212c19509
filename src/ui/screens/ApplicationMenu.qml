import QtQuick
import QtQuick.Templates as T
import Tarnwik.Controls

/// The application's menu: what a menu bar would show, from the program's own actions.
T.Menu {
    id: menu

    required property var actions

    y: parent.height + 4
    margins: 6
    padding: 5
    implicitWidth: Math.max(220, openDashboard.implicitWidth, vpn.implicitWidth, refresh.implicitWidth,
                            quit.implicitWidth) + leftPadding + rightPadding
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    // A press on the button that it belongs to is the button's, which then closes it.
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    // Left for another control it would stay, deaf to Escape, and keep the window's shortcuts from working.
    onActiveFocusChanged: if (opened && !activeFocus && !parent.activeFocus) close()

    background: Card {
        border.color: Theme.controlBorder
    }
    contentItem: ListView {
        implicitHeight: contentHeight
        clip: true
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        model: menu.contentModel
        currentIndex: menu.currentIndex
        Accessible.role: Accessible.PopupMenu
        Accessible.name: "Tarnwik"
    }

    ApplicationMenuItem {
        id: openDashboard
        command: menu.actions.openDashboard
    }
    ApplicationMenuSeparator {}
    ApplicationMenuItem {
        id: vpn
        command: menu.actions.vpn
    }
    ApplicationMenuSeparator {}
    ApplicationMenuItem {
        id: refresh
        command: menu.actions.refresh
    }
    ApplicationMenuItem {
        command: menu.actions.settings
    }
    ApplicationMenuSeparator {}
    ApplicationMenuItem {
        command: menu.actions.signOut
    }
    ApplicationMenuSeparator {}
    ApplicationMenuItem {
        id: quit
        command: menu.actions.quit
    }
}
