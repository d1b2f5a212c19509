import QtQuick
import QtQuick.Templates as T
import Tarnwik.Controls

/// Asks for the server and for who signs in. The column stands by its height without the error line, so that an error
/// never moves a field.
FocusScope {
    id: screen

    required property var appModel
    required property var actions

    readonly property int padding: 28

    focus: true

    Component.onCompleted: (server.text === "" ? server : email).forceActiveFocus(Qt.OtherFocusReason)
    // The password ends with the screen, even where somebody still holds the field.
    Component.onDestruction: password.clear()

    ApplicationMenuButton {
        z: 1
        anchors {
            top: parent.top
            right: parent.right
            margins: (Theme.headerHeight - height) / 2
        }
        actions: screen.actions
    }

    Flickable {
        id: view

        anchors.fill: parent
        contentWidth: width
        contentHeight: Math.max(height, column.y + column.height + screen.padding)
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollBar {}

        Column {
            id: column

            readonly property real fixedHeight: heading.height + spacing + form.height
            readonly property real freeHeight: screen.height - 2 * screen.padding - fixedHeight

            x: (parent.width - width) / 2
            // Above the middle, and below the menu button where there is little room.
            y: Math.max(Theme.headerHeight, screen.padding + 24 + spacing, screen.padding + freeHeight * 0.46)
            width: Math.min(Theme.signInMaximumWidth, screen.width - 2 * screen.padding)
            spacing: 22

            Column {
                id: heading

                width: parent.width
                spacing: 8

                Label {
                    width: parent.width
                    textStyle: "largeTitle"
                    text: "Tarnwik"
                    wrapMode: Text.Wrap
                    Accessible.role: Accessible.Heading
                }
                Label {
                    width: parent.width
                    color: Theme.secondary
                    text: "Sign in with your invite-created account."
                    wrapMode: Text.Wrap
                }
            }
            Column {
                id: form

                width: parent.width
                spacing: 12

                TextField {
                    id: server

                    objectName: "server"
                    width: parent.width
                    placeholderText: "Server URL"
                    inputMethodHints: Qt.ImhUrlCharactersOnly | Qt.ImhNoAutoUppercase
                    text: screen.appModel.serverURLString
                    onTextEdited: screen.appModel.serverURLString = text
                    onAccepted: signIn.press()
                }
                TextField {
                    id: email

                    objectName: "email"
                    width: parent.width
                    placeholderText: "Email"
                    inputMethodHints: Qt.ImhEmailCharactersOnly | Qt.ImhNoAutoUppercase
                    onAccepted: signIn.press()
                }
                PasswordField {
                    id: password

                    objectName: "password"
                    width: parent.width
                    placeholderText: "Password"
                    onAccepted: signIn.press()
                }
                ProminentButton {
                    id: signIn

                    function press() {
                        if (enabled)
                            clicked();
                    }

                    objectName: "signIn"
                    width: parent.width
                    text: "Sign In"
                    symbol: "arrow.right.circle.fill"
                    busy: screen.appModel.isLoading
                    enabled: email.text !== "" && password.text !== "" && !screen.appModel.isLoading
                    onClicked: screen.appModel.signIn(email.text, password.text)
                }
            }
            ErrorText {
                objectName: "error"
                width: parent.width
                text: screen.appModel.errorMessage ?? ""
            }
        }
        ScrollReach {
            view: view
        }
    }
}
