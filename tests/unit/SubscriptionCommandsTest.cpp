#include "cli/Commands.h"
#include "cli/Report.h"
#include "support/ModelFixture.h"

#include <gmock/gmock.h>

#include <QJsonDocument>

namespace tarnwik::test {

namespace {

using namespace cli;
using testing::StartsWith;

/// The commands over an app store that the test makes, beside the server of ModelTest.
class SubscriptionCommands : public ModelTest
{
protected:
    struct Outcome
    {
        ExitStatus status = ExitStatus::Done;
        std::string output;
        std::string error;
    };

    SubscriptionCommands()
    {
        storeSession();
        m_platform.appStore->offered = {{text("tarnwik.sub.yearly"), text("129,99 €")},
                                        {text("tarnwik.sub.monthly"), text("14,99 €")}};
        m_platform.appStore->nextPurchase = {PurchaseOutcome::Success, verified("tarnwik.sub.monthly", "a.b.c")};
        m_answers[m_postTransaction] = {200, sampleJSON<SubscriptionResponse>()};
    }

    Outcome runCommand(Command command, bool isJSON = false)
    {
        Options options;
        options.command = command;
        options.isJSON = isJSON;
        if (command == Command::Subscribe)
            options.plan = AppStoreSubscriptionPlan::monthly;
        AppModel model;
        Outcome outcome;
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        outcome.status = run(cli::runCommand(options, model, Terminal(), {}));
        outcome.output = testing::internal::GetCapturedStdout();
        outcome.error = testing::internal::GetCapturedStderr();
        return outcome;
    }

    QJsonDocument json(Command command, ExitStatus status)
    {
        const Outcome outcome = runCommand(command, true);
        EXPECT_EQ(outcome.status, status);
        return QJsonDocument::fromJson(QByteArray::fromStdString(outcome.output));
    }

    void expectOutcome(const Outcome &outcome, ExitStatus status, const char *output, const char *error)
    {
        EXPECT_EQ(outcome.status, status);
        EXPECT_EQ(outcome.output, output);
        EXPECT_EQ(outcome.error, error);
    }

    const QString m_postTransaction = text("POST /api/customer/v1/subscription/apple/transactions");
};

} // namespace

TEST_F(SubscriptionCommands, listThePlansWithTheStoresPrices)
{
    m_platform.appStore->entitlements = {verified("tarnwik.sub.yearly", "a.b.c")};
    expectOutcome(runCommand(Command::Subscriptions), ExitStatus::Done,
                  "PLAN     PRICE                        STATE\n"
                  "Monthly  14,99 €/month                not active\n"
                  "Yearly   129,99 €/year · $9.99/month  active\n",
                  "");
    EXPECT_EQ(json(Command::Subscriptions, ExitStatus::Done),
              QJsonDocument::fromJson(
                  R"([{"plan":"monthly","product_id":"tarnwik.sub.monthly","title":"Monthly",
                       "price_line":"14,99 €/month","display_price":"14,99 €","is_active":false,"is_available":true},
                      {"plan":"yearly","product_id":"tarnwik.sub.yearly","title":"Yearly",
                       "price_line":"129,99 €/year · $9.99/month","display_price":"129,99 €",
                       "is_active":true,"is_available":true}])"));
    EXPECT_EQ(requests(), QStringList());
}

TEST_F(SubscriptionCommands, listThePlansThatTheStoreDoesNotOffer)
{
    m_platform.userDefaults->strings.clear();
    m_platform.appStore->offered.clear();
    expectOutcome(runCommand(Command::Subscriptions), ExitStatus::Failed,
                  "PLAN     PRICE                       STATE\n"
                  "Monthly  $14.99/month                unavailable\n"
                  "Yearly   $119.00/year · $9.99/month  unavailable\n",
                  "App Store subscriptions are not available yet.\n");
    const QJsonDocument list = json(Command::Subscriptions, ExitStatus::Failed);
    EXPECT_TRUE(list[0][u"display_price"].isNull());
    EXPECT_EQ(list[0][u"price_line"], QJsonValue(text("$14.99/month")));
    EXPECT_EQ(list[0][u"is_available"], QJsonValue(false));
}

