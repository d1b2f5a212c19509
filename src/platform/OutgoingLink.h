#pragma once

#include <QUrl>

#include <optional>

namespace tarnwik {

/// \a url as it may be handed to the system, when it is a sound http, https or mailto address; nothing otherwise, since
/// addresses come from the server.
std::optional<QUrl> outgoingLink(const QString &url);

} // namespace tarnwik
