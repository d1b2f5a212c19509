#pragma once

#include "platform/KeychainServices.h"

#include <glib.h>

#include <exception>

namespace tarnwik {

/// An operation on the Secret Service failed. Stays within the adapter, which answers its callers with the status.
class SecretServiceError final : public std::exception
{
public:
    explicit SecretServiceError(OSStatus status)
        : m_status(status)
    {
    }

    /// With the status that fits \a error best, as GLib, the bus and the Secret Service tell it.
    explicit SecretServiceError(const GError &error);

    OSStatus status() const noexcept { return m_status; }

    const char *what() const noexcept override { return "the Secret Service failed"; }

private:
    OSStatus m_status;
};

} // namespace tarnwik
