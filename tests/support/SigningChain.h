#pragma once

#include "jws/OpenSSLPointers.h"
#include "jws/SignedTransaction.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>

namespace tarnwik::test {

/// What is wrong with a store's chain of certificates, and with nothing else about what it signs.
enum class ChainFault {
    None,
    ExpiredSigner,
    SignerNotYetValid,
    ExpiredIntermediate,
    ExpiredRoot,
    /// A chain that is good in itself, up to another root of the same name.
    ForeignRoot,
    /// The same, with the trusted root put in the place of its own.
    ExchangedRoot,
    /// The signer was vouched for by another signer.
    IntermediateIsNoAuthority,
    /// The signer could vouch for further ones.
    SignerIsAuthority,
    /// The signer's key is not on the curve of ES256.
    SignerOnAnotherCurve,
    NoSigner,
    NoIntermediate,
    NoRoot,
    /// The right certificates, the root first.
    WrongOrder,
    /// One more certificate than it takes.
    SurplusCertificate,
    /// The signature is not by the certificate's key.
    OtherSignerKey,
};

/// A store of a test's own.
class SigningChain
{
public:
    /// Signer, intermediate and root; valid, but for what \a fault says, from a day before \a now for a year.
    explicit SigningChain(const QDateTime &now, ChainFault fault = ChainFault::None);

    /// DER, the signer's first.
    const QList<QByteArray> &certificates() const noexcept { return m_certificates; }

    /// The root that a verifier should trust, PEM.
    const QByteArray &trustedRoot() const noexcept { return m_trustedRoot; }

    /// The usual header, in JSON.
    QByteArray header() const;

    /// Signed in the usual way.
    QByteArray sign(const TransactionPayload &payload) const;

    /// Whatever \a header and \a payload are, with a good signature.
    QByteArray sign(const QByteArray &header, const QByteArray &payload) const;

private:
    openssl::Key m_key;
    QList<QByteArray> m_certificates;
    QByteArray m_trustedRoot;
};

/// A purchase of a subscription, made at \a now for a month, with every field set that a good one has.
TransactionPayload sampleTransaction(const QDateTime &now);

/// \a jws with another part in the place of its own; the new one is written in base64url here.
QByteArray withHeader(const QByteArray &jws, const QByteArray &header);
QByteArray withPayload(const QByteArray &jws, const QByteArray &payload);
QByteArray withSignature(const QByteArray &jws, const QByteArray &signature);

/// The parts of \a jws, read from base64url.
QByteArray headerOf(const QByteArray &jws);
QByteArray payloadOf(const QByteArray &jws);
QByteArray signatureOf(const QByteArray &jws);

} // namespace tarnwik::test
