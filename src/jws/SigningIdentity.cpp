#include "jws/SigningIdentity.h"

#include "jws/CertificateChain.h"
#include "jws/CertificateIssuing.h"
#include "jws/CompactJWS.h"
#include "jws/ES256.h"
#include "jws/TransactionHeader.h"
#include "platform/AppStore.h"

#include <openssl/pem.h>

#include <limits>

namespace tarnwik {

namespace {

void require(bool succeeded)
{
    if (!succeeded)
        throw StoreError(QStringLiteral("The app store's signing key is damaged."));
}

QByteArray contents(BIO *memory)
{
    char *data = nullptr;
    const auto size = BIO_get_mem_data(memory, &data);
    return QByteArray(data, size);
}

void writeCertificate(BIO *memory, const QByteArray &encoded)
{
    const auto certificate = certificateFromDER(encoded);
    require(certificate && PEM_write_bio_X509(memory, certificate.get()) == 1);
}

/// Keys behind a password are none of ours. Without this OpenSSL would ask for it on the terminal.
int refusePassword(char * /*buffer*/, int /*size*/, int /*isForWriting*/, void * /*context*/)
{
    return -1;
}

} // namespace

SigningIdentity::SigningIdentity(std::shared_ptr<evp_pkey_st> privateKey, QList<QByteArray> chain)
    : m_privateKey(std::move(privateKey))
    , m_chain(std::move(chain))
{
}

SigningIdentity SigningIdentity::create(const QDateTime &now)
{
    constexpr int years = 20;
    const QDateTime notBefore = now.addDays(-1);
    const QDateTime notAfter = now.addYears(years);
    const auto rootKey = makeES256Key();
    const auto intermediateKey = makeES256Key();
    auto signerKey = makeES256Key();

    const auto root = issueCertificate({.role = CertificateRole::Root,
                                        .commonName = "Tarnwik App Store Root",
                                        .notBefore = notBefore,
                                        .notAfter = notAfter,
                                        .key = rootKey.get()});
    const auto intermediate = issueCertificate({.role = CertificateRole::Intermediate,
                                                .commonName = "Tarnwik App Store Intermediate",
                                                .notBefore = notBefore,
                                                .notAfter = notAfter,
                                                .key = intermediateKey.get()},
                                               CertificateIssuer{.certificate = root.get(), .key = rootKey.get()});
    const auto signer =
        issueCertificate({.role = CertificateRole::Signer,
                          .commonName = "Tarnwik App Store Transactions",
                          .notBefore = notBefore,
                          .notAfter = notAfter,
                          .key = signerKey.get()},
                         CertificateIssuer{.certificate = intermediate.get(), .key = intermediateKey.get()});
    return SigningIdentity(
        std::move(signerKey),
        {certificateToDER(signer.get()), certificateToDER(intermediate.get()), certificateToDER(root.get())});
}

SigningIdentity SigningIdentity::fromPEM(const QByteArray &pem)
{
    const openssl::ErrorScope errors;
    require(pem.size() <= std::numeric_limits<int>::max());
    const openssl::Memory memory(BIO_new_mem_buf(pem.constData(), int(pem.size())));
    require(bool(memory));
    openssl::Key key(PEM_read_bio_PrivateKey(memory.get(), nullptr, refusePassword, nullptr));
    require(isES256Key(key.get()));

    QList<QByteArray> chain;
    while (const openssl::Certificate certificate{PEM_read_bio_X509(memory.get(), nullptr, nullptr, nullptr)}) {
        require(!chain.isEmpty() || X509_check_private_key(certificate.get(), key.get()) == 1);
        chain.append(certificateToDER(certificate.get()));
    }
    // Reading ends well only where no further certificate begins.
    require(!chain.isEmpty() && ERR_GET_REASON(ERR_peek_last_error()) == PEM_R_NO_START_LINE);
    return SigningIdentity(std::move(key), std::move(chain));
}

QByteArray SigningIdentity::toPEM() const
{
    const openssl::ErrorScope errors;
    const openssl::Memory memory(BIO_new(BIO_s_mem()));
    require(memory
            && PEM_write_bio_PrivateKey(memory.get(), m_privateKey.get(), nullptr, nullptr, 0, nullptr, nullptr) == 1);
    for (const QByteArray &certificate : m_chain)
        writeCertificate(memory.get(), certificate);
    return contents(memory.get());
}

QByteArray SigningIdentity::rootCertificate() const
{
    const openssl::ErrorScope errors;
    const openssl::Memory memory(BIO_new(BIO_s_mem()));
    require(bool(memory));
    writeCertificate(memory.get(), m_chain.last());
    return contents(memory.get());
}

QByteArray SigningIdentity::sign(const TransactionPayload &payload) const
{
    const CompactJWS parts{encodeBase64URL(encodeHeader({m_chain})), encodeBase64URL(encodePayload(payload)), {}};
    const QByteArray signingInput = parts.signingInput();
    return signingInput + '.' + encodeBase64URL(signES256(signingInput, m_privateKey.get()));
}

} // namespace tarnwik