TEST_F(SubscriptionCommands, showAnActivePlanThatIsNoLongerOffered)
{
    m_platform.appStore->offered.removeFirst();
    m_platform.appStore->entitlements = {verified("tarnwik.sub.yearly", "a.b.c")};
    EXPECT_THAT(runCommand(Command::Subscriptions).output, testing::HasSubstr("$9.99/month  active\n"));
    EXPECT_EQ(json(Command::Subscriptions, ExitStatus::Done)[1][u"is_available"], QJsonValue(false));
}

TEST_F(SubscriptionCommands, tellOfEverythingThatFailedWhileListing)
{
    m_platform.appStore->failures = {{text("products"), text("No products.")},
                                     {text("entitlements"), text("No entitlements.")}};
    const Outcome outcome = runCommand(Command::Subscriptions);
    EXPECT_EQ(outcome.status, ExitStatus::Failed);
    EXPECT_EQ(outcome.error, "No products.\nNo entitlements.\n");
    EXPECT_THAT(outcome.output, StartsWith("PLAN "));
}

TEST_F(SubscriptionCommands, showPricesAsPlainText)
{
    m_platform.appStore->offered = {{text("tarnwik.sub.monthly"), text("\x1b[31m1\n")}};
    const Outcome outcome = runCommand(Command::Subscriptions);
    EXPECT_THAT(outcome.output, testing::HasSubstr("\uFFFD[31m1\uFFFD/month"));
    EXPECT_THAT(outcome.output, testing::Not(testing::HasSubstr("\x1b")));
}

TEST_F(SubscriptionCommands, needASessionExceptForTheList)
{
    m_platform.userDefaults->strings.clear();
    expectOutcome(runCommand(Command::Subscribe), ExitStatus::NotSignedIn, "", "Not signed in.\n");
    expectOutcome(runCommand(Command::RestorePurchases), ExitStatus::NotSignedIn, "", "Not signed in.\n");
    EXPECT_EQ(m_platform.appStore->operations, QStringList());
    EXPECT_EQ(runCommand(Command::Subscriptions).status, ExitStatus::Done);
}

TEST_F(SubscriptionCommands, takeAPurchaseToTheService)
{
    expectOutcome(runCommand(Command::Subscribe), ExitStatus::Done, "Monthly subscription is active.\n", "");
    EXPECT_EQ(requests(), QStringList({m_postTransaction, m_getAccount}));
    const QJsonDocument answer = json(Command::Subscribe, ExitStatus::Done);
    EXPECT_EQ(
        answer.object().keys(),
        QStringList({text("account"), text("error_message"), text("plan"), text("status_message"), text("synced")}));
    EXPECT_EQ(answer[u"plan"], QJsonValue(text("monthly")));
    EXPECT_EQ(answer[u"status_message"], QJsonValue(text("Monthly subscription is active.")));
    EXPECT_TRUE(answer[u"error_message"].isNull());
    EXPECT_EQ(answer[u"synced"], QJsonValue(true));
    EXPECT_EQ(answer[u"account"], QJsonValue(toJSON(decode<Account>(accountJSON))));
}

TEST_F(SubscriptionCommands, sayWhatTheServiceHasAgainstAPurchase)
{
    m_answers[m_postTransaction] = {409, R"({"error":"transaction_of_another_account"})"};
    m_answers[m_getAccount] = {500, R"({"error":"out\u001b_of_order"})"};
    expectOutcome(runCommand(Command::Subscribe), ExitStatus::Failed, "Monthly subscription is active.\n",
                  "The service did not take the purchase: transaction of another account\n"
                  "The account could not be fetched: out\uFFFD of order\n");
    const QJsonDocument answer = json(Command::Subscribe, ExitStatus::Failed);
    EXPECT_EQ(answer[u"synced"], QJsonValue(false));
    EXPECT_TRUE(answer[u"account"].isNull());
    EXPECT_EQ(answer[u"error_message"].toString(),
              text("The service did not take the purchase: transaction of another account "
                   "The account could not be fetched: out\u001b of order"));
}

