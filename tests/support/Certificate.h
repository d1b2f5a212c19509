#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>

namespace tarnwik::test {

/// A server's certificate and its key, both as PEM.
struct Certificate
{
    QByteArray certificate;
    QByteArray privateKey;
};

/// Makes a certificate that signs itself, for the DNS name or IP address \a host, with a new P-256 key. It is valid
/// from an hour ago until \a validFor from now; a negative time makes it expired.
Certificate makeSelfSignedCertificate(const QString &host, std::chrono::seconds validFor = std::chrono::hours(24));

} // namespace tarnwik::test
