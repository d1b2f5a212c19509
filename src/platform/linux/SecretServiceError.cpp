#include "platform/linux/SecretServiceError.h"

#include <libsecret/secret.h>

namespace tarnwik {

namespace {

OSStatus statusOfSecretError(int code)
{
    switch (code) {
    case SECRET_ERROR_IS_LOCKED:
        return errSecInteractionNotAllowed;
    case SECRET_ERROR_NO_SUCH_OBJECT:
        return errSecItemNotFound;
    case SECRET_ERROR_PROTOCOL:
        return errSecDecode;
    default:
        return errSecIO;
    }
}

OSStatus statusOfBusError(int code)
{
    switch (code) {
    // No such service, and none that could be started.
    case G_DBUS_ERROR_SERVICE_UNKNOWN:
    case G_DBUS_ERROR_NAME_HAS_NO_OWNER:
    case G_DBUS_ERROR_SPAWN_EXEC_FAILED:
    case G_DBUS_ERROR_SPAWN_FORK_FAILED:
    case G_DBUS_ERROR_SPAWN_CHILD_EXITED:
    case G_DBUS_ERROR_SPAWN_CHILD_SIGNALED:
    case G_DBUS_ERROR_SPAWN_FAILED:
    case G_DBUS_ERROR_SPAWN_SETUP_FAILED:
    case G_DBUS_ERROR_SPAWN_CONFIG_INVALID:
    case G_DBUS_ERROR_SPAWN_SERVICE_INVALID:
    case G_DBUS_ERROR_SPAWN_SERVICE_NOT_FOUND:
    case G_DBUS_ERROR_SPAWN_PERMISSIONS_INVALID:
    case G_DBUS_ERROR_SPAWN_FILE_INVALID:
    case G_DBUS_ERROR_SPAWN_NO_MEMORY:
    // The service went away, or stands still.
    case G_DBUS_ERROR_NO_REPLY:
    case G_DBUS_ERROR_DISCONNECTED:
    case G_DBUS_ERROR_TIMEOUT:
    case G_DBUS_ERROR_TIMED_OUT:
    // Sandboxes hide the service like this.
    case G_DBUS_ERROR_ACCESS_DENIED:
        return errSecNotAvailable;
    // The item or keyring was there a moment ago, and is no more.
    case G_DBUS_ERROR_UNKNOWN_METHOD:
    case G_DBUS_ERROR_UNKNOWN_OBJECT:
        return errSecItemNotFound;
    default:
        return errSecIO;
    }
}

OSStatus statusOfIOError(int code)
{
    switch (code) {
    // The one who cancels is our own limit: the person did not answer in time.
    case G_IO_ERROR_CANCELLED:
        return errSecInteractionNotAllowed;
    case G_IO_ERROR_TIMED_OUT:
    case G_IO_ERROR_CLOSED:
    case G_IO_ERROR_BROKEN_PIPE:
        return errSecNotAvailable;
    default:
        return errSecIO;
    }
}

OSStatus statusOfError(const GError &error)
{
    if (error.domain == SECRET_ERROR) {
        return statusOfSecretError(error.code);
    }
    if (error.domain == G_DBUS_ERROR) {
        return statusOfBusError(error.code);
    }
    if (error.domain == G_IO_ERROR) {
        return statusOfIOError(error.code);
    }
    return errSecIO;
}

} // namespace

SecretServiceError::SecretServiceError(const GError &error)
    : SecretServiceError(statusOfError(error))
{
}

} // namespace tarnwik
