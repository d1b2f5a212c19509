#pragma once

#include "jws/TransactionPayload.h"

#include <QDateTime>
#include <QList>

#include <memory>

/// OpenSSL's key, whatever it is made of.
struct evp_pkey_st;

namespace tarnwik {

/// A store that signs its own transactions: a key with the chain of certificates that vouches for it.
class SigningIdentity
{
public:
    /// A new root, an intermediate and a signer, valid from a day before \a now for twenty years. The keys of root and
    /// intermediate are forgotten at once: nothing else will ever be signed with them. Throws StoreError.
    static SigningIdentity create(const QDateTime &now);

    /// Reads what toPEM() wrote. Throws StoreError.
    static SigningIdentity fromPEM(const QByteArray &pem);

    /// The signer's private key, then the chain up to the root. Secret.
    QByteArray toPEM() const;

    /// The root's certificate, for those who verify. Not secret.
    QByteArray rootCertificate() const;

    /// \a payload in compact form, signed with ES256, the chain in its `x5c` header. Throws StoreError.
    QByteArray sign(const TransactionPayload &payload) const;

private:
    SigningIdentity(std::shared_ptr<evp_pkey_st> privateKey, QList<QByteArray> chain);

    /// Shared by the copies and never changed; the last one overwrites it.
    std::shared_ptr<evp_pkey_st> m_privateKey;
    /// DER, the signer's first.
    QList<QByteArray> m_chain;
};

} // namespace tarnwik
