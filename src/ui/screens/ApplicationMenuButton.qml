// Components that a loader or a list makes cannot be bound in Qt 6.4.
// qmllint disable unqualified
import QtQuick
import Tarnwik.Controls

/// Opens the application's menu below it. The menu is built when it is asked for first.
ToolButton {
    id: button

    required property var actions

    readonly property ApplicationMenu menu: loader.item as ApplicationMenu

    /// What has the focus back after the menu, and how the button came to it where that is the button.
    property Item formerFocus: null
    property int menuReason: Qt.OtherFocusReason
    property bool isWorkedByKeyboard: false

    objectName: "menuButton"
    symbol: "line.3.horizontal"
    isOpen: menu?.visible ?? false
    // A press leaves the focus with the field that has it.
    focusPolicy: Qt.TabFocus
    Accessible.name: "Menu"
    readonly property int accessibleRole: Accessible.ButtonMenu
    Accessible.role: accessibleRole
    onClicked: {
        if (!isOpen) {
            formerFocus = Window.activeFocusItem;
            menuReason = focusReason;
        }
        isWorkedByKeyboard = visualFocus;
        loader.active = true;
        menu.visible ? menu.close() : menu.open();
    }

    Loader {
        id: loader

        active: false
        sourceComponent: ApplicationMenu {
            parent: button
            actions: button.actions
            onOpened: currentIndex = button.isWorkedByKeyboard ? 0 : -1
            // A menu leaves the focus nowhere, but where it was left for another control.
            onClosed: {
                if (button.Window.activeFocusItem?.activeFocusOnTab)
                    return;
                const former = button.formerFocus?.activeFocusOnTab ? button.formerFocus : button;
                former.forceActiveFocus(button.menuReason);
            }
        }
    }
}
