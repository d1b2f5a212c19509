#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>

namespace tarnwik {

/// Sees to it that the program runs once in a session: whoever owns its name on the session bus is the first, and
/// every further start asks that one to come to the front. Lives on the main thread.
class SingleInstance : public QObject
{
    Q_OBJECT

public:
    enum class Start {
        /// This process is the one; it also is when there is no bus to ask.
        First,
        /// Another one runs, and has come to the front.
        Raised,
        /// Another one runs, but did not answer.
        Unanswered,
    };

    /// \a name is the program's on \a bus, such as "example.tarnwik.client".
    SingleInstance(QDBusConnection bus, QString name, QObject *parent = nullptr);

    /// Claims the name, or asks who has it to come to the front. \a platformData is passed on with that, as
    /// org.freedesktop.Application takes it. Waits for the other process, for ten seconds at the most.
    Start start(const QVariantMap &platformData);

    /// The object at which the program answers, as the name demands: "/example/tarnwik/client".
    static QString objectPath(const QString &name);

Q_SIGNALS:
    /// Another start, or the desktop, wants this program's window.
    void activated(const QVariantMap &platformData);

private:
    Start raiseOther(const QVariantMap &platformData);

    QDBusConnection m_bus;
    const QString m_name;
};

} // namespace tarnwik
