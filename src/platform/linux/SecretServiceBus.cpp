#include "platform/linux/SecretServiceBus.h"

#include "platform/linux/SecretServiceError.h"

namespace tarnwik {

namespace {

// The service's own limit for an answer, which is not to be waited for beyond ours.
constexpr int defaultTimeout = -1;

} // namespace

SecretServiceBus::SecretServiceBus(SecretServiceLoop &loop)
    : m_loop(loop)
    , m_connection(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr))
{
    if (m_connection == nullptr) {
        throw SecretServiceError(errSecNotAvailable);
    }
    // A session bus that ends must not end this program.
    g_dbus_connection_set_exit_on_close(m_connection.get(), FALSE);
}

GLibPointer<GVariant> SecretServiceBus::call(const char *name, const char *path, const char *interface,
                                             const char *method, GVariant *parameters, const char *reply)
{
    const auto result = m_loop.resultOf([&](GCancellable *cancellable, GAsyncReadyCallback callback, gpointer data) {
        g_dbus_connection_call(m_connection.get(), name, path, interface, method, parameters, G_VARIANT_TYPE(reply),
                               G_DBUS_CALL_FLAGS_NONE, defaultTimeout, cancellable, callback, data);
    });
    GError *error = nullptr;
    GLibPointer<GVariant> answer(g_dbus_connection_call_finish(m_connection.get(), result.get(), &error));
    if (error != nullptr) {
        throw SecretServiceError(*GLibPointer<GError>(error));
    }
    return answer;
}

GLibPointer<char> SecretServiceBus::ownerOf(const char *name)
{
    try {
        const auto answer = call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                 "GetNameOwner", g_variant_new("(s)", name), "(s)");
        char *owner = nullptr;
        g_variant_get(answer.get(), "(s)", &owner);
        return GLibPointer<char>(owner);
    } catch (const SecretServiceError &) {
        // That nobody owns the name is told as an error; a bus that is gone has no owners either.
        return nullptr;
    }
}

} // namespace tarnwik
