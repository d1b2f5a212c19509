#include "service/Secrets.h"

#include <sodium.h>

#include <QtGlobal>

#include <array>
#include <mutex>

namespace tarnwik::service {

namespace {

void startSodium()
{
    if (sodium_init() < 0)
        qFatal("libsodium cannot be started");
}

QByteArray randomBytes(qsizetype count)
{
    startSodium();
    QByteArray bytes(count, Qt::Uninitialized);
    randombytes_buf(bytes.data(), std::size_t(count));
    return bytes;
}

/// One hash at a time: each takes 64 MiB while it is made.
std::mutex hashing;

} // namespace

QString hashPassword(const QString &password, PasswordCost cost)
{
    startSodium();
    const bool isLeast = cost == PasswordCost::Least;
    const auto operations = isLeast ? crypto_pwhash_OPSLIMIT_MIN : crypto_pwhash_OPSLIMIT_INTERACTIVE;
    const auto memory = isLeast ? crypto_pwhash_MEMLIMIT_MIN : crypto_pwhash_MEMLIMIT_INTERACTIVE;
    const QByteArray text = password.toUtf8();
    std::array<char, crypto_pwhash_STRBYTES> hash{};

    const std::lock_guard lock(hashing);
    if (crypto_pwhash_str(hash.data(), text.constData(), std::size_t(text.size()), operations, memory) != 0)
        throw std::bad_alloc();
    return QString::fromLatin1(hash.data());
}

bool isPasswordHash(const QString &hash)
{
    // Any cost will do; what counts is whether libsodium can read the text at all.
    const QByteArray text = hash.toLatin1();
    return hash.startsWith(QLatin1String("$argon2id$")) && text.size() < qsizetype(crypto_pwhash_STRBYTES)
        && crypto_pwhash_str_needs_rehash(text.constData(), crypto_pwhash_OPSLIMIT_MIN, crypto_pwhash_MEMLIMIT_MIN)
        != -1;
}

bool isPasswordCorrect(const QString &password, const QString &hash)
{
    startSodium();
    const QByteArray text = password.toUtf8();
    const std::lock_guard lock(hashing);
    return crypto_pwhash_str_verify(hash.toLatin1().constData(), text.constData(), std::size_t(text.size())) == 0;
}

QByteArray makeToken()
{
    return randomBytes(32).toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
}

QByteArray fingerprint(const QByteArray &secret)
{
    startSodium();
    QByteArray hash(crypto_generichash_BYTES, Qt::Uninitialized);
    crypto_generichash(reinterpret_cast<unsigned char *>(hash.data()), crypto_generichash_BYTES,
                       reinterpret_cast<const unsigned char *>(secret.constData()),
                       static_cast<unsigned long long>(secret.size()), nullptr, 0);
    return hash;
}

bool isUsablePublicKey(const QString &key)
{
    startSodium();
    const auto decoded = QByteArray::fromBase64Encoding(key.toUtf8(), QByteArray::AbortOnBase64DecodingErrors);
    const QByteArray point = decoded.decoded;
    if (!decoded || point.size() != crypto_scalarmult_BYTES || QString::fromLatin1(point.toBase64()) != key)
        return false;

    // libsodium refuses a product that is zero, and only points of low order give one. The scalar does not matter.
    const std::array<unsigned char, crypto_scalarmult_SCALARBYTES> scalar{1};
    std::array<unsigned char, crypto_scalarmult_BYTES> product{};
    return crypto_scalarmult(product.data(), scalar.data(), reinterpret_cast<const unsigned char *>(point.constData()))
        == 0;
}

QString makePresharedKey()
{
    return QString::fromLatin1(randomBytes(32).toBase64());
}

} // namespace tarnwik::service
