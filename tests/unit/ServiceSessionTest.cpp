#include "ServiceFixture.h"

namespace tarnwik::service {
namespace {

using ServiceSession = ServiceTest;

TEST_F(ServiceSession, signInGivesATokenAndTheAccountOfTheSeed)
{
    const auto session = decode<SessionResponse>(trySignIn().body);
    EXPECT_EQ(session.token.size(), 43);
    EXPECT_EQ(session.account, seedAccount());
}

TEST_F(ServiceSession, eachSignInGivesATokenOfItsOwn)
{
    EXPECT_NE(signIn(), signIn());
}

TEST_F(ServiceSession, theAddressIsKnownInAnyCase)
{
    EXPECT_EQ(trySignIn("Demo@TARNWIK.example").status, 200);
}

TEST_F(ServiceSession, aWrongPasswordAndAnUnknownAddressAreRefusedAlike)
{
    const ServiceResponse wrong = trySignIn("demo@tarnwik.example", "Demo");
    const ServiceResponse unknown = trySignIn("nobody@tarnwik.example", "demo");
    EXPECT_EQ(outcome(wrong), "401 invalid_credentials");
    EXPECT_EQ(wrong.body, unknown.body);
    EXPECT_EQ(wrong.headers, unknown.headers);
}

TEST_F(ServiceSession, aPasswordHashInTheSeedServesAsWellAsAPassword)
{
    m_seed.accounts[0].passwordHash = hashPassword(QStringLiteral("hashed"), PasswordCost::Least);
    m_seed.accounts[0].password.reset();
    EXPECT_EQ(trySignIn("demo@tarnwik.example", "demo").status, 401);
    EXPECT_EQ(trySignIn("demo@tarnwik.example", "hashed").status, 200);
}

TEST_F(ServiceSession, afterTenWrongPasswordsEvenTheRightOneHasToWait)
{
    for (int attempt = 0; attempt < 10; ++attempt)
        EXPECT_EQ(trySignIn("demo@tarnwik.example", "wrong").status, 401);
    m_now += std::chrono::seconds(60);
    const ServiceResponse refused = trySignIn();
    EXPECT_EQ(outcome(refused), "429 too_many_attempts");
    EXPECT_EQ(headerOf(refused, "Retry-After"), "240");
    m_now += std::chrono::seconds(240);
    EXPECT_EQ(trySignIn().status, 200);
}

TEST_F(ServiceSession, wrongPasswordsForOneAccountDoNotKeepAnotherOut)
{
    addOtherAccount();
    for (int attempt = 0; attempt < 11; ++attempt)
        trySignIn("demo@tarnwik.example", "wrong");
    EXPECT_EQ(trySignIn("other@tarnwik.example", "other").status, 200);
}

TEST_F(ServiceSession, aSuccessfulSignInForgetsTheWrongPasswords)
{
    for (int round = 0; round < 3; ++round) {
        for (int attempt = 0; attempt < 9; ++attempt)
            EXPECT_EQ(trySignIn("demo@tarnwik.example", "wrong").status, 401);
        EXPECT_EQ(trySignIn().status, 200);
    }
}

TEST_F(ServiceSession, theTokenOpensTheAccount)
{
    EXPECT_EQ(account(signIn()), seedAccount());
}

TEST_F(ServiceSession, aMissingOrUnknownTokenIsUnauthorized)
{
    const QByteArray token = signIn();
    for (const QByteArray &header : {QByteArray(), QByteArray("Bearer "), QByteArray("Bearer nonsense"),
                                     QByteArray("Basic " + token), QByteArray(token)}) {
        const ServiceResponse response = service().handle({.method = "GET",
                                                           .path = QStringLiteral("/api/customer/v1/session"),
                                                           .authorization = header,
                                                           .contentType = {},
                                                           .body = {}});
        EXPECT_EQ(outcome(response), "401 unauthorized") << header.constData();
        EXPECT_EQ(headerOf(response, "WWW-Authenticate"), "Bearer");
    }
}

TEST_F(ServiceSession, everyOperationButSignInNeedsASession)
{
    EXPECT_EQ(outcome(send("DELETE", QStringLiteral("session"))), "401 unauthorized");
    EXPECT_EQ(outcome(send("GET", QStringLiteral("nodes"))), "401 unauthorized");
    EXPECT_EQ(outcome(send("GET", QStringLiteral("devices"))), "401 unauthorized");
    EXPECT_EQ(outcome(send("POST", QStringLiteral("devices"), "{}")), "401 unauthorized");
    EXPECT_EQ(outcome(send("POST", QStringLiteral("devices/1/node-profiles"), "{}")), "401 unauthorized");
    EXPECT_EQ(outcome(send("GET", QStringLiteral("device-profiles/1/tunnel-profile"))), "401 unauthorized");
    EXPECT_EQ(outcome(send("POST", QStringLiteral("subscription/apple/transactions"), "{}")), "401 unauthorized");
}

TEST_F(ServiceSession, signOutEndsThatSessionOnly)
{
    const QByteArray ended = signIn();
    const QByteArray kept = signIn();
    const ServiceResponse response = send("DELETE", QStringLiteral("session"), {}, ended);
    EXPECT_EQ(response.status, 204);
    EXPECT_TRUE(response.body.isEmpty());
    EXPECT_EQ(outcome(send("GET", QStringLiteral("session"), {}, ended)), "401 unauthorized");
    EXPECT_EQ(outcome(send("DELETE", QStringLiteral("session"), {}, ended)), "401 unauthorized");
    EXPECT_EQ(send("GET", QStringLiteral("session"), {}, kept).status, 200);
}

TEST_F(ServiceSession, aTokenDoesNotExpireByItself)
{
    const QByteArray token = signIn();
    m_now += std::chrono::years(2);
    EXPECT_EQ(send("GET", QStringLiteral("session"), {}, token).status, 200);
}

TEST_F(ServiceSession, aSuspendedAccountIsToldSoAtSignInOnlyIfThePasswordIsRight)
{
    seedAccount().status = QStringLiteral("suspended");
    EXPECT_EQ(outcome(trySignIn("demo@tarnwik.example", "wrong")), "401 invalid_credentials");
    const ServiceResponse refused = trySignIn();
    EXPECT_EQ(outcome(refused), "403 account_suspended");
    const auto envelope = decode<APIErrorEnvelope>(refused.body);
    EXPECT_EQ(envelope.status, QStringLiteral("suspended"));
    EXPECT_EQ(envelope.subscriptionStatus, seedAccount().subscriptionStatus);
    EXPECT_EQ(envelope.account, seedAccount());
}

TEST_F(ServiceSession, nodesComeInTheOrderOfTheSeed)
{
    std::reverse(m_seed.nodes.begin(), m_seed.nodes.end());
    const auto nodes = decode<NodeListResponse>(send("GET", QStringLiteral("nodes"), {}, signIn()).body).nodes;
    ASSERT_EQ(nodes.size(), 5);
    for (qsizetype index = 0; index < nodes.size(); ++index)
        EXPECT_EQ(nodes[index], m_seed.nodes[index].node);
}

} // namespace
} // namespace tarnwik::service
