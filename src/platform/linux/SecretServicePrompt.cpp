#include "platform/linux/SecretServicePrompt.h"

#include "platform/linux/SecretServiceError.h"

#include <cstring>
#include <utility>

namespace tarnwik {

namespace {

constexpr const char *promptInterface = "org.freedesktop.Secret.Prompt";

// What has become of a prompt so far.
struct Outcome
{
    bool isOwnerGone = false;
    bool isDismissed = false;
    GLibPointer<GVariant> result;
};

void hasCompleted(GDBusConnection *, const char *, const char *, const char *, const char *, GVariant *parameters,
                  gpointer data)
{
    auto *outcome = static_cast<Outcome *>(data);
    gboolean isDismissed = TRUE;
    GVariant *result = nullptr;
    if (g_variant_is_of_type(parameters, G_VARIANT_TYPE("(bv)")) != FALSE) {
        g_variant_get(parameters, "(bv)", &isDismissed, &result);
    }
    outcome->result.reset(result);
    outcome->isDismissed = isDismissed != FALSE;
}

void ownerHasChanged(GDBusConnection *, const char *, const char *, const char *, const char *, GVariant *,
                     gpointer data)
{
    static_cast<Outcome *>(data)->isOwnerGone = true;
}

// A subscription to one signal, for as long as it lives.
class Subscription
{
public:
    Subscription(GDBusConnection *connection, const char *sender, const char *interface, const char *member,
                 const char *path, const char *argument, GDBusSignalCallback callback, Outcome *outcome)
        : m_connection(connection)
        , m_id(g_dbus_connection_signal_subscribe(connection, sender, interface, member, path, argument,
                                                  G_DBUS_SIGNAL_FLAGS_NONE, callback, outcome, nullptr))
    {
    }
    ~Subscription() { g_dbus_connection_signal_unsubscribe(m_connection, m_id); }

    Subscription(const Subscription &) = delete;
    Subscription &operator=(const Subscription &) = delete;

private:
    GDBusConnection *m_connection;
    guint m_id;
};

// GNOME's service tells a question that could be shown nowhere in the same way as one that the person closed. But it
// shows its questions through a prompter, whose name on the bus has an owner only if there is one that works. Other
// services show them themselves.
bool canPersonBeAsked(SecretServiceBus &bus)
{
    const auto service = bus.ownerOf(secretsName);
    const auto gnome = bus.ownerOf("org.gnome.keyring");
    const bool isGnome = service != nullptr && gnome != nullptr && std::strcmp(service.get(), gnome.get()) == 0;
    return !isGnome || bus.ownerOf("org.gnome.keyring.SystemPrompter") != nullptr;
}

} // namespace

GLibPointer<GVariant> askPerson(SecretServiceBus &bus, const char *path)
{
    const auto owner = bus.ownerOf(secretsName);
    if (owner == nullptr) {
        throw SecretServiceError(errSecNotAvailable);
    }

    Outcome outcome;
    const Subscription completed(bus.connection(), owner.get(), promptInterface, "Completed", path, nullptr,
                                 hasCompleted, &outcome);
    const Subscription vanished(bus.connection(), "org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged",
                                "/org/freedesktop/DBus", owner.get(), ownerHasChanged, &outcome);
    bus.call(owner.get(), path, promptInterface, "Prompt", g_variant_new("(s)", ""), "()");

    const bool isInTime = bus.loop().waitFor([&] {
        return outcome.isDismissed || outcome.result != nullptr || outcome.isOwnerGone
            || g_dbus_connection_is_closed(bus.connection()) != FALSE;
    });
    if (!isInTime) {
        // The question is left standing: taking one back (Prompt.Dismiss) makes GNOME's service abort, which would lock
        // out every program of the session. Whoever answers it later unlocks the keyring for the next call.
        throw SecretServiceError(errSecInteractionNotAllowed);
    }
    if (outcome.isDismissed) {
        throw SecretServiceError(canPersonBeAsked(bus) ? errSecUserCanceled : errSecInteractionNotAllowed);
    }
    if (outcome.result == nullptr) {
        throw SecretServiceError(errSecNotAvailable);
    }
    return std::move(outcome.result);
}

} // namespace tarnwik
