#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace tarnwik {

/// Has assistive technologies read something out that appeared without being asked for.
class Announcer : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// Tells them that \a item, whose accessible role is an alert's, has something new to say. It is read out once,
    /// when the event loop turns, since its name and whether it is seen follow its text in no particular order; an item
    /// that is not seen by then is not read out.
    Q_INVOKABLE void announce(QQuickItem *item);

private:
    void readOut();

    QList<QPointer<QQuickItem>> m_waiting;
};

} // namespace tarnwik
