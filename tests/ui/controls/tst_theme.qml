import QtQuick
import QtTest
import Tarnwik.Controls

TestCase {
    name: "Theme"

    readonly property var schemes: [{ tag: "light", dark: false }, { tag: "dark", dark: true }]
    readonly property var accents: [undefined, "#ffd60a", "#000080", "#ff3b30", "#ffffff", "#000000"]

    function cleanup() {
        Theme.dark = false
        Theme.accentOverride = undefined
        Theme.textScale = 1
        Theme.reducesMotion = false
    }

    function verifyContrast(what: string, color: color, background: color, atLeast: real) {
        const ratio = Contrast.ratio(color, background)
        verify(ratio >= atLeast, what + " has a contrast of " + ratio.toFixed(2))
    }

    function test_textIsReadableOnEverySurface_data() {
        return schemes
    }

    function test_textIsReadableOnEverySurface(data) {
        Theme.dark = data.dark
        for (const surface of ["window", "sidebar", "card"]) {
            for (const role of ["primary", "secondary"])
                verifyContrast(role + " on " + surface, Theme[role], Theme[surface], 4.5)
        }
        for (const surface of ["window", "card"]) {
            for (const role of ["green", "orange", "red", "link"])
                verifyContrast(role + " on " + surface, Theme[role], Theme[surface], 4.5)
        }
    }

    function test_textIsReadableOnEveryStateOfAControl_data() {
        return schemes
    }

    function test_textIsReadableOnEveryStateOfAControl(data) {
        Theme.dark = data.dark
        for (const state of ["control", "controlHover", "controlPressed"])
            verifyContrast("primary on " + state, Theme.primary, Theme[state], 4.5)
        for (const state of ["rowHover", "rowPressed"])
            verifyContrast("primary on " + state, Theme.primary, Contrast.over(Theme[state], Theme.sidebar), 4.5)
    }

    function test_textIsReadableOnTheAccent_data() {
        return schemes
    }

    function test_textIsReadableOnTheAccent(data) {
        Theme.dark = data.dark
        for (const accent of accents) {
            Theme.accentOverride = accent
            for (const state of ["accentFill", "accentFillHover", "accentFillPressed"])
                verifyContrast("white on " + state + " of " + accent, Theme.textOnAccent, Theme[state], 4.5)
            for (const surface of ["window", "card"])
                verifyContrast("link of " + accent + " on " + surface, Theme.link, Theme[surface], 4.5)
        }
    }

    function test_iconsAreSeenOnEverySurface_data() {
        return schemes
    }

    function test_iconsAreSeenOnEverySurface(data) {
        Theme.dark = data.dark
        for (const accent of accents) {
            Theme.accentOverride = accent
            for (const surface of ["window", "sidebar", "card"])
                verifyContrast("accent of " + accent + " on " + surface, Theme.accent, Theme[surface], 3)
        }
    }

    function test_theDesktopsAccentIsTakenAsItIsWhereItCanBeRead() {
        Theme.accentOverride = "#2040c0"
        compare(Theme.accent, Qt.color("#2040c0"))
        compare(Theme.accentFill, Qt.color("#2040c0"))
        compare(Theme.link, Qt.color("#2040c0"))
    }

    function test_theProgramsOwnAccentIsBackWhenTheDesktopHasNone() {
        Theme.accentOverride = "#2040c0"
        Theme.accentOverride = undefined
        compare(Theme.accentFill, Qt.color("#006fe8"))
    }

    function test_everyStyleHasItsSizeAndWeight_data() {
        return [
            { tag: "largeTitle", size: 26, weight: Font.Bold },
            { tag: "title", size: 22, weight: Font.Bold },
            { tag: "windowTitle", size: 15, weight: Font.DemiBold },
            { tag: "headline", size: 13, weight: Font.DemiBold },
            { tag: "body", size: 13, weight: Font.Normal },
            { tag: "footnote", size: 12, weight: Font.Normal },
            { tag: "caption", size: 11, weight: Font.Normal }
        ]
    }

    function test_everyStyleHasItsSizeAndWeight(data) {
        compare(Theme.font(data.tag).pixelSize, data.size)
        compare(Theme.font(data.tag).weight, data.weight)
    }

    function test_fontsAndControlsGrowWithTheTextScale() {
        Theme.textScale = 2
        compare(Theme.font("body").pixelSize, 26)
        compare(Theme.controlHeight, 56)
        compare(Theme.iconSize, 32)
        compare(Theme.railWidth, 80)
    }

    function test_controlsStayAsTallAsTheyAreForSmallText() {
        Theme.textScale = 0.5
        compare(Theme.controlHeight, 28)
    }

    function test_nothingMovesWithReducedMotion() {
        compare(Theme.transitionDuration, 120)
        Theme.reducesMotion = true
        compare(Theme.transitionDuration, 0)
    }
}
