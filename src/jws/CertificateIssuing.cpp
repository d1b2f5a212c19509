#include "jws/CertificateIssuing.h"

#include "platform/AppStore.h"

#include <openssl/x509v3.h>

namespace tarnwik {

namespace {

void require(bool succeeded)
{
    if (!succeeded)
        throw StoreError(QStringLiteral("The app store's certificates could not be made."));
}

void setRandomSerial(X509 *certificate)
{
    // As long as 20 bytes can be and stay positive.
    constexpr int bits = 159;
    const openssl::Number serial(BN_new());
    require(serial && BN_rand(serial.get(), bits, BN_RAND_TOP_ANY, BN_RAND_BOTTOM_ANY) == 1
            && BN_to_ASN1_INTEGER(serial.get(), X509_get_serialNumber(certificate)));
}

void setValidity(X509 *certificate, const QDateTime &notBefore, const QDateTime &notAfter)
{
    require(ASN1_TIME_set(X509_getm_notBefore(certificate), notBefore.toSecsSinceEpoch())
            && ASN1_TIME_set(X509_getm_notAfter(certificate), notAfter.toSecsSinceEpoch()));
}

void setNames(X509 *certificate, const QByteArray &commonName, const X509 *issuer)
{
    X509_NAME *name = X509_get_subject_name(certificate);
    const auto *text = reinterpret_cast<const unsigned char *>(commonName.constData());
    require(X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8, text, int(commonName.size()), -1, 0) == 1
            && X509_set_issuer_name(certificate, X509_get_subject_name(issuer ? issuer : certificate)) == 1);
}

void addExtension(X509 *certificate, X509 *issuer, int identifier, const char *value)
{
    X509V3_CTX context;
    X509V3_set_ctx(&context, issuer ? issuer : certificate, certificate, nullptr, nullptr, 0);
    const openssl::Extension extension(X509V3_EXT_conf_nid(nullptr, &context, identifier, value));
    require(extension && X509_add_ext(certificate, extension.get(), -1) == 1);
}

void addExtensions(X509 *certificate, CertificateRole role, X509 *issuer)
{
    const bool isSigner = role == CertificateRole::Signer;
    const char *const constraints = isSigner ? "critical,CA:FALSE"
        : role == CertificateRole::Root      ? "critical,CA:TRUE,pathlen:1"
                                             : "critical,CA:TRUE,pathlen:0";
    const char *const usage = isSigner ? "critical,digitalSignature" : "critical,keyCertSign,cRLSign";
    addExtension(certificate, issuer, NID_basic_constraints, constraints);
    addExtension(certificate, issuer, NID_key_usage, usage);
    addExtension(certificate, issuer, NID_subject_key_identifier, "hash");
    if (issuer)
        addExtension(certificate, issuer, NID_authority_key_identifier, "keyid:always");
}

} // namespace

openssl::Key makeES256Key()
{
    const openssl::ErrorScope errors;
    openssl::Key key(EVP_EC_gen("P-256"));
    require(bool(key));
    return key;
}

openssl::Certificate issueCertificate(const CertificateRequest &request, const std::optional<CertificateIssuer> &issuer)
{
    const openssl::ErrorScope errors;
    X509 *const issuerCertificate = issuer ? issuer->certificate : nullptr;
    openssl::Certificate certificate(X509_new());
    require(certificate && X509_set_version(certificate.get(), X509_VERSION_3) == 1
            && X509_set_pubkey(certificate.get(), request.key) == 1);
    setRandomSerial(certificate.get());
    setValidity(certificate.get(), request.notBefore, request.notAfter);
    setNames(certificate.get(), request.commonName, issuerCertificate);
    addExtensions(certificate.get(), request.role, issuerCertificate);
    require(X509_sign(certificate.get(), issuer ? issuer->key : request.key, EVP_sha256()) > 0);
    return certificate;
}

} // namespace tarnwik
