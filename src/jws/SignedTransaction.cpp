#include "jws/SignedTransaction.h"

#include "jws/CertificateChain.h"
#include "jws/CompactJWS.h"
#include "jws/ES256.h"
#include "jws/JSONObject.h"
#include "jws/PayloadCoding.h"
#include "jws/TransactionHeader.h"

namespace tarnwik {

namespace {

using Case = VerificationError::Case;

template<typename T>
T require(std::optional<T> value, Case errorCase)
{
    if (!value)
        throw VerificationError(errorCase);
    return *std::move(value);
}

std::optional<JSONObject> readObject(const QByteArray &part)
{
    const auto text = decodeBase64URL(part);
    return text ? JSONObject::parse(*text) : std::nullopt;
}

} // namespace

std::optional<TransactionPayload> readPayloadUnverified(const QByteArray &jws)
{
    const auto parts = splitCompactJWS(jws);
    const auto object = parts ? readObject(parts->payload) : std::nullopt;
    return object ? decodePayload(*object) : std::nullopt;
}

TransactionPayload verifyTransaction(const QByteArray &jws, const TransactionTrust &trust)
{
    const auto parts = require(splitCompactJWS(jws), Case::InvalidEncoding);
    const auto signature = require(decodeBase64URL(parts.signature), Case::InvalidEncoding);
    const auto headerText = require(decodeBase64URL(parts.header), Case::InvalidEncoding);
    const auto header = require(decodeHeader(headerText), Case::InvalidEncoding);
    const auto object = require(readObject(parts.payload), Case::InvalidEncoding);

    const auto key = trustedSignerKey(header.certificates, trust.rootCertificate, trust.now);
    if (!key)
        throw VerificationError(Case::InvalidCertificateChain);
    if (!verifyES256(parts.signingInput(), signature, key.get()))
        throw VerificationError(Case::InvalidSignature);

    auto payload = require(decodePayload(object), Case::MissingRequiredProperties);
    if (payload.bundleId != trust.bundleIdentifier)
        throw VerificationError(Case::MissingRequiredProperties);
    return payload;
}

} // namespace tarnwik
