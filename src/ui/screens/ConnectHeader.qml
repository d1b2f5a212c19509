import QtQuick
import Tarnwik.Controls

/// What the Connect screen shows above the nodes: state, exit-node picker, action control, error, and the nodes'
/// heading.
Column {
    id: header

    required property var appModel
    required property var vpnController
    required property var vpnAction

    readonly property bool hasNodes: appModel.nodes.count > 0

    spacing: Theme.blockGap

    Column {
        width: parent.width
        spacing: 8

        ElidedLabel {
            objectName: "status"
            width: parent.width
            textStyle: "largeTitle"
            text: header.vpnController.statusLabel
            // One long word, which gets smaller where large text leaves it no room.
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Theme.font("body").pixelSize
            Accessible.role: Accessible.Heading
        }
        ElidedLabel {
            objectName: "runtimeLine"
            width: parent.width
            color: Theme.secondary
            text: header.appModel.selectedNode?.runtimeLine ?? "No node selected"
        }
        UsageMeter {
            objectName: "meter"
            visible: header.appModel.account !== undefined
            width: parent.width
            account: header.appModel.account
        }
    }
    ExitNodePicker {
        objectName: "exitNode"
        visible: header.hasNodes
        width: parent.width
        appModel: header.appModel
    }
    VPNActionControl {
        width: parent.width
        action: header.vpnAction
    }
    ErrorText {
        objectName: "error"
        width: parent.width
        textStyle: "footnote"
        text: header.appModel.errorMessage ?? ""
    }
    Column {
        width: parent.width
        spacing: Theme.listGap

        SectionHeading {
            objectName: "nodesHeading"
            text: "Nodes"
        }
        Card {
            objectName: "noNodes"
            visible: !header.hasNodes
            width: parent.width
            height: empty.height + 48

            EmptyState {
                id: empty

                anchors.centerIn: parent
                width: parent.width - 48
                symbol: "network.slash"
                title: "No nodes"
                description: "No Tarnwik exit nodes are available for this account."
            }
        }
    }
}
