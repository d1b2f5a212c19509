// Stand-ins, and what is found on a screen, have no types that could be checked.
// qmllint disable
import QtQuick
import QtTest
import Tarnwik
import Tarnwik.Controls

ScreenTest {
    id: test

    name: "Settings"
    screen: Component {
        SettingsView {
            appModel: test.standIns.appModel
            actions: test.standIns.actions
        }
    }

    function test_sectionsStandInTheirOrder() {
        show()
        const order = [findText("Server"), find("serverURL"), find("settingsRefresh"), findText("Support"), find("emailSupport"), find("privacy"), find("settingsSignOut")]
        for (let index = 1; index < order.length; ++index)
            verify(placeOf(order[index]).y >= placeOf(order[index - 1]).y + order[index - 1].height)
        verify(findText("Server") instanceof SectionHeading)
        verify(findText("Support") instanceof SectionHeading)
        compare(all(item => item instanceof SectionHeading).length, 2)
    }
    function test_serverAddressIsShownAsItWasTyped() {
        standIns.appModel.serverURLString = " HTTPS://Api.Example/ "
        show()
        compare(find("serverURL").text, " HTTPS://Api.Example/ ")
        standIns.appModel.serverURLString = "not an address"
        compare(find("serverURL").text, "not an address")
    }
    function test_refreshRefreshes() {
        show()
        compare(find("settingsRefresh").text, "Refresh")
        click(find("settingsRefresh"))
        compare(standIns.actions.settingsRefresh.triggered, 1)
        compare(standIns.actions.refresh.triggered, 0)
    }
    function test_supportLinkWritesALetter() {
        show()
        const link = find("emailSupport")
        verify(link instanceof LinkButton)
        compare(link.text, "Email support")
        click(link)
        compare(standIns.actions.emailSupport.triggered, 1)
    }
    function test_privacyStatement() {
        show()
        compare(find("privacy").text, "Tarnwik enforces account, payment, quota, and abuse policy using metadata only.")
        compare(find("privacy").color, Theme.secondary)
    }
    function test_signOutIsDestructive() {
        show()
        const button = find("settingsSignOut")
        compare([button.text, button.symbol, button.destructive], ["Sign Out", "rectangle.portrait.and.arrow.right", true])
        click(button)
        compare(standIns.actions.settingsSignOut.triggered, 1)
        compare(standIns.actions.signOut.triggered, 0)
    }
    function test_signedOutOrLoadingAllIsEnabled_data() {
        return [
            { tag: "signed out", isSignedIn: false, isLoading: false },
            { tag: "loading", isSignedIn: true, isLoading: true }
        ]
    }
    function test_signedOutOrLoadingAllIsEnabled(data) {
        standIns.appModel.isSignedIn = data.isSignedIn
        standIns.appModel.isLoading = data.isLoading
        standIns.actions.refresh.isEnabled = false
        standIns.actions.signOut.isEnabled = false
        show()
        verify(find("settingsRefresh").enabled)
        verify(find("settingsSignOut").enabled)
    }
    function test_cellsHaveRoomForTheirContents() {
        show()
        const cellOf = name => {
            let item = find(name)
            while (!(item instanceof FormCell))
                item = item.parent
            return item
        }
        compare(cellOf("serverURL").height, 40)
        compare(cellOf("settingsRefresh").height, 44)
        compare(cellOf("emailSupport").height, 40)
        compare(cellOf("settingsSignOut").height, 44)
        shown.width = 300
        verify(find("privacy").lineCount > 1)
        compare(cellOf("privacy").height, find("privacy").height + 2 * Theme.cardPadding)
    }
    function test_tabGoesInReadingOrder() {
        show()
        compare(focusChain().map(item => item.objectName).filter(name => name !== ""), ["settingsRefresh", "emailSupport", "settingsSignOut"])
    }
}
