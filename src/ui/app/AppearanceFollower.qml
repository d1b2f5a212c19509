import QtQml
import Tarnwik.Controls

/// Keeps the theme as the desktop wants it.
QtObject {
    id: follower

    /// What the desktop wants: isDark, accentColor, textScale, reducesMotion.
    required property var appearance

    readonly property list<QtObject> bindings: [
        Binding { target: Theme; property: "dark"; value: follower.appearance.isDark },
        Binding { target: Theme; property: "accentOverride"; value: follower.appearance.accentColor },
        Binding { target: Theme; property: "textScale"; value: follower.appearance.textScale },
        Binding { target: Theme; property: "reducesMotion"; value: follower.appearance.reducesMotion }
    ]
}
