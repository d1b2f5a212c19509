import QtQuick
import Tarnwik.Controls

/// How much of something is used up: a bar, and the same in words below it.
Column {
    id: meter

    /// From 0 to 1; what lies outside is drawn as the nearer end.
    required property real value
    required property string caption
    /// What is measured, for those who do not see the bar.
    property string name: "Usage"

    readonly property real fraction: Math.min(1, Math.max(0, value))

    spacing: 6

    Rectangle {
        width: parent.width
        height: Theme.meterHeight
        radius: height / 2
        color: Theme.track
        Accessible.role: Accessible.ProgressBar
        Accessible.name: meter.name
        Accessible.description: meter.caption

        Rectangle {
            objectName: "meterFill"
            // Any use at all is seen.
            width: meter.fraction > 0 ? Math.max(height, parent.width * meter.fraction) : 0
            height: parent.height
            radius: parent.radius
            color: Theme.accent
        }
    }

    Label {
        width: parent.width
        visible: text !== ""
        textStyle: "caption"
        color: Theme.secondary
        text: meter.caption
        wrapMode: Text.Wrap
    }
}
