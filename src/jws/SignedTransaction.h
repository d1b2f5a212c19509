#pragma once

#include "jws/TransactionPayload.h"
#include "platform/AppStore.h"

#include <QDateTime>

namespace tarnwik {

/// Why a signed transaction is not to be trusted, under the platform's names for it.
class VerificationError final : public StoreError
{
public:
    enum class Case {
        /// This is no signed transaction: not three parts in base64url, no JSON object where there must be one, an
        /// algorithm other than ES256.
        InvalidEncoding,
        /// Its certificates do not lead to the store's root, or are not valid at the time.
        InvalidCertificateChain,
        /// The text was not signed with the certificate's key.
        InvalidSignature,
        /// The payload lacks what every transaction has, or is for another program.
        MissingRequiredProperties,
    };

    explicit VerificationError(Case errorCase);

    Case errorCase() const noexcept { return m_case; }

private:
    Case m_case;
};

/// Whom to trust, and what for.
struct TransactionTrust
{
    /// The store's root certificate, PEM. It must vouch for nothing but transactions: whoever holds a signer's
    /// certificate under it is believed.
    QByteArray rootCertificate;
    /// The program that the transaction must be for.
    QString bundleIdentifier;
    /// The moment at which the certificates must be valid.
    QDateTime now;
};

/// What the payload of \a jws says, unchecked: for a transaction that is shown as unverified. Nothing when there is
/// no payload to be read.
std::optional<TransactionPayload> readPayloadUnverified(const QByteArray &jws);

/// Checks form, certificate chain, signature and payload of \a jws, in this order, and gives what it says. The header's
/// `alg` must be ES256 and its `x5c` the certificates from the signer's up to the root, which must be that of \a trust.
/// Never trusts anything else the text says of itself. Throws VerificationError. From any thread.
TransactionPayload verifyTransaction(const QByteArray &jws, const TransactionTrust &trust);

} // namespace tarnwik
