import QtQuick
import QtQuick.Templates as T
import Tarnwik.Controls

/// One entry of a picker's list, with a checkmark when it is the chosen one. Its caption is no button text: an "&" in
/// it would be taken for a shortcut.
T.ItemDelegate {
    id: row

    required property T.ComboBox picker
    required property int index
    required property var model

    readonly property string caption: model[picker.textRole === "" ? "modelData" : picker.textRole]
    readonly property bool isChosen: picker.currentIndex === index
    readonly property color tint: highlighted ? Theme.textOnAccent : Theme.primary

    width: ListView.view ? ListView.view.width : 0
    implicitWidth: leftPadding + implicitContentWidth + rightPadding
    implicitHeight: Theme.popupRowHeight
    highlighted: picker.highlightedIndex === index
    leftPadding: Theme.statusIconSize + 12
    rightPadding: 10
    font: Theme.font("body")

    onImplicitWidthChanged: (picker.popup as PickerPopup).widestRow =
        Math.max((picker.popup as PickerPopup).widestRow, implicitWidth)

    Accessible.role: Accessible.ListItem
    Accessible.name: caption
    Accessible.selectable: true
    Accessible.selected: isChosen
    Accessible.onPressAction: if (enabled) clicked()

    background: Rectangle {
        radius: 5
        color: row.highlighted ? Theme.accentFill : "transparent"
    }

    indicator: Icon {
        x: 6
        y: (row.height - height) / 2
        visible: row.isChosen
        symbol: "checkmark"
        size: Theme.statusIconSize
        color: row.tint
    }

    contentItem: ElidedLabel {
        text: row.caption
        color: row.tint
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
