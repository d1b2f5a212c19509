#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryDir>

namespace tarnwik::test {

/// A session bus of the test's own, on which nothing is started by itself. It ends with the object.
class SessionBus
{
public:
    SessionBus();
    ~SessionBus();

    SessionBus(const SessionBus &) = delete;
    SessionBus &operator=(const SessionBus &) = delete;

    const QString &address() const { return m_address; }

    /// A new connection, as another program would have. Closed with the bus.
    QDBusConnection connection();

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
    QStringList m_connections;
};

} // namespace tarnwik::test
