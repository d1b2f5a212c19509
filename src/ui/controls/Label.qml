import QtQuick
import Tarnwik.Controls

/// One piece of text in a style of the theme.
Text {
    /// One of the names in Theme.fonts.
    property string textStyle: "body"

    color: Theme.primary
    font: Theme.font(textStyle)
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
