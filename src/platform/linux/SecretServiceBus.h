#pragma once

#include "platform/linux/SecretServiceLoop.h"

namespace tarnwik {

/// The name of the Secret Service on the session bus.
inline constexpr const char *secretsName = "org.freedesktop.secrets";

/// The session bus, as far as one keychain call needs it.
class SecretServiceBus
{
public:
    /// Connects, or takes the connection that the process has. Throws SecretServiceError without a session bus.
    explicit SecretServiceBus(SecretServiceLoop &loop);

    /// Calls a method of \a name, and returns its answer, a tuple of the type \a reply. Throws SecretServiceError.
    GLibPointer<GVariant> call(const char *name, const char *path, const char *interface, const char *method,
                               GVariant *parameters, const char *reply);

    /// The unique name behind \a name, or nothing if nobody owns it.
    GLibPointer<char> ownerOf(const char *name);

    GDBusConnection *connection() const { return m_connection.get(); }
    SecretServiceLoop &loop() const { return m_loop; }

private:
    SecretServiceLoop &m_loop;
    GObjectPointer<GDBusConnection> m_connection;
};

} // namespace tarnwik
