#pragma once

#include "platform/URL.h"

#include <QString>

#include <optional>

namespace tarnwik {

/// The program's deployment settings: what its information dictionary says, else what is built in.
///
/// Nothing is cached: every call reads the dictionary of PlatformServices::current() anew.
class AppRuntime
{
public:
    AppRuntime() = delete;

    /// Key "TarnwikDefaultServerURL": the server of a user who has never signed in.
    static QString defaultServerURLString();

    /// The same as a URL; the built-in one when the dictionary's text is none.
    static URL defaultServerURL();

    /// Key "TarnwikTunnelBundleIdentifier": the packet-tunnel provider.
    static QString tunnelBundleIdentifier();

    /// Key "TarnwikKeychainAccessGroup": the access group that the provider shares, if any.
    static std::optional<QString> keychainAccessGroup();

private:
    /// The trimmed string under \a key. Absent when it is no string, blank, or holds "$(": a build setting that the
    /// build left unexpanded must never be used as a value.
    static std::optional<QString> value(const QString &key);
};

} // namespace tarnwik
