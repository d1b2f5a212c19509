#pragma once

#include "platform/linux/NetworkManagerDaemon.h"

#include <QHash>
#include <QObject>

#include <optional>

namespace tarnwik {

/// Knows under which path the daemon keeps each saved connection that the program holds, and whether it still does.
///
/// A saved connection is itself by its UUID: paths are renumbered whenever the daemon starts. Lives on the main thread.
class NetworkManagerSavedConnections final : public QObject
{
    Q_OBJECT

public:
    /// \a daemon must outlive this.
    explicit NetworkManagerSavedConnections(NetworkManagerDaemon &daemon);

    /// Follows the connection \a uuid from now on, which is saved under \a path.
    void follow(const QString &uuid, const QString &path);

    /// Where \a uuid is saved, as far as is known; nothing when it is not.
    std::optional<QString> path(const QString &uuid) const;

    /// The same, but asks the daemon when it is not known. Throws NetworkManagerCallError.
    Task<std::optional<QString>> find(QString uuid);

Q_SIGNALS:
    void changed();

private:
    Q_SLOT void onConnectionRemoved(const QDBusMessage &message);

    void onDaemonStopped();
    void findMissing();

    NetworkManagerDaemon &m_daemon;
    QHash<QString, QString> m_paths; // by UUID; empty while not saved
};

} // namespace tarnwik
