#include "async/Gate.h"

#include <QThread>

#include <utility>

namespace tarnwik::async {

void Gate::open()
{
    if (QThread::currentThread() != thread()) {
        QMetaObject::invokeMethod(this, &Gate::open, Qt::QueuedConnection);
        return;
    }
    m_isOpen = true;
    if (m_waiting)
        resumeLater();
}

void Gate::suspend(std::coroutine_handle<> handle)
{
    m_waiting = handle;
    // Registering the callback runs it at once when the token was pulled already.
    m_stopCallback.emplace(m_token, [this] { resumeLater(); });
    if (m_isOpen)
        resumeLater();
}

void Gate::finish()
{
    m_stopCallback.reset();
    // A gate that was opened did what was waited for, even if the token was pulled before the loop came round.
    if (!m_isOpen)
        throwIfStopped(m_token);
}

void Gate::resumeLater()
{
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (const auto handle = std::exchange(m_waiting, nullptr))
                handle.resume();
        },
        Qt::QueuedConnection);
}

} // namespace tarnwik::async
