#pragma once

#include "support/SigningChain.h"

#include "platform/BundleIdentifier.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>

namespace tarnwik {

inline void PrintTo(VerificationError::Case errorCase, std::ostream *stream)
{
    constexpr const char *names[] = {"InvalidEncoding", "InvalidCertificateChain", "InvalidSignature",
                                     "MissingRequiredProperties"};
    *stream << names[int(errorCase)];
}

namespace test {

using Case = VerificationError::Case;

/// When all of this takes place.
inline QDateTime moment()
{
    return QDateTime::fromString(QStringLiteral("2031-03-04T05:06:07Z"), Qt::ISODate);
}

/// A store that is trusted. One for the whole program: keys take time to make.
inline const SigningChain &store()
{
    static const SigningChain chain(moment());
    return chain;
}

inline TransactionTrust trustIn(const SigningChain &chain)
{
    return {chain.trustedRoot(), bundleIdentifier(), moment()};
}

/// Why \a jws is not trusted; nothing when it is.
inline std::optional<Case> faultOf(const QByteArray &jws, const TransactionTrust &trust = trustIn(store()))
{
    try {
        verifyTransaction(jws, trust);
        return std::nullopt;
    } catch (const VerificationError &error) {
        return error.errorCase();
    }
}

/// The sample, well signed.
inline const QByteArray &goodTransaction()
{
    static const QByteArray jws = store().sign(sampleTransaction(moment()));
    return jws;
}

} // namespace test
} // namespace tarnwik
