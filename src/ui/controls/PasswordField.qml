import QtQuick
import Tarnwik.Controls

/// One line of text that nobody else should read.
TextField {
    echoMode: TextInput.Password
    passwordCharacter: "•"
    inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
    Accessible.passwordEdit: true
    // Qt 6.4 takes the name of a password field away.
    Accessible.description: placeholderText
}
