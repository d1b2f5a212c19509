#include "jws/SignedTransaction.h"

namespace tarnwik {

namespace {

QString text(VerificationError::Case errorCase)
{
    switch (errorCase) {
    case VerificationError::Case::InvalidEncoding:
        break;
    case VerificationError::Case::InvalidCertificateChain:
        return QStringLiteral("The App Store transaction was not signed by the App Store.");
    case VerificationError::Case::InvalidSignature:
        return QStringLiteral("The signature of the App Store transaction is not valid.");
    case VerificationError::Case::MissingRequiredProperties:
        return QStringLiteral("The App Store transaction is incomplete or meant for another program.");
    }
    return QStringLiteral("The App Store transaction cannot be read.");
}

} // namespace

VerificationError::VerificationError(Case errorCase)
    : StoreError(text(errorCase))
    , m_case(errorCase)
{
}

} // namespace tarnwik
