import QtQuick
import Tarnwik.Controls

/// Chooses the exit node. Only a person's choice is written; what the model has is shown, and nothing where it has
/// none.
Flow {
    id: row

    required property var appModel

    // An emptied list takes the picker's index with it, and a filled one does not bring it back: hence the count.
    readonly property int chosenIndex: appModel.nodes.count > 0 ? appModel.selectedNodeIndex : -1

    // The picker goes below its title where it would have less than its least width beside it.
    readonly property real roomBeside: width - title.width - spacing
    readonly property real room: roomBeside >= Theme.pickerMinimumWidth ? roomBeside : width

    spacing: 8

    Label {
        id: title

        height: picker.height
        verticalAlignment: Text.AlignVCenter
        text: "Exit node"
    }
    Picker {
        id: picker

        objectName: "picker"
        width: Math.min(implicitWidth, row.room)
        model: row.appModel.nodes
        textRole: "caption"
        currentIndex: row.chosenIndex
        displayText: row.chosenIndex < 0 ? "" : row.appModel.selectedNode?.caption ?? ""
        Accessible.name: "Exit node"
        onActivated: index => {
            row.appModel.selectNode(index);
            // What the model made of it counts, also where it made nothing of it.
            currentIndex = Qt.binding(() => row.chosenIndex);
        }
    }
}
