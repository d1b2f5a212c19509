#include "JWSFixture.h"

#include "jws/CertificateIssuing.h"

#include <openssl/err.h>

namespace tarnwik::test {

namespace {

/// A fault, and its name as a test's name.
struct Fault
{
    ChainFault fault;
    const char *name;
};

void PrintTo(const Fault &row, std::ostream *stream)
{
    *stream << row.name;
}

class SignedTransactionChain : public testing::TestWithParam<Fault>
{
};

TEST_P(SignedTransactionChain, isRefused)
{
    const SigningChain chain(moment(), GetParam().fault);
    EXPECT_EQ(faultOf(chain.sign(sampleTransaction(moment())), trustIn(chain)), Case::InvalidCertificateChain);
}

INSTANTIATE_TEST_SUITE_P(
    Every, SignedTransactionChain,
    testing::Values(
        Fault{ChainFault::ExpiredSigner, "ExpiredSigner"}, Fault{ChainFault::SignerNotYetValid, "SignerNotYetValid"},
        Fault{ChainFault::ExpiredIntermediate, "ExpiredIntermediate"}, Fault{ChainFault::ExpiredRoot, "ExpiredRoot"},
        Fault{ChainFault::ForeignRoot, "ForeignRoot"}, Fault{ChainFault::ExchangedRoot, "ExchangedRoot"},
        Fault{ChainFault::IntermediateIsNoAuthority, "IntermediateIsNoAuthority"},
        Fault{ChainFault::SignerIsAuthority, "SignerIsAuthority"},
        Fault{ChainFault::SignerOnAnotherCurve, "SignerOnAnotherCurve"}, Fault{ChainFault::NoSigner, "NoSigner"},
        Fault{ChainFault::NoIntermediate, "NoIntermediate"}, Fault{ChainFault::NoRoot, "NoRoot"},
        Fault{ChainFault::WrongOrder, "WrongOrder"}, Fault{ChainFault::SurplusCertificate, "SurplusCertificate"}),
    [](const auto &row) { return row.param.name; });

TEST(SignedTransaction, isTrustedUnderItsOwnRootOnly)
{
    const SigningChain other(moment());
    EXPECT_EQ(faultOf(goodTransaction()), std::nullopt);
    EXPECT_EQ(faultOf(goodTransaction(), trustIn(other)), Case::InvalidCertificateChain);
}

TEST(SignedTransaction, isRefusedWhenTheCertificateIsForAnotherKey)
{
    const SigningChain chain(moment(), ChainFault::OtherSignerKey);
    EXPECT_EQ(faultOf(chain.sign(sampleTransaction(moment())), trustIn(chain)), Case::InvalidSignature);
}

TEST(SignedTransaction, isTrustedWhileItsCertificatesAreValid)
{
    auto trust = trustIn(store());
    trust.now = moment().addDays(365).addSecs(-1);
    EXPECT_EQ(faultOf(goodTransaction(), trust), std::nullopt);
    trust.now = moment().addDays(365).addSecs(1);
    EXPECT_EQ(faultOf(goodTransaction(), trust), Case::InvalidCertificateChain);
    trust.now = moment().addDays(-1).addSecs(-1);
    EXPECT_EQ(faultOf(goodTransaction(), trust), Case::InvalidCertificateChain);
    trust.now = QDateTime();
    EXPECT_EQ(faultOf(goodTransaction(), trust), Case::InvalidCertificateChain);
}

TEST(SignedTransaction, isRefusedWhereNoRootIsTrusted)
{
    auto trust = trustIn(store());
    for (const auto *root : {"", "-----BEGIN CERTIFICATE-----\nAAAA\n-----END CERTIFICATE-----\n"}) {
        trust.rootCertificate = root;
        EXPECT_EQ(faultOf(goodTransaction(), trust), Case::InvalidCertificateChain) << root;
    }
}

TEST(SignedTransaction, leavesNoErrorsToTheNextUserOfTheLibrary)
{
    ERR_clear_error();
    faultOf(goodTransaction());
    faultOf(goodTransaction(), {"no certificate", bundleIdentifier(), moment()});
    faultOf(withSignature(goodTransaction(), QByteArray(64, '\xff')));
    EXPECT_EQ(ERR_peek_error(), 0U);
}

} // namespace

} // namespace tarnwik::test
