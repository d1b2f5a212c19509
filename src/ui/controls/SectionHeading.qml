import QtQuick
import Tarnwik.Controls

/// What the things below it are.
Label {
    textStyle: "headline"
    Accessible.role: Accessible.Heading
}
