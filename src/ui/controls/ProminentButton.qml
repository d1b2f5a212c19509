import QtQuick
import Tarnwik.Controls

/// The one button of a screen that does what the screen is for: white on the accent.
Button {
    isLarge: true
    ringGap: Theme.ringGap
    fill: !enabled ? Theme.controlDisabled
        : down ? Theme.accentFillPressed
        : hovered ? Theme.accentFillHover : Theme.accentFill
    stroke: "transparent"
    tint: enabled ? Theme.textOnAccent : Theme.disabledText
}
