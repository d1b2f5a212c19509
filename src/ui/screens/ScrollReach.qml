import QtQuick
import QtQuick.Window
import Tarnwik.Controls

/// Lets the keyboard reach all of a scrolling view: the paging keys move it, and whatever takes the focus comes into
/// it.
Item {
    id: reach

    required property Flickable view

    /// How far round a focused control is shown with it, so that its ring is seen.
    readonly property int margin: 8
    /// How far an arrow key moves the view.
    readonly property int lineStep: 40
    readonly property real first: view.originY - view.topMargin
    readonly property real last: Math.max(first, view.originY + view.contentHeight + view.bottomMargin - view.height)

    function scrollTo(position: real) {
        view.contentY = Math.max(first, Math.min(position, last));
    }
    function holds(item: Item): bool {
        let ancestor = item;
        while (ancestor && ancestor !== view.contentItem)
            ancestor = ancestor.parent;
        return ancestor !== null;
    }
    function reveal(item: Item) {
        const y = view.contentItem.mapFromItem(item, 0, 0).y;
        if (y - margin < view.contentY)
            scrollTo(y - margin);
        else if (y + item.height + margin > view.contentY + view.height)
            scrollTo(y + item.height + margin - view.height);
    }

    Connections {
        target: reach.Window.window
        function onActiveFocusItemChanged() {
            const item = reach.Window.window.activeFocusItem;
            if (item && !(item instanceof FocusScope) && reach.holds(item))
                reach.reveal(item);
        }
    }
    Keys.onPressed: event => {
        const page = view.height - 2 * Theme.screenPadding;
        const steps = {
            [Qt.Key_PageDown]: page,
            [Qt.Key_PageUp]: -page,
            [Qt.Key_Down]: lineStep,
            [Qt.Key_Up]: -lineStep,
            [Qt.Key_End]: view.contentHeight,
            [Qt.Key_Home]: -view.contentHeight
        };
        event.accepted = event.key in steps && last > first;
        if (event.accepted)
            scrollTo(view.contentY + steps[event.key]);
    }
}
