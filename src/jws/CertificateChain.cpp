#include "jws/CertificateChain.h"

#include "jws/ES256.h"

#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace tarnwik {

namespace {

struct StackFreer
{
    // The certificates themselves belong to others.
    void operator()(STACK_OF(X509) * stack) const { sk_X509_free(stack); }
};
using Stack = std::unique_ptr<STACK_OF(X509), StackFreer>;

using Chain = std::vector<openssl::Certificate>;

/// Empty when one of \a encoded is no certificate, or there are too few or too many to be read at all.
Chain readChain(const QList<QByteArray> &encoded)
{
    // A signer and the root at least.
    constexpr qsizetype shortest = 2;
    constexpr qsizetype longest = 5;
    Chain chain;
    if (encoded.size() < shortest || encoded.size() > longest)
        return chain;
    for (const QByteArray &bytes : encoded) {
        chain.push_back(certificateFromDER(bytes));
        if (!chain.back())
            return {};
    }
    return chain;
}

/// A store that trusts \a root alone, at \a now. Null when it failed.
openssl::Store storeOf(X509 *root, const QDateTime &now)
{
    openssl::Store store(X509_STORE_new());
    if (!store || X509_STORE_add_cert(store.get(), root) != 1)
        return nullptr;
    // Nothing weaker than 112 bits, SHA-1 included.
    constexpr int authenticationLevel = 2;
    X509_VERIFY_PARAM *parameters = X509_STORE_get0_param(store.get());
    X509_VERIFY_PARAM_set_time(parameters, now.toSecsSinceEpoch());
    X509_VERIFY_PARAM_set_auth_level(parameters, authenticationLevel);
    return store;
}

/// The certificates between the signer's and the root's.
Stack intermediatesOf(const Chain &chain)
{
    Stack stack(sk_X509_new_null());
    for (std::size_t place = 1; stack && place + 1 < chain.size(); ++place) {
        if (!sk_X509_push(stack.get(), chain[place].get()))
            return nullptr;
    }
    return stack;
}

/// Whether OpenSSL went the very way that \a chain shows, up to the root that it trusts, and left none out.
bool isWholeChain(const STACK_OF(X509) * verified, const Chain &chain)
{
    if (sk_X509_num(verified) != int(chain.size()))
        return false;
    for (std::size_t place = 0; place < chain.size(); ++place) {
        if (X509_cmp(sk_X509_value(verified, int(place)), chain[place].get()) != 0)
            return false;
    }
    return true;
}

bool isTrusted(const Chain &chain, X509 *root, const QDateTime &now)
{
    const auto store = storeOf(root, now);
    const auto intermediates = intermediatesOf(chain);
    const openssl::StoreContext context(X509_STORE_CTX_new());
    return store && intermediates && context
        && X509_STORE_CTX_init(context.get(), store.get(), chain.front().get(), intermediates.get()) == 1
        && X509_verify_cert(context.get()) == 1 && isWholeChain(X509_STORE_CTX_get0_chain(context.get()), chain);
}

/// Whether the owner of \a certificate may sign texts, and nothing else that would make further signers.
bool isSigner(X509 *certificate)
{
    // A certificate that does not say what its key is for would count as good for everything.
    return X509_check_ca(certificate) == 0 && (X509_get_extension_flags(certificate) & EXFLAG_KUSAGE) != 0
        && (X509_get_key_usage(certificate) & KU_DIGITAL_SIGNATURE) != 0 && isES256Key(X509_get0_pubkey(certificate));
}

} // namespace

openssl::Key trustedSignerKey(const QList<QByteArray> &chain, const QByteArray &trustedRoot, const QDateTime &now)
{
    const openssl::ErrorScope errors;
    const auto root = certificateFromPEM(trustedRoot);
    const Chain certificates = readChain(chain);
    if (!root || certificates.empty() || !now.isValid() || !isTrusted(certificates, root.get(), now)
        || !isSigner(certificates.front().get()))
        return nullptr;
    return openssl::Key(X509_get_pubkey(certificates.front().get()));
}

openssl::Certificate certificateFromDER(const QByteArray &encoded)
{
    const openssl::ErrorScope errors;
    const auto *position = reinterpret_cast<const unsigned char *>(encoded.constData());
    const auto *end = position + encoded.size();
    openssl::Certificate certificate(d2i_X509(nullptr, &position, long(encoded.size())));
    return position == end ? std::move(certificate) : nullptr;
}

openssl::Certificate certificateFromPEM(const QByteArray &text)
{
    const openssl::ErrorScope errors;
    if (text.size() > std::numeric_limits<int>::max())
        return nullptr;
    const openssl::Memory memory(BIO_new_mem_buf(text.constData(), int(text.size())));
    return openssl::Certificate(memory ? PEM_read_bio_X509(memory.get(), nullptr, nullptr, nullptr) : nullptr);
}

QByteArray certificateToDER(const X509 *certificate)
{
    QByteArray encoded(std::max(i2d_X509(certificate, nullptr), 0), Qt::Uninitialized);
    auto *end = reinterpret_cast<unsigned char *>(encoded.data());
    if (i2d_X509(certificate, &end) != encoded.size())
        return {};
    return encoded;
}

} // namespace tarnwik
