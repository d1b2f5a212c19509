#pragma once

#include "platform/linux/SecretServicePointers.h"

#include <chrono>
#include <functional>

namespace tarnwik {

/// Runs asynchronous GLib calls to their end, one after the other, within a limit of time for all of them.
///
/// It waits in a main context of its own, which is the thread's default for as long as this object lives. So nothing
/// else happens in the thread meanwhile: neither Qt's events nor other sources of GLib's are dispatched, and nothing
/// of the calls is left over in the context that Qt's event loop runs. To be used and destroyed in one thread.
class SecretServiceLoop
{
public:
    /// Begins a call that ends by calling the function given to it.
    using Start = std::function<void(GCancellable *, GAsyncReadyCallback, gpointer)>;

    explicit SecretServiceLoop(std::chrono::milliseconds limit);
    ~SecretServiceLoop();

    SecretServiceLoop(const SecretServiceLoop &) = delete;
    SecretServiceLoop &operator=(const SecretServiceLoop &) = delete;

    /// Begins a call and waits for its result. Once the time is up, this call and every later one is cancelled.
    GObjectPointer<GAsyncResult> resultOf(const Start &start);

    /// Waits until \a condition holds, which is looked at after each event; false when the time is up first.
    bool waitFor(const std::function<bool()> &condition);

private:
    GLibPointer<GMainContext> m_context;
    GObjectPointer<GCancellable> m_cancellable;
    GSource *m_timer;
};

} // namespace tarnwik
