import QtQuick
import QtQuick.Templates as T
import Tarnwik.Controls

/// What went wrong, in words that can be selected and are never cut; not seen while there are none. It is read out when
/// it appears and when it changes.
T.TextArea {
    id: error

    property string textStyle: "body"

    readonly property int accessibleRole: Accessible.AlertMessage
    readonly property bool wasTabbedTo: focusReason === Qt.TabFocusReason || focusReason === Qt.BacktabFocusReason

    visible: text !== ""
    implicitWidth: contentWidth
    implicitHeight: contentHeight + topPadding + bottomPadding
    padding: 0
    readOnly: true
    selectByMouse: true
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap
    font: Theme.font(textStyle)
    color: Theme.red
    selectionColor: Theme.accentFill
    selectedTextColor: Theme.textOnAccent

    Accessible.role: accessibleRole
    Accessible.name: text
    Accessible.readOnly: true
    onTextChanged: Announcer.announce(error)
    onVisibleChanged: Announcer.announce(error)

    background: Item {
        FocusRing {
            visible: error.activeFocus && error.wasTabbedTo
            innerRadius: 3
        }
    }
}
