#pragma once

#include <QByteArray>
#include <QString>

namespace tarnwik::service {

/// What hashing one password costs.
enum class PasswordCost {
    /// Argon2id with libsodium's "interactive" limits: about a tenth of a second and 64 MiB.
    Interactive,
    /// The least that libsodium allows, for tests only.
    Least,
};

/// A salted Argon2id hash of \a password in libsodium's text form, which holds the salt and the cost.
QString hashPassword(const QString &password, PasswordCost cost);

/// Whether \a hash is of the form that hashPassword() gives.
bool isPasswordHash(const QString &hash);

/// Whether \a password has the hash \a hash. Takes the time that making the hash took, whatever the answer.
bool isPasswordCorrect(const QString &password, const QString &hash);

/// A new bearer token: 32 random bytes in base64url without padding.
QByteArray makeToken();

/// The form in which a token is stored: its BLAKE2b-256 hash. Tokens are random, so the hash needs neither salt nor
/// cost.
QByteArray fingerprint(const QByteArray &secret);

/// Whether \a key is an X25519 public key that a tunnel can use: 32 bytes in canonical base64, and not one of the points
/// of low order, with which every private key agrees on the same secret.
bool isUsablePublicKey(const QString &key);

/// 32 random bytes in base64.
QString makePresharedKey();

} // namespace tarnwik::service
