#include "secure/WireGuardKeyGenerator.h"

#include <sodium.h>

#include <array>

namespace tarnwik {

namespace {

using Key = std::array<unsigned char, crypto_scalarmult_curve25519_BYTES>;
static_assert(crypto_scalarmult_curve25519_BYTES == crypto_scalarmult_curve25519_SCALARBYTES);

// Clears the bits that every user of the key has to clear or set anyway (RFC 7748, section 5), as the tools of
// WireGuard do, so that the stored key is the very scalar.
void clamp(Key &key)
{
    key.front() &= 0xf8;
    key.back() = static_cast<unsigned char>((key.back() & 0x7f) | 0x40);
}

QString base64(const Key &key)
{
    std::array<char, sodium_base64_ENCODED_LEN(sizeof(Key), sodium_base64_VARIANT_ORIGINAL)> text{};
    sodium_bin2base64(text.data(), text.size(), key.data(), key.size(), sodium_base64_VARIANT_ORIGINAL);
    const QString result = QString::fromLatin1(text.data());
    sodium_memzero(text.data(), text.size());
    return result;
}

} // namespace

WireGuardKeyPair WireGuardKeyGenerator::generate()
{
    // Without a source of random numbers there is nothing that a program could safely do.
    static const int isReady = sodium_init();
    if (isReady < 0) {
        qFatal("The system's secure random source is not available.");
    }

    Key privateKey{};
    Key publicKey{};
    randombytes_buf(privateKey.data(), privateKey.size());
    clamp(privateKey);
    crypto_scalarmult_curve25519_base(publicKey.data(), privateKey.data());
    WireGuardKeyPair pair{base64(privateKey), base64(publicKey)};
    sodium_memzero(privateKey.data(), privateKey.size());
    return pair;
}

} // namespace tarnwik
