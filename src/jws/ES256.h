#pragma once

#include "jws/OpenSSLPointers.h"

#include <QByteArray>

namespace tarnwik {

/// Whether \a key is one that ES256 signs with: elliptic, on the curve P-256.
bool isES256Key(const EVP_PKEY *key);

/// The signature of \a text with ECDSA and SHA-256 as signed texts carry it: both numbers in 32 bytes each (RFC 7518,
/// section 3.4). Throws StoreError.
QByteArray signES256(const QByteArray &text, EVP_PKEY *key);

/// Whether \a signature is that of \a text.
bool verifyES256(const QByteArray &text, const QByteArray &signature, EVP_PKEY *key);

} // namespace tarnwik
