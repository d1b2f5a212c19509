import QtQuick
import Tarnwik.Controls

/// How much of the account's quota is used. The account's own text says it in words.
Meter {
    required property var account

    value: account?.usageFraction ?? 0
    caption: account?.usageCaption ?? ""
}
