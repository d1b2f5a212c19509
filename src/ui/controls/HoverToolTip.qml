import QtQuick
import Tarnwik.Controls

/// A tooltip that is built only when it is wanted, since most never are.
Loader {
    id: loader

    required property Item owner
    required property bool isWanted
    required property string text
    /// Beside the owner instead of below it.
    property bool isBeside: false

    objectName: "hoverToolTip"
    active: isWanted && text !== ""
    sourceComponent: ToolTip {}

    // The tooltip shows itself as soon as it knows where.
    Binding { target: loader.item; property: "text"; value: loader.text }
    Binding { target: loader.item; property: "isBeside"; value: loader.isBeside }
    Binding { target: loader.item; property: "parent"; value: loader.owner }
    Binding { target: loader.item; property: "visible"; value: true }
}
