// Stand-ins, and what is found on a screen, have no types that could be checked.
// qmllint disable
import QtQuick
import QtTest
import Tarnwik
import Tarnwik.Controls

ScreenTest {
    id: test

    name: "SignIn"
    screen: Component {
        SignInView {
            appModel: test.standIns.appModel
            actions: test.standIns.actions
        }
    }

    function typeCredentials(email, password) {
        find("email").text = email
        find("password").text = password
    }

    function test_showsItsTextsInTheirOrder() {
        show()
        const title = findText("Tarnwik")
        const subtitle = findText("Sign in with your invite-created account.")
        const order = [title, subtitle, find("server"), find("email"), find("password"), find("signIn")]
        for (let index = 1; index < order.length; ++index)
            verify(placeOf(order[index]).y > placeOf(order[index - 1]).y)
        compare(title.textStyle, "largeTitle")
        compare(subtitle.color, Theme.secondary)
    }
    function test_fieldsNameThemselves() {
        show()
        compare(find("server").placeholderText, "Server URL")
        compare(find("email").placeholderText, "Email")
        compare(find("password").placeholderText, "Password")
        compare(find("email").Accessible.name, "Email")
    }
    function test_emailAndPasswordStartEmpty() {
        show()
        compare(find("email").text, "")
        compare(find("password").text, "")
    }
    function test_passwordIsMasked() {
        show()
        compare(find("password").echoMode, TextInput.Password)
    }
    function test_fieldsTellKeyboardsWhatBelongsInThem_data() {
        return [
            { tag: "server", has: Qt.ImhUrlCharactersOnly | Qt.ImhNoAutoUppercase,
              lacks: Qt.ImhEmailCharactersOnly | Qt.ImhHiddenText | Qt.ImhSensitiveData },
            { tag: "email", has: Qt.ImhEmailCharactersOnly | Qt.ImhNoAutoUppercase,
              lacks: Qt.ImhUrlCharactersOnly | Qt.ImhHiddenText | Qt.ImhSensitiveData },
            { tag: "password",
              has: Qt.ImhHiddenText | Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase,
              lacks: Qt.ImhUrlCharactersOnly | Qt.ImhEmailCharactersOnly }
        ]
    }
    function test_fieldsTellKeyboardsWhatBelongsInThem(data) {
        show()
        // What an input method is told: the field's own hints, and what Qt adds to them.
        const hints = find(data.tag).inputMethodQuery(Qt.ImHints, undefined)
        compare(hints & data.has, data.has)
        compare(hints & data.lacks, 0)
    }
    function test_passwordSaysItselfThatItIsNoneOfTheKeyboardsBusiness() {
        show()
        const hints = Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
        compare(find("password").inputMethodHints & hints, hints)
    }
    function test_serverFieldShowsAndEditsTheModelsAddress() {
        standIns.appModel.serverURLString = "https://one.example"
        show()
        const server = find("server")
        compare(server.text, "https://one.example")
        server.forceActiveFocus()
        server.cursorPosition = server.length
        keyClick(Qt.Key_Slash)
        compare(standIns.appModel.serverURLString, "https://one.example/")
        standIns.appModel.serverURLString = "https://two.example"
        compare(server.text, "https://two.example")
    }
    function test_signInIsDisabledWithoutEmailOrPassword_data() {
        return [
            { tag: "both empty", email: "", password: "", isEnabled: false },
            { tag: "no email", email: "", password: "x", isEnabled: false },
            { tag: "no password", email: "x", password: "", isEnabled: false },
            { tag: "both", email: "x", password: "y", isEnabled: true },
            { tag: "a password of one blank", email: "x", password: " ", isEnabled: true },
            { tag: "an email of one blank", email: " ", password: "y", isEnabled: true }
        ]
    }
    function test_signInIsDisabledWithoutEmailOrPassword(data) {
        show()
        typeCredentials(data.email, data.password)
        compare(find("signIn").enabled, data.isEnabled)
    }
    function test_emptyServerAddressDoesNotDisableSignIn() {
        standIns.appModel.serverURLString = ""
        show()
        typeCredentials("x", "y")
        verify(find("signIn").enabled)
    }
    function test_signInButtonHasItsTitleAndIcon() {
        show()
        compare(find("signIn").text, "Sign In")
        compare(find("signIn").symbol, "arrow.right.circle.fill")
        verify(!find("signIn").busy)
    }
    function test_whileLoadingTheButtonSpinsAndIsDisabled() {
        show()
        typeCredentials("x", "y")
        standIns.appModel.isLoading = true
        verify(find("signIn").busy)
        verify(!find("signIn").enabled)
        mouseClick(find("signIn"))
        compare(standIns.appModel.signIns.length, 0)
        standIns.appModel.isLoading = false
        verify(!find("signIn").busy)
        verify(find("signIn").enabled)
    }
    function test_pressSignsInWithWhatWasTypedAsItIs() {
        show()
        typeCredentials(" Mira@Example.org ", " secret ")
        click(find("signIn"))
        compare(standIns.appModel.signIns, [[" Mira@Example.org ", " secret "]])
    }
    function test_returnPressesSignIn_data() { return [{ tag: "server" }, { tag: "email" }, { tag: "password" }] }
    function test_returnPressesSignIn(data) {
        show()
        typeCredentials("x", "y")
        find(data.tag).forceActiveFocus()
        keyClick(Qt.Key_Return)
        compare(standIns.appModel.signIns, [["x", "y"]])
    }
    function test_returnDoesNothingWhileSignInIsDisabled() {
        show()
        typeCredentials("x", "")
        find("email").forceActiveFocus()
        keyClick(Qt.Key_Return)
        typeCredentials("x", "y")
        standIns.appModel.isLoading = true
        keyClick(Qt.Key_Return)
        compare(standIns.appModel.signIns.length, 0)
    }
    function test_failureKeepsWhatWasTyped() {
        show()
        typeCredentials("x", "y")
        click(find("signIn"))
        standIns.appModel.isLoading = true
        standIns.appModel.isLoading = false
        standIns.appModel.errorMessage = "Invalid email or password."
        compare(find("email").text, "x")
        compare(find("password").text, "y")
    }
    function test_errorLineIsThereOnlyWithAnError() {
        show()
        compare(find("error"), null)
        standIns.appModel.errorMessage = "Enter a valid Tarnwik server URL."
        compare(find("error").text, "Enter a valid Tarnwik server URL.")
        compare(find("error").color, Theme.red)
        standIns.appModel.errorMessage = undefined
        compare(find("error"), null)
    }
    function test_earlierErrorIsShownFromTheStart() {
        standIns.appModel.errorMessage = "The Internet connection appears to be offline."
        show()
        compare(find("error").text, "The Internet connection appears to be offline.")
        verify(placeOf(find("error")).y > placeOf(find("signIn")).y)
    }
    function test_errorMovesNoField_data() {
        return [
            { tag: "wide", width: 960, height: 680, scale: 1 },
            { tag: "smallest", width: 420, height: 540, scale: 1 },
            { tag: "smallest, text twice the size", width: 420, height: 540, scale: 2 }
        ]
    }
    function test_errorMovesNoField(data) {
        Theme.textScale = data.scale
        show(data)
        const names = ["server", "email", "password", "signIn"]
        const places = () => names.map(name => placeOf(find(name)).y)
        const before = places()
        standIns.appModel.errorMessage = "A long sentence about what went wrong. ".repeat(20)
        waitForRendering(shown)
        compare(places(), before)
    }
    function test_firstEmptyFieldHasTheFocus_data() {
        return [{ tag: "email", server: "https://api.tarnwik.example" }, { tag: "server", server: "" }]
    }
    function test_firstEmptyFieldHasTheFocus(data) {
        standIns.appModel.serverURLString = data.server
        show()
        tryVerify(() => find(data.tag).activeFocus)
    }
    function test_tabGoesInReadingOrder() {
        show()
        typeCredentials("x", "y")
        const names = focusChain().map(item => item.objectName).filter(name => name !== "")
        compare(names, ["menuButton", "server", "email", "password", "signIn"])
    }
    function test_columnIsAtMost320WideAndAboveTheMiddle() {
        show()
        compare(find("email").width, 320)
        const form = placeOf(find("email"))
        compare(Math.round(form.x + form.width / 2), 480)
        verify(placeOf(find("signIn")).y + 32 < 680 * 0.66)
    }
    function test_headingStandsAtTheLeadingEdgeInBold() {
        show()
        const title = findText("Tarnwik")
        compare(title.font.weight, Font.Bold)
        for (const line of [title, findText("Sign in with your invite-created account.")]) {
            compare(line.effectiveHorizontalAlignment, Text.AlignLeft)
            compare(placeOf(line).x, placeOf(find("server")).x)
            compare(line.width, find("server").width)
        }
    }
    function test_aboveTheHeadingIsSomeRoomHoweverLowTheWindow_data() {
        return [
            { tag: "no height to spare", height: 200, scale: 1, top: 28 + 24 + 22 },
            { tag: "low", height: 300, scale: 1, top: 28 + 24 + 22 },
            { tag: "low, text a quarter larger", height: 300, scale: 1.25, top: 28 + 24 + 22 },
            { tag: "low, below the tall header of large text", height: 300, scale: 2, top: 80 },
            { tag: "smallest, text twice the size", height: 540, scale: 2, top: 80 }
        ]
    }
    function test_aboveTheHeadingIsSomeRoomHoweverLowTheWindow(data) {
        Theme.textScale = data.scale
        show({ width: 420, height: data.height })
        // The field with the focus may have been brought into view.
        const view = findWhere(item => item instanceof Flickable)
        compare(placeOf(findText("Tarnwik")).y + view.contentY, data.top)
    }
    function test_freeHeightIsSharedOutAboveAndBelow_data() {
        return [
            { tag: "smallest", height: 540, scale: 1 },
            { tag: "usual", height: 680, scale: 1 },
            { tag: "tall", height: 1100, scale: 1 },
            { tag: "tall, text twice the size", height: 1100, scale: 2 }
        ]
    }
    function test_freeHeightIsSharedOutAboveAndBelow(data) {
        Theme.textScale = data.scale
        show({ width: 420, height: data.height })
        const signIn = placeOf(find("signIn"))
        const above = placeOf(findText("Tarnwik")).y - 28
        const below = data.height - 28 - signIn.y - signIn.height
        verify(above > 24 + 22 && below > 24 + 22, above + " and " + below)
        fuzzyCompare(above, (above + below) * 0.46, 1)
    }
    function test_narrowColumnKeepsItsPadding() {
        show({ width: 360, height: 540 })
        compare(find("email").width, 360 - 56)
    }
    function test_gapsAreThoseOfTheForm() {
        show()
        const gap = (upper, lower) => placeOf(lower).y - placeOf(upper).y - upper.height
        compare(gap(find("server"), find("email")), 12)
        compare(gap(find("password"), find("signIn")), 12)
        compare(gap(findText("Tarnwik"), findText("Sign in with your invite-created account.")), 8)
        compare(gap(findText("Sign in with your invite-created account."), find("server")), 22)
    }
    function test_passwordIsClearedWithTheScreen() {
        show()
        typeCredentials("x", "secret")
        const password = find("password")
        let last = password.text
        password.textChanged.connect(() => last = password.text)
        shown.destroy()
        tryVerify(() => last === "")
        shown = null
    }
}
