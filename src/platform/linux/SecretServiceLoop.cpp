#include "platform/linux/SecretServiceLoop.h"

namespace tarnwik {

namespace {

void hasEnded(GObject *, GAsyncResult *result, gpointer slot)
{
    static_cast<GObjectPointer<GAsyncResult> *>(slot)->reset(G_ASYNC_RESULT(g_object_ref(result)));
}

gboolean timeIsUp(gpointer cancellable)
{
    g_cancellable_cancel(G_CANCELLABLE(cancellable));
    return G_SOURCE_REMOVE;
}

} // namespace

SecretServiceLoop::SecretServiceLoop(std::chrono::milliseconds limit)
    : m_context(g_main_context_new())
    , m_cancellable(g_cancellable_new())
    , m_timer(g_timeout_source_new(static_cast<guint>(limit.count())))
{
    g_source_set_callback(m_timer, timeIsUp, m_cancellable.get(), nullptr);
    g_source_attach(m_timer, m_context.get());
    g_main_context_push_thread_default(m_context.get());
}

SecretServiceLoop::~SecretServiceLoop()
{
    g_source_destroy(m_timer);
    g_source_unref(m_timer);
    // What the calls left behind holds references until it is dispatched.
    while (g_main_context_iteration(m_context.get(), FALSE) != FALSE) { }
    g_main_context_pop_thread_default(m_context.get());
}

GObjectPointer<GAsyncResult> SecretServiceLoop::resultOf(const Start &start)
{
    GObjectPointer<GAsyncResult> result;
    start(m_cancellable.get(), hasEnded, &result);
    // A cancelled call ends too, so that this needs no limit of its own.
    while (result == nullptr) {
        g_main_context_iteration(m_context.get(), TRUE);
    }
    return result;
}

bool SecretServiceLoop::waitFor(const std::function<bool()> &condition)
{
    while (!condition() && g_cancellable_is_cancelled(m_cancellable.get()) == FALSE) {
        g_main_context_iteration(m_context.get(), TRUE);
    }
    return condition();
}

} // namespace tarnwik
