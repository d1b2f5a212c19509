#pragma once

#include "async/Clock.h"

#include <QFileSystemWatcher>

#include <memory>

namespace tarnwik {

namespace async {
class Gate;
}

/// Tells of changes in a folder. For one waiter at a time, which must end before this does.
class FolderWatch final : public QObject
{
    Q_OBJECT

public:
    /// Makes the folder when there is none.
    FolderWatch(const QString &folder, std::shared_ptr<async::Clock> clock);

    /// Waits until something changes, or has changed since the last call returned. It may return although nothing did.
    /// Throws Cancelled when \a token is pulled.
    Task<> changed(std::stop_token token);

private:
    bool isWatching() const;
    /// Whether the folder is watched from now on.
    bool watch();

    QString m_folder;
    std::shared_ptr<async::Clock> m_clock;
    QFileSystemWatcher m_watcher;
    bool m_hasChanged = false;
    async::Gate *m_gate = nullptr;
};

} // namespace tarnwik
