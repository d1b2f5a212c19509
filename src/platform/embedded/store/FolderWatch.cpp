#include "platform/embedded/store/FolderWatch.h"

#include "async/Gate.h"

#include <QDir>
#include <QScopedValueRollback>

#include <utility>

namespace tarnwik {

namespace {

/// How soon a folder that cannot be watched is tried again.
constexpr std::chrono::seconds retryDelay{10};

} // namespace

FolderWatch::FolderWatch(const QString &folder, std::shared_ptr<async::Clock> clock)
    : m_folder(folder)
    , m_clock(std::move(clock))
{
    QObject::connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
        m_hasChanged = true;
        if (m_gate)
            m_gate->open();
    });
    watch();
}

bool FolderWatch::isWatching() const
{
    return m_watcher.directories().contains(m_folder);
}

bool FolderWatch::watch()
{
    return QDir().mkpath(m_folder) && m_watcher.addPath(m_folder);
}

Task<> FolderWatch::changed(std::stop_token token)
{
    if (!m_hasChanged) {
        async::Gate gate;
        const QScopedValueRollback<async::Gate *> waiting(m_gate, &gate);
        if (!isWatching()) {
            // The folder was removed, or could not be made so far. Nobody knows what happened in it meanwhile.
            if (watch())
                gate.open();
            else
                m_clock->after(retryDelay, &gate, [&gate] { gate.open(); });
        }
        co_await gate.wait(token);
    }
    m_hasChanged = false;
}

} // namespace tarnwik
