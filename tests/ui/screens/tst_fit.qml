// Stand-ins, and what is found on a screen, have no types that could be checked.
// qmllint disable
import QtQuick
import QtQuick.Templates as T
import QtTest
import Tarnwik
import Tarnwik.Controls

/// Whether everything has its room, whatever the window's size, the text's size, and what the server sends.
ScreenTest {
    id: test

    readonly property var sections: ["connect", "account", "settings"]
    readonly property string longText: "Longest".repeat(1500)

    name: "Fit"
    screen: Component {
        RootView {
            appModel: test.standIns.appModel
            vpnController: test.standIns.vpnController
            appStoreSubscriptions: test.standIns.appStoreSubscriptions
            actions: test.standIns.actions
            tasks: test.standIns.tasks
        }
    }

    function isPiece(item) {
        return item instanceof Text || item instanceof T.AbstractButton || item instanceof T.ComboBox
            || item instanceof T.TextField || item instanceof T.TextArea || item instanceof Icon
    }
    /// The outermost things that a person sees or works.
    function pieces() {
        const found = []
        const visit = item => {
            if (!item.visible || item.width <= 0 || item.height <= 0)
                return
            if (isPiece(item))
                found.push(item)
            else
                for (let index = 0; index < item.children.length; ++index)
                    visit(item.children[index])
        }
        visit(shown)
        return found
    }
    function describe(item) { return item + " " + (item.objectName || (item.text ?? "").slice(0, 40)) }
    /// What is wrong with the places of things, or "".
    function trouble() {
        const list = pieces().map(item => ({ item: item, place: placeOf(item) }))
        for (const one of list) {
            if (one.place.x < 0 || one.place.x + one.place.width > shown.width + 0.5)
                return describe(one.item) + " leaves the window"
            for (const other of list) {
                if (one === other)
                    break
                const apart = one.place.x + one.place.width <= other.place.x + 0.5 || other.place.x + other.place.width <= one.place.x + 0.5
                           || one.place.y + one.place.height <= other.place.y + 0.5 || other.place.y + other.place.height <= one.place.y + 0.5
                if (!apart)
                    return describe(one.item) + " lies over " + describe(other.item)
            }
        }
        return list.length > 0 ? "" : "nothing is shown"
    }
    function verifyNothingOverlaps() {
        // A list makes the rows just out of sight a little later.
        for (let attempt = 0; attempt < 20 && trouble() !== ""; ++attempt)
            wait(20)
        compare(trouble(), "")
    }
    function fillWithHostileTexts(text) {
        standIns.appModel.isSignedIn = true
        standIns.appModel.serverURLString = text
        standIns.appModel.errorMessage = text.slice(0, 600)
        standIns.appModel.account = standIns.accountWith({ email: text, statusLine: "Account " + text.slice(0, 300), billingProvider: text, usageCaption: text.slice(0, 100) })
        for (let index = 0; index < 3; ++index)
            standIns.addNode(text, text, text, true, text)
        standIns.appModel.selectedNode = { name: text, runtimeLine: text, caption: text }
        standIns.appModel.selectedNodeIndex = 0
        standIns.appModel.devices.append({ name: text, detail: text, isEnabled: true })
        standIns.appStoreSubscriptions.errorMessage = text.slice(0, 600)
        standIns.appStoreSubscriptions.statusMessage = text.slice(0, 600)
        standIns.appStoreSubscriptions.plans.setProperty(0, "priceLine", text.slice(0, 200))
    }

    function test_nothingOverlaps_data() {
        const rows = []
        for (const section of sections)
            for (const size of [[420, 540], [599, 540], [600, 540], [960, 680]])
                for (const scale of [1, 1.25, 2])
                    for (const content of ["full", "long", "empty"])
                        rows.push({ tag: [section, size.join("x"), "text x" + scale, content].join(", "),
                                    section: section, width: size[0], height: size[1], scale: scale, content: content })
        return rows
    }
    function test_nothingOverlaps(data) {
        Theme.textScale = data.scale
        standIns.appModel.selectedSection = data.section
        if (data.content === "full")
            standIns.fill()
        else if (data.content === "long")
            fillWithHostileTexts(longText)
        standIns.appModel.isSignedIn = true
        standIns.appModel.errorMessage = "The server could not be reached. Check the address and your network."
        show(data)
        verifyNothingOverlaps()
    }
    function test_signInHasRoom_data() {
        const rows = []
        for (const size of [[420, 540], [960, 680]])
            for (const scale of [1, 2])
                for (const error of ["", "The server could not be reached.", longText.slice(0, 600)])
                    rows.push({ tag: [size.join("x"), "text x" + scale, "error of " + error.length].join(", "),
                                width: size[0], height: size[1], scale: scale, error: error })
        return rows
    }
    function test_signInHasRoom(data) {
        Theme.textScale = data.scale
        if (data.error !== "")
            standIns.appModel.errorMessage = data.error
        show(data)
        verifyNothingOverlaps()
    }
    function test_actionControlHasRoomInEveryForm_data() {
        return [
            { tag: "disconnect", state: VPNActionState.CanDisconnect, title: "Disconnect" },
            { tag: "transition", state: VPNActionState.InTransition, title: "Disconnecting" }
        ]
    }
    function test_actionControlHasRoomInEveryForm(data) {
        Theme.textScale = 2
        standIns.fill()
        standIns.actions.vpn.state = data.state
        standIns.actions.vpn.title = data.title
        standIns.vpnController.statusLabel = data.title
        show({ width: 420, height: 540 })
        compare(findWhere(item => item.textStyle === "largeTitle").truncated, false)
        verifyNothingOverlaps()
    }

    function test_serversTextsAreShownAsTheyAre_data() {
        return [
            { tag: "markup", text: "<b>bold</b><img src='https://evil.example/x.png'>&amp;" },
            { tag: "right to left", text: "\u202eevil\u202c שלום" },
            { tag: "control characters", text: "a\u0001b\tc" }
        ]
    }
    function test_serversTextsAreShownAsTheyAre(data) {
        fillWithHostileTexts(data.text)
        for (const section of sections) {
            standIns.appModel.selectedSection = section
            show()
            for (const item of all(candidate => candidate instanceof Text))
                compare(item.textFormat, Text.PlainText, describe(item))
            for (const item of all(candidate => candidate instanceof TextEdit))
                compare(item.textFormat, TextEdit.PlainText, describe(item))
            verify(findText(data.text), section)
            verifyNothingOverlaps()
            shown.destroy()
        }
    }
    function test_longTextsAreElidedAndWholeInATooltip() {
        fillWithHostileTexts(longText)
        show({ width: 420, height: 540 })
        const line = find("runtimeLine")
        verify(line.truncated)
        compare(line.lineCount, 1)
        compare(line.Accessible.name, longText)
        mouseMove(line, 20, 5)
        const overlay = test.T.Overlay.overlay
        tryVerify(() => all(item => item.text === longText, overlay).length > 0)
    }
    function test_errorsAreNeverCutOff() {
        standIns.fill()
        standIns.appModel.errorMessage = longText.slice(0, 2000)
        show({ width: 420, height: 540 })
        const error = find("error")
        verify(error.height >= error.contentHeight)
        verify(error.contentWidth <= error.width)
        verify(error.selectByMouse)
    }
    function test_everyControlHasNameAndRole_data() { return sections.map(section => ({ tag: section })) }
    function test_everyControlHasNameAndRole(data) {
        standIns.fill()
        standIns.appModel.selectedSection = data.tag
        show()
        const chain = focusChain()
        verify(chain.length >= 4)
        for (const item of chain) {
            verify(item.Accessible.name !== "", describe(item))
            verify(item.Accessible.role !== Accessible.NoRole, describe(item))
        }
    }
}
