import QtQuick
import Tarnwik.Controls

/// What stands where there is nothing to show: a symbol, a title and why, centred in the width it is given.
Column {
    id: state

    required property string symbol
    required property string title
    property string description: ""

    spacing: 8

    Icon {
        anchors.horizontalCenter: parent.horizontalCenter
        symbol: state.symbol
        size: Theme.emptyStateIconSize
        color: Theme.secondary
    }

    Label {
        width: parent.width
        topPadding: 4
        textStyle: "headline"
        text: state.title
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        Accessible.role: Accessible.Heading
    }

    Label {
        width: parent.width
        topPadding: -4
        visible: text !== ""
        textStyle: "footnote"
        color: Theme.secondary
        text: state.description
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }
}
