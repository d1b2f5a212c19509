import QtQuick

/// A start-up task of the thing that it stands in: begun when that appears, stopped when that goes.
QtObject {
    id: task

    /// Where such tasks are begun and ended.
    required property var tasks
    /// Which one: a value of AppearanceTasks.Kind.
    required property int kind

    property int handle

    Component.onCompleted: handle = tasks.begin(kind)
    Component.onDestruction: tasks.end(handle)
}
