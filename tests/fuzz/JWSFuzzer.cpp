// Feeds signed transactions to those who read them. Nothing but a VerificationError may come out, and nothing that the
// committed root's store did not sign may pass.

#include "jws/CompactJWS.h"
#include "support/SigningChain.h"

#include "platform/BundleIdentifier.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

// The fuzzer's own change of an input; from its runtime.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t greatestSize);

namespace tarnwik::test {

namespace {

/// Ends the program in the way that the fuzzer takes note of.
void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// When the certificates of the corpus are valid.
const QDateTime &moment()
{
    static const auto time = QDateTime::fromString(QStringLiteral("2031-03-04T05:06:07Z"), Qt::ISODate);
    return time;
}

/// Trust in the root that the inputs of the corpus were signed under. Its keys are no more.
const TransactionTrust &corpusTrust()
{
    static const auto trust = [] {
        QFile file(QStringLiteral(TARNWIK_ROOT_FILE));
        require(file.open(QIODevice::ReadOnly));
        return TransactionTrust{file.readAll(), bundleIdentifier(), moment()};
    }();
    return trust;
}

/// A store that signs whatever it is given, so that what comes behind the signature is reached.
const SigningChain &store()
{
    static const SigningChain chain(moment());
    return chain;
}

std::optional<TransactionPayload> verified(const QByteArray &jws, const TransactionTrust &trust)
{
    try {
        return verifyTransaction(jws, trust);
    } catch (const VerificationError &) {
        return std::nullopt;
    }
}

/// The corpus holds two transactions that are good: one as it was bought, and the same taken back.
void readAsItIs(const QByteArray &jws)
{
    const auto payload = verified(jws, corpusTrust());
    if (!payload)
        return;
    auto expected = sampleTransaction(moment());
    if (payload->revocationDate) {
        expected.revocationDate = expected.purchaseDate + 5000;
        expected.revocationReason = 1;
        expected.isUpgraded = true;
    }
    require(*payload == expected && readPayloadUnverified(jws) == expected);
}

void readWellSigned(const QByteArray &jws)
{
    const auto parts = splitCompactJWS(jws);
    const auto text = parts ? decodeBase64URL(parts->payload) : std::nullopt;
    if (!text)
        return;
    const TransactionTrust trust{store().trustedRoot(), bundleIdentifier(), moment()};
    const auto payload = verified(store().sign(store().header(), *text), trust);
    const auto unverified = readPayloadUnverified(jws);
    const bool isForUs = unverified && unverified->bundleId == bundleIdentifier();
    require(payload == (isForUs ? unverified : std::nullopt));
    // What was read is written in a form that is read as the same.
    require(!payload || verified(store().sign(*payload), trust) == payload);
}

/// Changes \a part beneath its base64url, where one bit more or less spoils the whole.
void changeWithin(QByteArray &part, std::size_t greatestSize)
{
    auto bytes = decodeBase64URL(part);
    if (!bytes)
        return;
    const auto size = std::size_t(bytes->size());
    const std::size_t room = std::max(size, greatestSize);
    bytes->resize(qsizetype(room));
    const auto newSize = LLVMFuzzerMutate(reinterpret_cast<std::uint8_t *>(bytes->data()), size, room);
    part = encodeBase64URL(bytes->first(qsizetype(newSize)));
}

} // namespace

} // namespace tarnwik::test

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size, std::size_t greatestSize,
                                               unsigned seed)
{
    using namespace tarnwik;
    const QByteArray text(reinterpret_cast<const char *>(data), qsizetype(size));
    auto parts = splitCompactJWS(text);
    const std::array places{&CompactJWS::header, &CompactJWS::payload, &CompactJWS::signature};
    // One time in four the text itself, base64url and all.
    const std::size_t place = seed % (places.size() + 1);
    if (!parts || place == places.size())
        return LLVMFuzzerMutate(data, size, greatestSize);

    test::changeWithin((*parts).*places[place], greatestSize / 2);
    const QByteArray changed = parts->signingInput() + '.' + parts->signature;
    if (std::size_t(changed.size()) > greatestSize)
        return LLVMFuzzerMutate(data, size, greatestSize);
    std::memcpy(data, changed.constData(), std::size_t(changed.size()));
    return std::size_t(changed.size());
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray jws(reinterpret_cast<const char *>(data), qsizetype(size));
    tarnwik::readPayloadUnverified(jws);
    tarnwik::test::readAsItIs(jws);
    tarnwik::test::readWellSigned(jws);
    return 0;
}
