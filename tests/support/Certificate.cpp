#include "support/Certificate.h"

#include "jws/OpenSSLPointers.h"

#include <QHostAddress>

#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <stdexcept>

namespace tarnwik::test {

namespace {

void require(bool succeeded)
{
    if (!succeeded)
        throw std::runtime_error("OpenSSL could not make the certificate");
}

void addExtension(X509 *certificate, int identifier, const QByteArray &value)
{
    X509V3_CTX context;
    X509V3_set_ctx(&context, certificate, certificate, nullptr, nullptr, 0);
    const openssl::Extension extension(X509V3_EXT_conf_nid(nullptr, &context, identifier, value.constData()));
    require(extension && X509_add_ext(certificate, extension.get(), -1));
}

QByteArray contents(BIO *memory)
{
    char *data = nullptr;
    const auto size = BIO_get_mem_data(memory, &data);
    return QByteArray(data, size);
}

} // namespace

Certificate makeSelfSignedCertificate(const QString &host, std::chrono::seconds validFor)
{
    const openssl::Key key(EVP_EC_gen("P-256"));
    const openssl::Certificate certificate(X509_new());
    require(key && certificate);

    X509_set_version(certificate.get(), X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -3600);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), validFor.count());
    X509_set_pubkey(certificate.get(), key.get());

    auto *name = X509_get_subject_name(certificate.get());
    const QByteArray hostBytes = host.toUtf8();
    const auto *text = reinterpret_cast<const unsigned char *>(hostBytes.constData());
    require(X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8, text, -1, -1, 0));
    require(X509_set_issuer_name(certificate.get(), name));

    const bool isAddress = !QHostAddress(host).isNull();
    addExtension(certificate.get(), NID_subject_alt_name, (isAddress ? "IP:" : "DNS:") + hostBytes);
    addExtension(certificate.get(), NID_basic_constraints, "critical,CA:TRUE");
    require(X509_sign(certificate.get(), key.get(), EVP_sha256()) > 0);

    const openssl::Memory certificateText(BIO_new(BIO_s_mem()));
    const openssl::Memory keyText(BIO_new(BIO_s_mem()));
    require(PEM_write_bio_X509(certificateText.get(), certificate.get()));
    require(PEM_write_bio_PrivateKey(keyText.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr));
    return {contents(certificateText.get()), contents(keyText.get())};
}

} // namespace tarnwik::test
