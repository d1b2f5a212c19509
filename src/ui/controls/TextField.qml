pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Tarnwik.Controls

/// One line of text to type.
T.TextField {
    id: field

    readonly property bool wasTabbedTo: focusReason === Qt.TabFocusReason || focusReason === Qt.BacktabFocusReason

    implicitWidth: Theme.fieldWidth
    implicitHeight: Theme.controlHeight
    leftPadding: 8
    rightPadding: 8
    verticalAlignment: TextInput.AlignVCenter
    selectByMouse: true
    // A text that is too long shows its beginning until somebody edits it.
    autoScroll: activeFocus
    font: Theme.font("body")
    color: enabled ? Theme.primary : Theme.disabledText
    placeholderTextColor: enabled ? Theme.secondary : Theme.disabledText
    selectionColor: Theme.accentFill
    selectedTextColor: Theme.textOnAccent

    // What Tab comes to is ready to be typed over.
    onActiveFocusChanged: if (activeFocus && wasTabbedTo) selectAll()

    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText

    cursorDelegate: TextCursor {
        owner: field
    }

    background: Rectangle {
        radius: Theme.controlRadius
        color: field.enabled ? Theme.field : Theme.controlDisabled
        border.width: 1
        border.color: !field.enabled ? "transparent"
                    : field.activeFocus ? Theme.accent : Theme.controlBorder

        FocusRing {
            visible: field.activeFocus
            tint: Theme.fieldRing
        }
    }

    Text {
        objectName: "placeholder"
        anchors { fill: parent; leftMargin: field.leftPadding; rightMargin: field.rightPadding }
        visible: field.length === 0 && field.preeditText === ""
        text: field.placeholderText
        font: field.font
        color: field.placeholderTextColor
        textFormat: Text.PlainText
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }
}
