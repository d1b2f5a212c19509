#pragma once

#include "platform/HTTPSession.h"

#include <QNetworkReply>
#include <QSslError>

#include <optional>

namespace tarnwik {

/// Why \a reply, which has finished, brought no whole answer; nothing when it did, whatever the answer's status.
/// \a sslErrors are what it complained of about the server's certificate.
std::optional<URLError> transportError(const QNetworkReply &reply, const QList<QSslError> &sslErrors);

} // namespace tarnwik
