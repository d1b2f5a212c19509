#pragma once

#include "jws/OpenSSLPointers.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>

namespace tarnwik {

/// The key of the first certificate of \a chain (DER), if the certificates lead, each to the next, to \a trustedRoot
/// (PEM) as the last of them, all are valid at \a now, and the first one's owner may sign texts with ES256 but no
/// certificates. Null otherwise, and when there are more than five.
openssl::Key trustedSignerKey(const QList<QByteArray> &chain, const QByteArray &trustedRoot, const QDateTime &now);

/// Null when \a encoded is not exactly one certificate.
openssl::Certificate certificateFromDER(const QByteArray &encoded);

/// The first certificate of \a text. Null when there is none.
openssl::Certificate certificateFromPEM(const QByteArray &text);

/// Empty when there is no memory left.
QByteArray certificateToDER(const X509 *certificate);

} // namespace tarnwik
