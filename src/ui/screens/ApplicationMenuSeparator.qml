import QtQuick
import QtQuick.Templates as T
import Tarnwik.Controls

/// The line between two groups of a menu.
T.MenuSeparator {
    implicitHeight: 11
    Accessible.role: Accessible.Separator

    contentItem: Item {
        Hairline {
            anchors {
                left: parent.left
                right: parent.right
                leftMargin: 10
                rightMargin: 10
                verticalCenter: parent.verticalCenter
            }
        }
    }
}
