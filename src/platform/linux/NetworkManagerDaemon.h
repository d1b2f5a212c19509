#pragma once

#include "async/Task.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>

#include <exception>

namespace tarnwik {

/// NetworkManager, or the bus on its behalf, answered a call with an error.
class NetworkManagerCallError final : public std::exception
{
public:
    NetworkManagerCallError(QString name, QString message)
        : m_name(std::move(name))
        , m_message(std::move(message))
    {
    }

    /// The D-Bus error name.
    const QString &name() const noexcept { return m_name; }
    /// The daemon's own English text.
    const QString &message() const noexcept { return m_message; }

    const char *what() const noexcept override { return "NetworkManager answered with an error"; }

private:
    QString m_name;
    QString m_message;
};

/// The NetworkManager daemon as seen from the system bus: its calls as tasks, and its comings and goings.
///
/// Lives on the main thread. Construction subscribes to the daemon's signals and asks it nothing.
class NetworkManagerDaemon final : public QObject
{
    Q_OBJECT

public:
    explicit NetworkManagerDaemon(QDBusConnection bus);

    const QDBusConnection &bus() const { return m_bus; }

    /// False once the daemon has left the bus, until it is back. Whoever has had an answer from it may rely on this.
    bool isRunning() const { return m_isRunning; }

    /// Counts the daemon's lives: object paths mean nothing in another life than their own.
    int life() const { return m_life; }

    /// Calls a method of the daemon's and gives its reply; throws NetworkManagerCallError. A daemon that does not run
    /// is not started: whoever stopped it meant it. The call is sent at once, so that several can be under way.
    Task<QDBusMessage> call(const QString &path, const QString &interface, const QString &method,
                            const QVariantList &arguments = {}) const;

    /// Reads all properties of one interface of an object; throws NetworkManagerCallError.
    Task<QVariantMap> properties(const QString &path, const QString &interface) const;

    /// The unique bus name behind the daemon's well-known one; throws NetworkManagerCallError.
    Task<QString> owner() const;

    /// Has \a slot called for \a signal of every object of the daemon's at \a path, or anywhere when that is empty. The
    /// slot may take a QDBusMessage, but, in Qt 6.4, no QDBusObjectPath.
    void subscribe(const QString &path, const QString &interface, const QString &signal, QObject *receiver,
                   const char *slot);

Q_SIGNALS:
    void started();
    void stopped();
    /// A connection was saved. The daemon owns its name some time before it serves its saved connections: this tells
    /// when it does.
    void connectionAdded();

private:
    Q_SLOT void onNewConnection(const QDBusMessage &message);

    void onOwnerChanged(const QString &service, const QString &oldOwner, const QString &newOwner);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    bool m_isRunning = true;
    int m_life = 0;
};

} // namespace tarnwik
