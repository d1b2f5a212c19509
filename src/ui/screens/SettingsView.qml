import QtQuick
import Tarnwik.Controls

/// The server in use, the way to support, and sign-out: a section of the dashboard and the content of the settings
/// window.
ScreenScroll {
    id: screen

    required property var appModel
    required property var actions

    FormSection {
        width: parent.width
        heading: "Server"

        FormCell {
            ElidedLabel {
                objectName: "serverURL"
                width: parent.width
                elide: Text.ElideMiddle
                text: screen.appModel.serverURLString
            }
        }
        FormCell {
            isDivided: true
            verticalPadding: 8

            Button {
                objectName: "settingsRefresh"
                text: screen.actions.settingsRefresh.title
                onClicked: screen.actions.settingsRefresh.trigger()
            }
        }
    }
    FormSection {
        width: parent.width
        heading: "Support"

        FormCell {
            verticalPadding: 6

            LinkButton {
                objectName: "emailSupport"
                text: screen.actions.emailSupport.title
                onClicked: screen.actions.emailSupport.trigger()
            }
        }
        FormCell {
            isDivided: true

            Label {
                objectName: "privacy"
                width: parent.width
                color: Theme.secondary
                text: "Tarnwik enforces account, payment, quota, and abuse policy using metadata only."
                wrapMode: Text.Wrap
            }
        }
    }
    FormSection {
        width: parent.width

        FormCell {
            verticalPadding: 8

            Button {
                objectName: "settingsSignOut"
                text: screen.actions.settingsSignOut.title
                symbol: screen.actions.settingsSignOut.symbol
                destructive: true
                onClicked: screen.actions.settingsSignOut.trigger()
            }
        }
    }
}
