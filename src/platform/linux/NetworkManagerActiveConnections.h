#pragma once

#include "platform/linux/NetworkManagerDaemon.h"
#include "platform/linux/NetworkManagerEndReason.h"
#include "platform/linux/NetworkManagerProviderRest.h"
#include "platform/linux/NetworkManagerStatus.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <chrono>
#include <memory>
#include <optional>

namespace tarnwik {

/// Follows the daemon's active connections by their signals, and tells the status of each by the UUID of its saved
/// connection.
///
/// The signals of an active connection come before the reply that tells whose it is, and the last of them is all that
/// remains of one that failed. So every path that a signal speaks of is kept, with or without a UUID, until no question
/// is open whose answer could speak of it too. Lives on the main thread.
class NetworkManagerActiveConnections final : public QObject
{
    Q_OBJECT

public:
    /// \a daemon must outlive this.
    explicit NetworkManagerActiveConnections(NetworkManagerDaemon &daemon);

    /// While one of these exists, a question is open whose answer may name a path that has ended meanwhile.
    class Question
    {
    public:
        explicit Question(NetworkManagerActiveConnections &connections);
        ~Question();

        Question(const Question &) = delete;
        Question &operator=(const Question &) = delete;

    private:
        QPointer<NetworkManagerActiveConnections> m_connections;
    };

    /// Asks the daemon for everything that is active. Throws NetworkManagerCallError.
    Task<> refresh();

    /// The path of the active connection of \a uuid; nothing when it has none.
    std::optional<QString> path(const QString &uuid) const;

    /// The status of a saved connection; Disconnected when nothing of it is active.
    VPNStatus status(const QString &uuid) const;

    /// The daemon answered that \a path is the active connection of \a uuid, which has just been started. It has not
    /// ended before its provider has come to rest, as \a rest tells.
    void adopt(const QString &path, const QString &uuid, std::shared_ptr<NetworkManagerProviderRest> rest);

    /// The daemon is about to be asked to end \a path, whose provider is \a service: what ends it from now on is no
    /// failure, whatever reason is given.
    void expectEnd(const QString &path, const QString &service);
    /// The daemon agreed, which makes \a path deactivating.
    void confirmEnd(const QString &path);
    /// The daemon refused.
    void forgetExpectedEnd(const QString &path);

    /// Returns once nothing of \a uuid is active. Throws TunnelError when that takes longer than \a limit.
    Task<> waitUntilEnded(QString uuid, std::chrono::milliseconds limit);

    /// Why the connection of \a uuid last ended, since forgetEndReason().
    std::optional<NetworkManagerEndReason> endReason(const QString &uuid) const;
    void forgetEndReason(const QString &uuid) { m_endReasons.remove(uuid); }

Q_SIGNALS:
    void changed();

private:
    Q_SLOT void onStateChanged(uint state, uint reason, const QDBusMessage &message);

    struct Record
    {
        QString uuid; // empty until known
        NetworkManagerActiveState state = NetworkManagerActiveState::Activating;
        NetworkManagerEndReason reason = NetworkManagerEndReason::Unknown;
        bool wasActivated = false;
        bool isEndExpected = false;
        std::shared_ptr<NetworkManagerProviderRest> rest; // absent for a provider that is not ours to wait for
    };

    static Task<> identify(QPointer<NetworkManagerActiveConnections> self, QString path);
    static void setState(Record &record, NetworkManagerActiveState state);
    static bool isEnded(const Record &record);

    void onDaemonStopped();
    void identified(Record &record, const QString &uuid);
    void follow(Record &record, std::shared_ptr<NetworkManagerProviderRest> rest);
    void describe(const QString &path, const QVariantMap &properties);
    void noteEnd(Record &record);
    void settle();
    QHash<QString, Record>::const_iterator find(const QString &uuid) const;
    void dropEnded();

    NetworkManagerDaemon &m_daemon;
    QHash<QString, Record> m_records;                     // by path
    QHash<QString, NetworkManagerEndReason> m_endReasons; // by UUID
    int m_questions = 0;
};

} // namespace tarnwik
