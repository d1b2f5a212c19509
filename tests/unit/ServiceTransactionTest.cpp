#include "ServiceTransactionFixture.h"

namespace tarnwik::service {
namespace {

using namespace std::chrono_literals;

using ServiceTransaction = ServiceTransactionTest;

TEST_F(ServiceTransaction, givesTheAccountItsPlan)
{
    constexpr qint64 quota = 536'870'912'000;
    Account expected = account(m_token);
    EXPECT_NE(expected.planGb, 500);
    expected.planGb = 500;
    expected.quotaBytes = quota;
    expected.cycleQuotaBytes = quota;
    expected.cycleUsedBytes = 0;
    expected.monthlyPriceCents = 1499;
    expected.subscriptionStatus = QStringLiteral("active");
    expected.billingProvider = QStringLiteral("apple");
    expected.subscriptionCurrentPeriodStart = QStringLiteral("2026-05-04T12:00:00Z");
    expected.subscriptionCurrentPeriodEnd = QStringLiteral("2026-06-03T12:00:00Z");
    EXPECT_EQ(accepted(monthly()), expected);
    EXPECT_EQ(account(m_token), expected);
}

TEST_F(ServiceTransaction, concernsTheAccountOfTheSessionAlone)
{
    const Account other = account(m_otherToken);
    accepted(monthly());
    EXPECT_EQ(account(m_otherToken), other);
}

TEST_F(ServiceTransaction, bringsALapsedAccountBack)
{
    Database(m_databasePath)
        .runScript("UPDATE accounts SET subscription_status = 'expired', service_enabled = 0,"
                   " billing_provider = 'invoice', subscription_current_period_end = NULL");
    const Account lapsed = account(m_token);
    EXPECT_FALSE(lapsed.serviceEnabled);
    const Account back = accepted(monthly());
    EXPECT_TRUE(back.serviceEnabled);
    EXPECT_EQ(back.subscriptionStatus, QStringLiteral("active"));
    EXPECT_EQ(back.billingProvider, QStringLiteral("apple"));
    EXPECT_EQ(back.subscriptionCurrentPeriodEnd, QStringLiteral("2026-06-03T12:00:00Z"));
}

TEST_F(ServiceTransaction, doesNotLiftABlock)
{
    Database(m_databasePath)
        .runScript("UPDATE accounts SET service_enabled = 0, service_block_reason = 'abuse' WHERE id = 1");
    const Account blocked = accepted(monthly());
    EXPECT_FALSE(blocked.serviceEnabled);
    EXPECT_EQ(blocked.serviceBlockReason, QStringLiteral("abuse"));
    EXPECT_EQ(blocked.planGb, 500);
}

TEST_F(ServiceTransaction, letsAnExhaustedAccountConnectAgain)
{
    Database(m_databasePath).runScript("UPDATE accounts SET cycle_used_bytes = cycle_quota_bytes");
    const qint64 device = createDevice(m_token).id;
    EXPECT_EQ(outcome(tryCreateProfile(m_token, device, 1)), "403 quota_exceeded");
    accepted(monthly());
    EXPECT_EQ(tryCreateProfile(m_token, device, 1).status, 201);
}

TEST_F(ServiceTransaction, beginsACycleAndKeepsTheWholeUsage)
{
    createProfile(m_token, createDevice(m_token).id, 1);
    m_now += 10s;
    const Account before = account(m_token);
    EXPECT_GT(before.cycleUsedBytes.value(), 0);
    m_now += 10s;
    const Account after = accepted(monthly());
    EXPECT_EQ(after.cycleUsedBytes, 0);
    EXPECT_GT(after.usedBytes, before.usedBytes) << "what was used up to the purchase counts";
    m_now += 10s;
    EXPECT_GT(account(m_token).cycleUsedBytes.value(), 0);
}

TEST_F(ServiceTransaction, mayComeAgainAndChangesNothingThen)
{
    createProfile(m_token, createDevice(m_token).id, 1);
    const TransactionPayload payload = monthly();
    accepted(payload);
    m_now += 60s;
    const Account before = account(m_token);
    EXPECT_GT(before.cycleUsedBytes.value(), 0);
    EXPECT_EQ(accepted(payload), before);
    // The store may sign the same transaction anew.
    TransactionPayload signedAnew = payload;
    signedAnew.signedDate = now();
    EXPECT_EQ(accepted(signedAnew), before);
}

TEST_F(ServiceTransaction, thatRenewsBeginsTheNextPeriod)
{
    const TransactionPayload first = monthly();
    accepted(first);
    m_now += std::chrono::days(31);
    const Account renewed = accepted(renewal(first, QStringLiteral("2000000000000002")));
    EXPECT_EQ(renewed.subscriptionCurrentPeriodStart, QStringLiteral("2026-06-03T12:00:00Z"));
    EXPECT_EQ(renewed.subscriptionCurrentPeriodEnd, QStringLiteral("2026-07-03T12:00:00Z"));
}

TEST_F(ServiceTransaction, thatRenewsEarlyAndIsSignedAnewLaterIsStillTheSame)
{
    const TransactionPayload first = monthly();
    accepted(first);
    m_now += std::chrono::days(29);
    TransactionPayload early = renewal(first, QStringLiteral("2000000000000002"));
    accepted(early);
    Database(m_databasePath).runScript("UPDATE accounts SET cycle_used_bytes = 5");
    m_now += std::chrono::days(3);
    early.signedDate = now();
    EXPECT_EQ(accepted(early).cycleUsedBytes, 5);
}

TEST_F(ServiceTransaction, ofAnotherPlanReplacesThePlanBothWays)
{
    accepted(monthly(QStringLiteral("1")));
    m_now += 1h;
    const Account larger = accepted(yearly(QStringLiteral("2")));
    EXPECT_EQ(larger.planGb, 1000);
    EXPECT_EQ(larger.monthlyPriceCents, 999);
    EXPECT_EQ(larger.subscriptionCurrentPeriodEnd, QStringLiteral("2027-05-04T13:00:00Z"));
    m_now += 1h;
    EXPECT_EQ(accepted(monthly(QStringLiteral("3"))).planGb, 500);
}

TEST_F(ServiceTransaction, boughtAfterAnEarlyRenewalReplacesIt)
{
    const TransactionPayload first = monthly();
    accepted(first);
    m_now += 1h;
    // Its period begins in a month.
    accepted(renewal(first, QStringLiteral("2000000000000002")));
    m_now += 1h;
    EXPECT_EQ(accepted(yearly(QStringLiteral("2000000000000003"))).planGb, 1000);
}

TEST_F(ServiceTransaction, ofAnEarlierPeriodChangesNothing)
{
    const TransactionPayload kept = monthly(QStringLiteral("1"));
    accepted(kept);
    m_now += 1h;
    const Account before = accepted(yearly(QStringLiteral("2")));
    m_now += 1h;
    EXPECT_EQ(accepted(kept), before);
    TransactionPayload signedAnew = kept;
    signedAnew.signedDate = now();
    EXPECT_EQ(accepted(signedAnew), before);
    // Even one that the service never saw.
    TransactionPayload unseen = monthly(QStringLiteral("3"));
    unseen.purchaseDate = now() - days(1);
    EXPECT_EQ(accepted(unseen), before);
}

TEST_F(ServiceTransaction, belongsToTheAccountThatHadItFirst)
{
    const TransactionPayload first = monthly();
    accepted(first);
    const std::string before = state();
    EXPECT_EQ(outcome(post(m_store.sign(first), m_otherToken)), "409 transaction_of_another_account");
    m_now += 1h;
    const TransactionPayload next = renewal(first, QStringLiteral("2000000000000002"));
    EXPECT_EQ(outcome(post(m_store.sign(next), m_otherToken)), "409 transaction_of_another_account");
    EXPECT_EQ(state(), before);
    EXPECT_EQ(outcome(post(next)), "200 ");
}

TEST_F(ServiceTransaction, belongsToItsAccountEvenIfItGaveNothing)
{
    const TransactionPayload replaced = monthly(QStringLiteral("1"));
    m_now += 1h;
    accepted(yearly(QStringLiteral("2")));
    accepted(replaced);
    EXPECT_EQ(outcome(post(m_store.sign(replaced), m_otherToken)), "409 transaction_of_another_account");
}

TEST_F(ServiceTransaction, boughtForAnotherAccountIsNotForThisOne)
{
    const std::string before = state();
    TransactionPayload payload = monthly();
    payload.appAccountToken = QStringLiteral("0c0ffee0-0000-4000-8000-00000000000a");
    EXPECT_EQ(outcome(post(payload)), "409 transaction_of_another_account");
    EXPECT_EQ(state(), before);
    EXPECT_EQ(outcome(post(m_store.sign(payload), m_otherToken)), "200 ");
}

TEST_F(ServiceTransaction, boughtForThisAccountOrForNobodyKnownIsAccepted)
{
    TransactionPayload payload = monthly(QStringLiteral("1"));
    payload.appAccountToken = seedAccount().billingAccountToken;
    accepted(payload);
    m_now += 1h;
    payload = yearly(QStringLiteral("2"));
    payload.appAccountToken = QStringLiteral("11111111-1111-4111-8111-111111111111");
    EXPECT_EQ(accepted(payload).planGb, 1000);
}

TEST_F(ServiceTransaction, isKnownToEveryServiceOnTheDatabase)
{
    const TransactionPayload payload = monthly();
    accepted(payload);
    const auto restarted = makeService();
    const ServiceResponse response =
        restarted->handle({.method = "POST",
                           .path = QStringLiteral("/api/customer/v1/subscription/apple/transactions"),
                           .authorization = "Bearer " + m_otherToken,
                           .contentType = "application/json",
                           .body = R"({"signed_transaction_jws":")" + m_store.sign(payload) + R"("})"});
    EXPECT_EQ(outcome(response), "409 transaction_of_another_account");
}

TEST_F(ServiceTransaction, isForAProductOfTheSeed)
{
    m_databasePath = m_folder.filePath(QStringLiteral("own.db"));
    m_seed.subscriptionProducts = QList<SubscriptionProduct>{
        {.productId = QStringLiteral("tarnwik.sub.monthly"), .planGb = 7, .monthlyPriceCents = 1}};
    const auto own = makeService();
    const auto send = [&](const QString &path, const QByteArray &body, const QByteArray &authorization = {}) {
        return own->handle({.method = "POST",
                            .path = QStringLiteral("/api/customer/v1/") + path,
                            .authorization = authorization,
                            .contentType = "application/json",
                            .body = body});
    };
    const ServiceResponse session =
        send(QStringLiteral("session"),
             R"({"email":"demo@tarnwik.example","password":"demo","device_name":"Desk","platform":"macos"})");
    const QByteArray bearer = "Bearer " + decode<SessionResponse>(session.body).token.toLatin1();
    const auto sync = [&](const TransactionPayload &payload) {
        return send(QStringLiteral("subscription/apple/transactions"),
                    R"({"signed_transaction_jws":")" + m_store.sign(payload) + R"("})", bearer);
    };
    EXPECT_EQ(outcome(sync(yearly(QStringLiteral("1")))), "422 unknown_product");
    const ServiceResponse response = sync(monthly());
    ASSERT_EQ(outcome(response), "200 ");
    EXPECT_EQ(decode<SubscriptionResponse>(response.body).subscription.quotaBytes, 7'516'192'768);
}

} // namespace
} // namespace tarnwik::service
