import QtQuick

// As little as a program with Qt Quick can be: what our own windows cost more than this is ours.
Window {
    visible: true
    width: 960
    height: 680
    title: "Bare window"

    Rectangle {
        width: 200
        height: parent.height
        color: "#eae9ee"
    }
    Text {
        x: 224
        y: 24
        text: "Qt Quick"
        font.pixelSize: 22
        textFormat: Text.PlainText
    }
}
