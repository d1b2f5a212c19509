#pragma once

// Owners of OpenSSL's objects, and what else makes its interface safe to use.

#include <openssl/bio.h>
#include <openssl/bn.h>
#include <openssl/ec.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/x509.h>
#include <openssl/x509_vfy.h>

#include <memory>

namespace tarnwik::openssl {

template<auto Free>
struct Freer
{
    template<typename T>
    void operator()(T *object) const
    {
        Free(object);
    }
};

using Key = std::unique_ptr<EVP_PKEY, Freer<EVP_PKEY_free>>;
using Digest = std::unique_ptr<EVP_MD_CTX, Freer<EVP_MD_CTX_free>>;
using Number = std::unique_ptr<BIGNUM, Freer<BN_free>>;
using Signature = std::unique_ptr<ECDSA_SIG, Freer<ECDSA_SIG_free>>;
using Certificate = std::unique_ptr<X509, Freer<X509_free>>;
using Extension = std::unique_ptr<X509_EXTENSION, Freer<X509_EXTENSION_free>>;
using Store = std::unique_ptr<X509_STORE, Freer<X509_STORE_free>>;
using StoreContext = std::unique_ptr<X509_STORE_CTX, Freer<X509_STORE_CTX_free>>;
/// Overwrites what it held when it goes.
using Memory = std::unique_ptr<BIO, Freer<BIO_free>>;

/// Takes back the errors that OpenSSL notes for this thread while the object lives: the next user of a connection
/// would take one that is left behind for its own.
class ErrorScope
{
public:
    ErrorScope() { ERR_set_mark(); }
    ~ErrorScope() { ERR_pop_to_mark(); }
    ErrorScope(const ErrorScope &) = delete;
    ErrorScope &operator=(const ErrorScope &) = delete;
};

} // namespace tarnwik::openssl
