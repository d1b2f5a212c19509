pragma Singleton
import QtQuick
import Tarnwik.Controls

/// The one source of colours, type and measures. Lengths are in points at the text size that the desktop asks for.
QtObject {
    // What the desktop says; the program keeps these up to date.
    property bool dark: false
    /// The desktop's accent colour, or undefined for the program's own.
    property var accentOverride: undefined
    property real textScale: 1
    property bool reducesMotion: false

    // Surfaces.
    readonly property color window: dark ? "#1e1e20" : "#f6f6f7"
    readonly property color sidebar: dark ? "#27272a" : "#eae9ee"
    readonly property color card: dark ? "#2c2c2e" : "#ffffff"
    readonly property color field: card
    readonly property color hairline: dark ? "#1fffffff" : "#1a000000"
    readonly property color track: dark ? "#2effffff" : "#24000000"
    readonly property color scrollThumb: dark ? "#59ffffff" : "#40000000"

    // Text.
    readonly property color primary: dark ? "#ebffffff" : "#e0000000"
    readonly property color secondary: dark ? "#99ffffff" : "#8c000000"
    readonly property color textOnAccent: "#ffffff"
    readonly property color disabledText: dark ? "#59ffffff" : "#59000000"

    /// The least contrast at which text can be read, and at which a shape can be told from what is round it.
    readonly property real textContrast: 4.5
    readonly property real shapeContrast: 3

    // The accent draws meters and icons; its fill lies under white text. The desktop's own accent is darkened or
    // lightened as far as it takes to be seen, read, and read on.
    readonly property bool hasAccentOverride: accentOverride !== undefined
    readonly property color accent: hasAccentOverride
                                    ? Contrast.readable(accentOverride, dark ? card : sidebar, shapeContrast)
                                    : dark ? "#0a84ff" : "#007aff"
    readonly property color accentFill: hasAccentOverride
                                        ? Contrast.readable(accentOverride, textOnAccent, textContrast)
                                        : dark ? "#0a72e8" : "#006fe8"
    readonly property color accentFillHover: Qt.darker(accentFill, 1.07)
    readonly property color accentFillPressed: Qt.darker(accentFill, 1.19)
    readonly property color link: hasAccentOverride
                                  ? Contrast.readable(accentOverride, dark ? card : window, textContrast)
                                  : dark ? "#409cff" : "#0066cc"
    readonly property color ring: Qt.alpha(accent, dark ? 0.80 : 0.85)
    readonly property color fieldRing: Qt.alpha(accent, 0.50)

    // Status.
    readonly property color green: dark ? "#30d158" : "#1e7b34"
    readonly property color orange: dark ? "#ff9f0a" : "#a84b00"
    readonly property color red: dark ? "#ff7b73" : "#cc0013"

    // Controls. Their border is opaque, since a translucent one shows what lies behind the control.
    readonly property color control: dark ? "#3a3a3d" : "#ffffff"
    readonly property color controlHover: dark ? "#434346" : "#f3f3f5"
    readonly property color controlPressed: dark ? "#4d4d51" : "#e6e6ea"
    readonly property color controlBorder: dark ? "#4e4e52" : "#d0d0d5"
    readonly property color controlDisabled: dark ? "#0dffffff" : "#0d000000"
    readonly property color rowHover: dark ? "#14ffffff" : "#0f000000"
    readonly property color rowPressed: dark ? "#24ffffff" : "#1c000000"

    // Type.
    readonly property var fonts: ({
        largeTitle: titleFont(26, Font.Bold),
        title: titleFont(22, Font.Bold),
        windowTitle: textFont(15, Font.DemiBold),
        headline: textFont(13, Font.DemiBold),
        body: textFont(13, Font.Normal),
        bodyMedium: textFont(13, Font.Medium),
        bodySemibold: textFont(13, Font.DemiBold),
        footnote: textFont(12, Font.Normal),
        caption: textFont(11, Font.Normal),
        captionSemibold: textFont(11, Font.DemiBold)
    })

    // Measures. What holds text or an icon grows with the text; gaps, radii and lines stay as they are.
    readonly property int controlHeight: scaled(28)
    readonly property int prominentHeight: scaled(32)
    readonly property int fieldWidth: scaled(200)
    readonly property int pickerMinimumWidth: scaled(180)
    readonly property int popupMaximumHeight: scaled(320)
    readonly property int popupMaximumWidth: scaled(440)
    readonly property int popupRowHeight: scaled(26)
    readonly property int tooltipMaximumWidth: scaled(320)
    readonly property int iconSize: scaled(16)
    readonly property int statusIconSize: scaled(14)
    readonly property int emptyStateIconSize: scaled(32)
    readonly property int headerHeight: scaled(40)
    readonly property int sidebarRowHeight: scaled(32)
    readonly property int sidebarWidth: scaled(200)
    readonly property int railWidth: controlHeight + 24
    readonly property int foldBelow: scaled(600)
    readonly property int screenMaximumWidth: scaled(720)
    readonly property int signInMaximumWidth: scaled(320)
    readonly property int controlRadius: 6
    readonly property int cardRadius: 8
    readonly property int cardPadding: 12
    readonly property int meterHeight: 6
    readonly property int ringWidth: 3
    readonly property int ringGap: 2
    readonly property int blockGap: 18
    readonly property int listGap: 10
    readonly property int screenPadding: 24
    readonly property int windowMinimumWidth: 420
    readonly property int windowMinimumHeight: 540

    /// Milliseconds that a transition may take.
    readonly property int transitionDuration: reducesMotion ? 0 : 120

    /// The font of the text style \a style, one of the names in `fonts`.
    function font(style: string): font {
        return fonts[style]
    }

    /// \a length as long as the text is large; never shorter than it is drawn for the usual text.
    function scaled(length: real): real {
        return Math.round(length * Math.max(1, textScale))
    }

    function textFont(size: real, weight: int): font {
        return Qt.font({ family: SystemFonts.textFamily, pixelSize: Math.round(size * textScale), weight: weight })
    }

    function titleFont(size: real, weight: int): font {
        return Qt.font({ family: SystemFonts.titleFamily, pixelSize: Math.round(size * textScale), weight: weight })
    }
}
