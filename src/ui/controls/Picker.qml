pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Tarnwik.Controls

/// A pop-up list to choose one entry of. It is as wide as its text, between its minimum and the room it is given; an
/// index of -1 shows nothing chosen.
T.ComboBox {
    id: combo

    implicitWidth: Math.max(Theme.pickerMinimumWidth, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Theme.controlHeight
    leftPadding: 10
    rightPadding: Theme.statusIconSize + 16
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    font: Theme.font("body")

    Accessible.role: Accessible.ComboBox
    Accessible.description: displayText
    // Its keys are those of the list too: opened from outside it takes the focus as well.
    Accessible.onPressAction: {
        if (!enabled)
            return;
        forceActiveFocus(Qt.PopupFocusReason);
        popup.open();
    }

    delegate: PickerRow {
        picker: combo
    }

    popup: PickerPopup {
        picker: combo
    }

    contentItem: Text {
        text: combo.displayText
        font: combo.font
        color: combo.enabled ? Theme.primary : Theme.disabledText
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        verticalAlignment: Text.AlignVCenter
    }

    indicator: Icon {
        x: combo.width - width - 8
        y: (combo.height - height) / 2
        symbol: "chevron.up.chevron.down"
        size: Theme.statusIconSize
        color: combo.enabled ? Theme.secondary : Theme.disabledText
    }

    background: Rectangle {
        radius: Theme.controlRadius
        color: !combo.enabled ? Theme.controlDisabled
             : combo.down ? Theme.controlPressed
             : combo.hovered ? Theme.controlHover : Theme.control
        border.width: 1
        border.color: combo.enabled ? Theme.controlBorder : "transparent"

        FocusRing {
            visible: combo.visualFocus
        }
    }

    HoverToolTip {
        owner: combo
        isWanted: combo.hovered && !combo.popup.visible && (combo.contentItem as Text).truncated
        text: combo.displayText
    }
}
