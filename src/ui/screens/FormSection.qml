import QtQuick
import Tarnwik.Controls

/// Some cells of a form on one card, below their heading where they have one.
Column {
    id: section

    property string heading
    default property alias cells: column.data

    spacing: Theme.listGap

    SectionHeading {
        visible: text !== ""
        text: section.heading
    }
    Card {
        width: parent.width
        height: column.height

        Column {
            id: column

            width: parent.width
        }
    }
}
