#pragma once

#include "jws/OpenSSLPointers.h"

#include <QByteArray>
#include <QDateTime>

#include <optional>

namespace tarnwik {

/// What the owner of a certificate may do with the key.
enum class CertificateRole {
    /// Vouch for intermediates.
    Root,
    /// Vouch for signers.
    Intermediate,
    /// Sign texts.
    Signer,
};

/// What a certificate is to say.
struct CertificateRequest
{
    CertificateRole role = CertificateRole::Signer;
    QByteArray commonName;
    QDateTime notBefore;
    QDateTime notAfter;
    /// Whose certificate it is.
    EVP_PKEY *key = nullptr;
};

/// Who vouches for a certificate.
struct CertificateIssuer
{
    X509 *certificate = nullptr;
    EVP_PKEY *key = nullptr;
};

/// A new key pair on the curve P-256. Throws StoreError.
openssl::Key makeES256Key();

/// Makes a certificate with a random serial number, signed by \a issuer or, without one, by its own key. Throws
/// StoreError.
openssl::Certificate issueCertificate(const CertificateRequest &request,
                                      const std::optional<CertificateIssuer> &issuer = std::nullopt);

} // namespace tarnwik
