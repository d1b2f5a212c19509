import QtQuick
import Tarnwik.Controls

ControlTest {
    id: testCase
    name: "Fields"

    Component { id: field; TextField { placeholderText: "Email" } }
    Component { id: password; PasswordField { placeholderText: "Password" } }
    Component { id: cursor; TextCursor { restsAfter: 2 } }

    function make(component: Component, properties: var): var {
        return createTemporaryObject(component, testCase, Object.assign({ x: 20, y: 20 }, properties))
    }

    function test_isNamedAfterWhatBelongsInIt() {
        compare(make(field, {}).Accessible.name, "Email")
        compare(make(field, {}).Accessible.role, Accessible.EditableText)
    }

    function test_aPasswordIsNotShown() {
        const item = make(password, { text: "secret" })
        verify(item.Accessible.passwordEdit)
        compare(item.displayText, "••••••")
    }

    function test_takesWhatIsTyped() {
        const item = make(field, {})
        mouseClick(item)
        verify(item.activeFocus)
        keyClick("a")
        keyClick("&")
        compare(item.text, "a&")
    }

    function test_takesNothingWhileDisabled() {
        const item = make(field, { enabled: false, text: "a" })
        mouseClick(item)
        keyClick("b")
        compare(item.text, "a")
        compare(item.color, Theme.disabledText)
    }

    function test_showsFocusHoweverItCame() {
        const item = make(field, {})
        compare(item.background.border.color, Theme.controlBorder)
        mouseClick(item)
        compare(item.background.border.color, Theme.accent)
        verify(item.background.children[0].visible)
        testCase.forceActiveFocus()
        verify(!item.background.children[0].visible)
    }

    function test_tabSelectsWhatIsThere() {
        const item = make(field, { text: "mira@example.org" })
        keyClick(Qt.Key_Tab)
        verify(item.activeFocus)
        compare(item.selectedText, "mira@example.org")
    }

    function test_thePlaceholderGoesWhenSomethingIsTyped() {
        const item = make(field, {})
        const placeholder = findChild(item, "placeholder")
        verify(placeholder.visible)
        item.text = "a"
        verify(!placeholder.visible)
    }

    function test_longTextShowsItsBeginningUntilItIsEdited() {
        const item = make(field, { text: "https://a-very-long-name-of-a-server.tarnwik.example:8443/", width: 100 })
        verify(item.positionToRectangle(0).x >= 0)
        item.forceActiveFocus()
        item.cursorPosition = item.length
        verify(item.positionToRectangle(0).x < 0)
    }

    function test_theCursorRestsAfterAWhile() {
        const item = make(field, {})
        item.forceActiveFocus()
        const shown = createTemporaryObject(cursor, item, { owner: item })
        verify(shown.isBlinking)
        tryCompare(shown, "isBlinking", false, 3000)
        verify(shown.visible)
        keyClick("a")
        verify(shown.isBlinking)
    }

    function test_theCursorStandsStillWithReducedMotion() {
        const item = make(field, {})
        item.forceActiveFocus()
        Theme.reducesMotion = true
        const shown = createTemporaryObject(cursor, item, { owner: item })
        verify(!shown.isBlinking)
        verify(shown.visible)
    }

    function test_itsHeightHoldsTheText() {
        const item = make(field, { text: "Ág" })
        compare(item.height, 28)
        Theme.textScale = 2
        verify(item.height >= item.contentHeight)
    }
}