TEST_F(SubscriptionCommands, fetchTheAccountThoughTheServiceRefused)
{
    m_answers[m_postTransaction] = {422, R"({"error":"invalid_transaction"})"};
    const QJsonDocument answer = json(Command::Subscribe, ExitStatus::Failed);
    EXPECT_EQ(answer[u"synced"], QJsonValue(false));
    EXPECT_TRUE(answer[u"account"].isObject());
}

TEST_F(SubscriptionCommands, tellAPendingPurchaseFromACancelledOne)
{
    m_platform.appStore->nextPurchase = {PurchaseOutcome::Pending, {}};
    expectOutcome(runCommand(Command::Subscribe), ExitStatus::Done, "Purchase is pending approval.\n", "");
    m_platform.appStore->nextPurchase = {PurchaseOutcome::UserCancelled, {}};
    expectOutcome(runCommand(Command::Subscribe), ExitStatus::Failed, "", "The purchase was cancelled.\n");
    m_platform.appStore->nextPurchase = {PurchaseOutcome::Unknown, {}};
    expectOutcome(runCommand(Command::Subscribe), ExitStatus::Done,
                  "The App Store returned an unknown purchase result.\n", "");
    const QJsonDocument answer = json(Command::Subscribe, ExitStatus::Done);
    EXPECT_EQ(answer[u"synced"], QJsonValue(false));
    EXPECT_TRUE(answer[u"account"].isNull());
    EXPECT_EQ(requests(), QStringList());
}

TEST_F(SubscriptionCommands, buyNothingWhereThereIsNothingToBuy)
{
    m_platform.appStore->offered.removeLast();
    expectOutcome(runCommand(Command::Subscribe), ExitStatus::Failed, "",
                  "This App Store subscription is not available yet.\n");
    m_platform.appStore->failures = {{text("products"), text("The shop is shut.")}};
    expectOutcome(runCommand(Command::Subscribe), ExitStatus::Failed, "", "The shop is shut.\n");
    EXPECT_FALSE(m_platform.appStore->operations.contains(text("purchase tarnwik.sub.monthly")));
}

TEST_F(SubscriptionCommands, sayWhyTheStoreRefusedAPurchase)
{
    m_platform.appStore->nextPurchase = {PurchaseOutcome::Success, unverified("tarnwik.sub.monthly", "Forged.")};
    expectOutcome(runCommand(Command::Subscribe), ExitStatus::Failed, "", "Forged.\n");
    m_platform.appStore->failures = {{text("purchase"), text("Declined.")}};
    expectOutcome(runCommand(Command::Subscribe), ExitStatus::Failed, "", "Declined.\n");
    const QJsonDocument answer = json(Command::Subscribe, ExitStatus::Failed);
    EXPECT_TRUE(answer[u"status_message"].isNull());
    EXPECT_EQ(answer[u"error_message"], QJsonValue(text("Declined.")));
    EXPECT_EQ(requests(), QStringList());
}

TEST_F(SubscriptionCommands, takeRestoredPurchasesToTheService)
{
    expectOutcome(runCommand(Command::RestorePurchases), ExitStatus::Done,
                  "No active App Store subscription was found.\n", "");
    EXPECT_EQ(requests(), QStringList());
    m_platform.appStore->entitlements = {verified("tarnwik.sub.yearly", "a.b.c")};
    expectOutcome(runCommand(Command::RestorePurchases), ExitStatus::Done, "Purchases restored.\n", "");
    EXPECT_EQ(requests(), QStringList({m_postTransaction, m_getAccount}));
    EXPECT_EQ(json(Command::RestorePurchases, ExitStatus::Done).object().keys(),
              QStringList({text("account"), text("error_message"), text("status_message"), text("synced")}));
}

TEST_F(SubscriptionCommands, sayWhyNothingWasRestored)
{
    m_platform.appStore->failures = {{text("sync"), text("cancelled")}};
    expectOutcome(runCommand(Command::RestorePurchases), ExitStatus::Failed, "",
                  "Restoring the purchases was cancelled.\n");
    m_platform.appStore->failures = {{text("sync"), text("No network.")}};
    expectOutcome(runCommand(Command::RestorePurchases), ExitStatus::Failed, "", "No network.\n");
}

} // namespace tarnwik::test
