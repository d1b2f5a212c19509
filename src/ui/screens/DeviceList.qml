pragma ComponentBehavior: Bound
import QtQuick
import Tarnwik.Controls

/// The account's devices.
Column {
    id: list

    required property var devices

    spacing: Theme.listGap

    SectionHeading {
        objectName: "devicesHeading"
        text: "Devices"
    }
    Label {
        objectName: "noDevices"
        visible: list.devices.count === 0
        width: parent.width
        color: Theme.secondary
        text: "A local device profile will be created on first connect."
        wrapMode: Text.Wrap
    }
    Repeater {
        model: list.devices

        DeviceRow {
            width: parent.width
        }
    }
}
