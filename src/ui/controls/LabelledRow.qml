import QtQuick
import Tarnwik.Controls

/// A label at the left and its value at the right; where large text leaves no room beside the label, below it. The
/// hairline lies in the middle of the gap to the next row.
Item {
    id: row

    required property string label
    required property string value
    /// Whether another row follows.
    property bool isDivided: true

    readonly property int gap: 12
    readonly property bool isStacked: Theme.textScale > 1
                                      && labelText.implicitWidth + gap + valueText.implicitWidth > width

    implicitWidth: labelText.implicitWidth + gap + valueText.implicitWidth
    implicitHeight: isStacked ? valueText.y + valueText.height : Math.max(Theme.iconSize, labelText.height)

    ElidedLabel {
        id: labelText
        width: Math.min(implicitWidth, row.width)
        text: row.label
    }

    ElidedLabel {
        id: valueText
        x: row.isStacked ? 0 : labelText.width + row.gap
        y: row.isStacked ? labelText.height + 2 : 0
        width: Math.max(0, row.width - x)
        text: row.value
        color: Theme.secondary
        horizontalAlignment: row.isStacked ? Text.AlignLeft : Text.AlignRight
    }

    Hairline {
        visible: row.isDivided
        y: row.height + Theme.blockGap / 2
        width: parent.width
    }
}
