#include "support/SigningChain.h"

#include "jws/CertificateChain.h"
#include "jws/CertificateIssuing.h"
#include "jws/CompactJWS.h"
#include "jws/ES256.h"
#include "jws/TransactionHeader.h"
#include "platform/BundleIdentifier.h"

#include <openssl/pem.h>

namespace tarnwik::test {

namespace {

/// A certificate with its key.
struct Holder
{
    openssl::Key key;
    openssl::Certificate certificate;

    CertificateIssuer issuer() const { return {.certificate = certificate.get(), .key = key.get()}; }
};

/// The days, counted from now, between which a certificate is valid.
struct Validity
{
    int from = -1;
    int to = 365;
};

constexpr Validity expired{.from = -30, .to = -1};
constexpr Validity notYetValid{.from = 1, .to = 365};

/// Makes certificates around one moment.
struct Office
{
    QDateTime now;

    Holder issue(CertificateRole role, const QByteArray &name, openssl::Key key, Validity validity,
                 const std::optional<CertificateIssuer> &issuer = std::nullopt) const
    {
        auto certificate = issueCertificate({.role = role,
                                             .commonName = name,
                                             .notBefore = now.addDays(validity.from),
                                             .notAfter = now.addDays(validity.to),
                                             .key = key.get()},
                                            issuer);
        return {std::move(key), std::move(certificate)};
    }

    Holder root(Validity validity = {}) const
    {
        return issue(CertificateRole::Root, "Test Root", makeES256Key(), validity);
    }
};

CertificateRole roleOfIntermediate(ChainFault fault)
{
    return fault == ChainFault::IntermediateIsNoAuthority ? CertificateRole::Signer : CertificateRole::Intermediate;
}

CertificateRole roleOfSigner(ChainFault fault)
{
    return fault == ChainFault::SignerIsAuthority ? CertificateRole::Intermediate : CertificateRole::Signer;
}

Validity validityOfSigner(ChainFault fault)
{
    if (fault == ChainFault::ExpiredSigner)
        return expired;
    return fault == ChainFault::SignerNotYetValid ? notYetValid : Validity{};
}

QByteArray pem(X509 *certificate)
{
    const openssl::Memory memory(BIO_new(BIO_s_mem()));
    PEM_write_bio_X509(memory.get(), certificate);
    char *data = nullptr;
    const auto size = BIO_get_mem_data(memory.get(), &data);
    return QByteArray(data, size);
}

/// What is shown of a good chain instead of all of it.
void rearrange(QList<QByteArray> &certificates, const QByteArray &foreignRoot, ChainFault fault)
{
    if (fault == ChainFault::NoSigner)
        certificates.removeFirst();
    if (fault == ChainFault::NoIntermediate)
        certificates.removeAt(1);
    if (fault == ChainFault::NoRoot)
        certificates.removeLast();
    if (fault == ChainFault::WrongOrder)
        std::swap(certificates.first(), certificates.last());
    if (fault == ChainFault::SurplusCertificate)
        certificates.insert(2, foreignRoot);
    if (fault == ChainFault::ExchangedRoot)
        certificates.last() = foreignRoot;
}

CompactJWS split(const QByteArray &jws)
{
    return splitCompactJWS(jws).value();
}

QByteArray join(const CompactJWS &parts)
{
    return parts.signingInput() + '.' + parts.signature;
}

} // namespace

SigningChain::SigningChain(const QDateTime &now, ChainFault fault)
{
    const Office office{now};
    const Holder otherRoot = office.root();
    const Holder root = office.root(fault == ChainFault::ExpiredRoot ? expired : Validity{});
    const Holder intermediate =
        office.issue(roleOfIntermediate(fault), "Test Intermediate", makeES256Key(),
                     fault == ChainFault::ExpiredIntermediate ? expired : Validity{}, root.issuer());
    auto signerKey = fault == ChainFault::SignerOnAnotherCurve ? openssl::Key(EVP_EC_gen("P-384")) : makeES256Key();
    Holder signer = office.issue(roleOfSigner(fault), "Test Signer", std::move(signerKey), validityOfSigner(fault),
                                 intermediate.issuer());

    m_certificates = {certificateToDER(signer.certificate.get()), certificateToDER(intermediate.certificate.get()),
                      certificateToDER(root.certificate.get())};
    rearrange(m_certificates, certificateToDER(otherRoot.certificate.get()), fault);

    const bool isForeign = fault == ChainFault::ForeignRoot || fault == ChainFault::ExchangedRoot;
    m_trustedRoot = pem((isForeign ? otherRoot : root).certificate.get());
    // A key on another curve could not make the signature that the test is not about.
    const bool isOtherKey = fault == ChainFault::OtherSignerKey || fault == ChainFault::SignerOnAnotherCurve;
    m_key = isOtherKey ? makeES256Key() : std::move(signer.key);
}

QByteArray SigningChain::header() const
{
    return encodeHeader({m_certificates});
}

QByteArray SigningChain::sign(const TransactionPayload &payload) const
{
    return sign(header(), encodePayload(payload));
}

QByteArray SigningChain::sign(const QByteArray &header, const QByteArray &payload) const
{
    CompactJWS parts{encodeBase64URL(header), encodeBase64URL(payload), {}};
    parts.signature = encodeBase64URL(signES256(parts.signingInput(), m_key.get()));
    return join(parts);
}

TransactionPayload sampleTransaction(const QDateTime &now)
{
    TransactionPayload payload;
    payload.transactionId = QStringLiteral("2000000123456789");
    payload.originalTransactionId = QStringLiteral("2000000123450000");
    payload.bundleId = bundleIdentifier();
    payload.productId = QStringLiteral("example.tarnwik.monthly");
    payload.subscriptionGroupIdentifier = QStringLiteral("21400001");
    payload.purchaseDate = now.toMSecsSinceEpoch();
    payload.originalPurchaseDate = payload.purchaseDate;
    payload.expiresDate = now.addMonths(1).toMSecsSinceEpoch();
    payload.type = QStringLiteral("Auto-Renewable Subscription");
    payload.inAppOwnershipType = QStringLiteral("PURCHASED");
    payload.signedDate = payload.purchaseDate;
    payload.environment = QStringLiteral("Production");
    payload.transactionReason = QStringLiteral("PURCHASE");
    payload.storefront = QStringLiteral("DEU");
    payload.appAccountToken = QStringLiteral("6f0c1e62-27b5-4b0a-9d0e-1c5a5b8f9a01");
    return payload;
}

QByteArray withHeader(const QByteArray &jws, const QByteArray &header)
{
    CompactJWS parts = split(jws);
    parts.header = encodeBase64URL(header);
    return join(parts);
}

QByteArray withPayload(const QByteArray &jws, const QByteArray &payload)
{
    CompactJWS parts = split(jws);
    parts.payload = encodeBase64URL(payload);
    return join(parts);
}

QByteArray withSignature(const QByteArray &jws, const QByteArray &signature)
{
    CompactJWS parts = split(jws);
    parts.signature = encodeBase64URL(signature);
    return join(parts);
}

QByteArray headerOf(const QByteArray &jws)
{
    return decodeBase64URL(split(jws).header).value();
}

QByteArray payloadOf(const QByteArray &jws)
{
    return decodeBase64URL(split(jws).payload).value();
}

QByteArray signatureOf(const QByteArray &jws)
{
    return decodeBase64URL(split(jws).signature).value();
}

} // namespace tarnwik::test
