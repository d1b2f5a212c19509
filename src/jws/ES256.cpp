#include "jws/ES256.h"

#include "platform/AppStore.h"

#include <openssl/core_names.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <tuple>

namespace tarnwik {

namespace {

constexpr qsizetype numberSize = 32;

const unsigned char *bytes(const QByteArray &array)
{
    return reinterpret_cast<const unsigned char *>(array.constData());
}

unsigned char *bytes(QByteArray &array)
{
    return reinterpret_cast<unsigned char *>(array.data());
}

/// The form that OpenSSL reads. Empty when there is none.
QByteArray toDER(const QByteArray &signature)
{
    const openssl::Signature pair(ECDSA_SIG_new());
    openssl::Number r(BN_bin2bn(bytes(signature), int(numberSize), nullptr));
    openssl::Number s(BN_bin2bn(bytes(signature) + numberSize, int(numberSize), nullptr));
    if (!pair || !r || !s || !ECDSA_SIG_set0(pair.get(), r.get(), s.get()))
        return {};
    // The pair owns them now.
    std::ignore = r.release();
    std::ignore = s.release();

    QByteArray encoded(std::max(i2d_ECDSA_SIG(pair.get(), nullptr), 0), Qt::Uninitialized);
    auto *end = bytes(encoded);
    if (i2d_ECDSA_SIG(pair.get(), &end) != encoded.size())
        return {};
    return encoded;
}

/// The form that signed texts carry. Empty when \a encoded is no signature.
QByteArray fromDER(const QByteArray &encoded)
{
    const auto *start = bytes(encoded);
    const openssl::Signature pair(d2i_ECDSA_SIG(nullptr, &start, encoded.size()));
    QByteArray signature(2 * numberSize, Qt::Uninitialized);
    if (!pair || BN_bn2binpad(ECDSA_SIG_get0_r(pair.get()), bytes(signature), int(numberSize)) < 0
        || BN_bn2binpad(ECDSA_SIG_get0_s(pair.get()), bytes(signature) + numberSize, int(numberSize)) < 0)
        return {};
    return signature;
}

/// The signature of \a text in OpenSSL's own form. Empty when it failed.
QByteArray signToDER(const QByteArray &text, EVP_PKEY *key)
{
    const openssl::Digest digest(EVP_MD_CTX_new());
    const auto size = std::size_t(text.size());
    std::size_t length = 0;
    if (!digest || EVP_DigestSignInit(digest.get(), nullptr, EVP_sha256(), nullptr, key) != 1
        || EVP_DigestSign(digest.get(), nullptr, &length, bytes(text), size) != 1)
        return {};
    QByteArray encoded(qsizetype(length), Qt::Uninitialized);
    if (EVP_DigestSign(digest.get(), bytes(encoded), &length, bytes(text), size) != 1)
        return {};
    encoded.truncate(qsizetype(length));
    return encoded;
}

} // namespace

bool isES256Key(const EVP_PKEY *key)
{
    std::array<char, 64> name{};
    std::size_t length = 0;
    return key && EVP_PKEY_is_a(key, "EC") && EVP_PKEY_get_group_name(key, name.data(), name.size(), &length) == 1
        && std::string_view(name.data(), length) == SN_X9_62_prime256v1;
}

QByteArray signES256(const QByteArray &text, EVP_PKEY *key)
{
    const openssl::ErrorScope errors;
    const QByteArray signature = isES256Key(key) ? fromDER(signToDER(text, key)) : QByteArray();
    if (signature.isEmpty())
        throw StoreError(QStringLiteral("The App Store transaction could not be signed."));
    return signature;
}

bool verifyES256(const QByteArray &text, const QByteArray &signature, EVP_PKEY *key)
{
    const openssl::ErrorScope errors;
    if (signature.size() != 2 * numberSize || !isES256Key(key))
        return false;
    const QByteArray encoded = toDER(signature);
    const openssl::Digest digest(EVP_MD_CTX_new());
    return digest && EVP_DigestVerifyInit(digest.get(), nullptr, EVP_sha256(), nullptr, key) == 1
        && EVP_DigestVerify(digest.get(), bytes(encoded), std::size_t(encoded.size()), bytes(text),
                            std::size_t(text.size()))
        == 1;
}

} // namespace tarnwik
