#include "TarnwikctlFixture.h"
#include "service/Database.h"

#include <QDir>
#include <QFile>

namespace tarnwik {

namespace {

using test::ProgramResult;
using test::text;
using test::words;

/// The demo's App Store as a customer, and its staff, see it.
class TarnwikctlSubscription : public test::TarnwikctlFixture
{
protected:
    TarnwikctlSubscription() { configure("success"); }

    /// Lets purchases end with \a outcome from now on, at once.
    void configure(const char *outcome, const char *storefront = "USA")
    {
        const auto product = [](const char *id, const char *period, const char *dollars, const char *euros) {
            return QJsonObject{
                {text("id"), text(id)},
                {text("period"), text(period)},
                {text("display_prices"), QJsonObject{{text("USA"), text(dollars)}, {text("DEU"), text(euros)}}}};
        };
        const QJsonObject configuration{
            {text("storefront"), text(storefront)},
            {text("products"),
             QJsonArray{product("tarnwik.sub.yearly", "P1Y", "$119.00", "129,99 €"),
                        product("tarnwik.sub.monthly", "P1M", "$14.99", "16,99 €")}},
            {text("next_purchase"),
             QJsonObject{{text("outcome"), text(outcome)}, {text("message"), text("Your card was declined.")}}}};
        m_home.write(text(configurationFile), QJsonDocument(configuration).toJson());
    }

    QJsonObject account() { return json("--demo account").object(); }

    /// The plans that are active, by their names.
    QStringList activePlans()
    {
        QStringList active;
        for (const QJsonValue plan : json("--demo subscriptions").array()) {
            if (plan[u"is_active"].toBool())
                active << plan[u"plan"].toString();
        }
        return active;
    }

    /// The JSON of a command that fails.
    QJsonObject failedJSON(const char *line)
    {
        const ProgramResult result = run(words(line) << text("--json"));
        EXPECT_EQ(result.status, 1) << line;
        return QJsonDocument::fromJson(result.output).object();
    }

    /// The files of the store whose names begin with \a beginning.
    QStringList storeFiles(const QString &beginning)
    {
        return QDir(m_home.path(text(storeFolder))).entryList({beginning + u'*'}, QDir::Files, QDir::Name);
    }

    /// \a bytes in the place of a file of the store, which the command refuses with a sentence and keeps aside.
    void expectKeptAside(const char *file, const QByteArray &bytes, const char *command)
    {
        const QString path = text(storeFolder) + u'/' + text(file);
        m_home.write(path, bytes);
        const ProgramResult result = run(command);
        EXPECT_EQ(result.status, 1) << command;
        EXPECT_EQ(result.error.count('\n'), 1) << result.error.constData();
        EXPECT_TRUE(result.error.contains(m_home.path(path).toUtf8())) << result.error.constData();
        const QStringList kept = storeFiles(text(file) + text(".broken-"));
        ASSERT_EQ(kept.size(), 1);
        EXPECT_TRUE(result.error.contains(kept.first().toUtf8())) << result.error.constData();
        EXPECT_EQ(m_home.read(text(storeFolder) + u'/' + kept.first()), bytes);
    }

    static constexpr auto storeFolder = "data/tarnwik/demo/store";
    static constexpr auto configurationFile = "data/tarnwik/demo/store/configuration.json";
};

TEST_F(TarnwikctlSubscription, plansAreListedWithoutASession)
{
    EXPECT_EQ(run("--demo subscriptions"),
              (ProgramResult{0,
                             "PLAN     PRICE                       STATE\n"
                             "Monthly  $14.99/month                not active\n"
                             "Yearly   $119.00/year · $9.99/month  not active\n",
                             ""}));
    configure("success", "DEU");
    const QJsonArray plans = json("--demo subscriptions").array();
    ASSERT_EQ(plans.size(), 2);
    EXPECT_EQ(plans[1].toObject(),
              (QJsonObject{{text("plan"), text("yearly")},
                           {text("product_id"), text("tarnwik.sub.yearly")},
                           {text("title"), text("Yearly")},
                           {text("price_line"), text("129,99 €/year · $9.99/month")},
                           {text("display_price"), text("129,99 €")},
                           {text("is_active"), false},
                           {text("is_available"), true}}));
}

TEST_F(TarnwikctlSubscription, plansAreThereWithoutAConfiguration)
{
    QFile::remove(m_home.path(text(configurationFile)));
    for (const QJsonValue plan : json("--demo subscriptions").array())
        EXPECT_TRUE(plan[u"is_available"].toBool());
}

TEST_F(TarnwikctlSubscription, plansAreUnavailableInAStorefrontWithoutPrices)
{
    configure("success", "JPN");
    EXPECT_EQ(run("--demo subscriptions"),
              (ProgramResult{1,
                             "PLAN     PRICE                       STATE\n"
                             "Monthly  $14.99/month                unavailable\n"
                             "Yearly   $119.00/year · $9.99/month  unavailable\n",
                             "App Store subscriptions are not available yet.\n"}));
}

TEST_F(TarnwikctlSubscription, aPlatformWithoutAStoreSaysSo)
{
    const ProgramResult result = run("subscriptions");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, "App Store subscriptions are not available yet.\n");
    EXPECT_EQ(result.output.count("  unavailable\n"), 2) << result.output.constData();
    EXPECT_EQ(run("subscribe monthly"), failure("Not signed in.", 3));
}

TEST_F(TarnwikctlSubscription, aPurchaseChangesTheAccount)
{
    signIntoDemo();
    const QJsonObject before = account();
    EXPECT_EQ(before[u"plan_gb"].toInt(), 200);
    EXPECT_EQ(run("--demo subscribe monthly"), (ProgramResult{0, "Monthly subscription is active.\n", ""}));
    QJsonObject after = account();
    EXPECT_EQ(after[u"plan_gb"].toInt(), 500);
    EXPECT_EQ(after[u"quota_bytes"].toInteger(), qint64(500) << 30);
    EXPECT_EQ(after[u"monthly_price_cents"].toInt(), 1499);
    EXPECT_NE(after[u"subscription_current_period_end"], before[u"subscription_current_period_end"]);
    EXPECT_EQ(activePlans(), words("monthly"));

    const QJsonDocument upgrade = json("--demo subscribe yearly");
    EXPECT_EQ(upgrade.object().keys(), words("account error_message plan status_message synced"));
    EXPECT_EQ(upgrade[u"plan"].toString(), text("yearly"));
    EXPECT_EQ(upgrade[u"status_message"].toString(), text("Yearly subscription is active."));
    EXPECT_TRUE(upgrade[u"error_message"].isNull());
    EXPECT_EQ(upgrade[u"synced"], QJsonValue(true));
    EXPECT_EQ(upgrade[u"account"].toObject(), account());
    EXPECT_EQ(upgrade[u"account"][u"plan_gb"].toInt(), 1000);
    EXPECT_EQ(activePlans(), words("yearly"));
}

TEST_F(TarnwikctlSubscription, whatIsActiveIsNotBoughtTwice)
{
    signIntoDemo();
    EXPECT_EQ(run("--demo subscribe monthly").status, 0);
    const QJsonObject once = account();
    EXPECT_EQ(run("--demo subscribe monthly"), (ProgramResult{0, "Monthly subscription is active.\n", ""}));
    EXPECT_EQ(account(), once);
}

struct Ending
{
    const char *outcome;
    ProgramResult result;
};

TEST_F(TarnwikctlSubscription, aPurchaseThatIsNoneLeavesTheAccountAlone)
{
    signIntoDemo();
    const QJsonObject before = account();
    for (const Ending &ending : {Ending{"pending", {0, "Purchase is pending approval.\n", ""}},
                                 Ending{"cancelled", failure("The purchase was cancelled.")},
                                 Ending{"failing", failure("Your card was declined.")},
                                 Ending{"unknown", {0, "The App Store returned an unknown purchase result.\n", ""}}}) {
        configure(ending.outcome);
        EXPECT_EQ(run("--demo subscribe yearly"), ending.result) << ending.outcome;
        EXPECT_EQ(account(), before) << ending.outcome;
        EXPECT_EQ(activePlans(), QStringList()) << ending.outcome;
    }
}

TEST_F(TarnwikctlSubscription, aPurchaseWithABrokenSignatureIsRefused)
{
    signIntoDemo();
    const QJsonObject before = account();
    configure("unverified");
    const ProgramResult result = run("--demo subscribe monthly");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(result.error.contains("signature")) << result.error.constData();
    EXPECT_EQ(account(), before);
    EXPECT_EQ(activePlans(), QStringList());
}

TEST_F(TarnwikctlSubscription, aFailureIsTheJSONsErrorMessage)
{
    signIntoDemo();
    configure("failing");
    EXPECT_EQ(failedJSON("--demo subscribe monthly"),
              (QJsonObject{{text("plan"), text("monthly")},
                           {text("status_message"), QJsonValue()},
                           {text("error_message"), text("Your card was declined.")},
                           {text("synced"), false},
                           {text("account"), QJsonValue()}}));
    configure("pending");
    const QJsonDocument pending = json("--demo subscribe monthly");
    EXPECT_EQ(pending[u"status_message"].toString(), text("Purchase is pending approval."));
    EXPECT_TRUE(pending[u"error_message"].isNull());
    EXPECT_EQ(pending[u"synced"], QJsonValue(false));
    EXPECT_TRUE(pending[u"account"].isNull());
}

TEST_F(TarnwikctlSubscription, anApprovedPurchaseCanBeRestored)
{
    signIntoDemo();
    EXPECT_EQ(run("--demo store approve"), failure("No purchase is waiting for approval."));
    configure("pending");
    run("--demo subscribe yearly");
    EXPECT_EQ(run("--demo store approve"), (ProgramResult{0, "1 purchase was approved.\n", ""}));
    EXPECT_EQ(activePlans(), words("yearly"));
    EXPECT_EQ(account()[u"plan_gb"].toInt(), 200) << "nobody has told the service";
    EXPECT_EQ(run("--demo restore-purchases"), (ProgramResult{0, "Purchases restored.\n", ""}));
    EXPECT_EQ(account()[u"plan_gb"].toInt(), 1000);
    run("--demo subscribe monthly");
    EXPECT_EQ(json("--demo store approve").object(), (QJsonObject{{text("approved"), 1}}));
    EXPECT_EQ(activePlans(), words("monthly"));
}

TEST_F(TarnwikctlSubscription, restoringNothingIsNoFailure)
{
    signIntoDemo();
    const QJsonObject before = account();
    EXPECT_EQ(run("--demo restore-purchases"), (ProgramResult{0, "No active App Store subscription was found.\n", ""}));
    const QJsonDocument answer = json("--demo restore-purchases");
    EXPECT_EQ(answer.object().keys(), words("account error_message status_message synced"));
    EXPECT_EQ(answer[u"synced"], QJsonValue(false));
    EXPECT_TRUE(answer[u"account"].isNull());
    EXPECT_EQ(account(), before);
}

TEST_F(TarnwikctlSubscription, theStaffChangeWhatIsActive)
{
    EXPECT_EQ(run("--demo store purchase monthly"),
              (ProgramResult{0, "The Monthly subscription was bought on another device.\n", ""}));
    EXPECT_EQ(activePlans(), words("monthly"));
    EXPECT_EQ(run("--demo store renew monthly"), (ProgramResult{0, "The Monthly subscription was renewed.\n", ""}));
    EXPECT_EQ(activePlans(), words("monthly"));
    EXPECT_EQ(run("--demo store renew yearly"), failure("There is no active subscription to “tarnwik.sub.yearly”."));
    EXPECT_EQ(json("--demo store revoke monthly").object(),
              (QJsonObject{{text("plan"), text("monthly")}, {text("product_id"), text("tarnwik.sub.monthly")}}));
    EXPECT_EQ(activePlans(), QStringList());
    EXPECT_EQ(run("--demo store revoke monthly"), failure("There is no active subscription to “tarnwik.sub.monthly”."));
}

TEST_F(TarnwikctlSubscription, aRevokedPurchaseIsNotRestored)
{
    signIntoDemo();
    EXPECT_EQ(run("--demo subscribe monthly").status, 0);
    EXPECT_EQ(run("--demo store revoke monthly").status, 0);
    EXPECT_EQ(run("--demo restore-purchases"), (ProgramResult{0, "No active App Store subscription was found.\n", ""}));
}

TEST_F(TarnwikctlSubscription, theServiceMayRefuseWhatTheStoreSold)
{
    signIntoDemo();
    const QJsonObject before = account();
    service::Database database(m_home.path(text("data/tarnwik/demo/service.sqlite")));
    database.run("CREATE TABLE kept AS SELECT * FROM subscription_products");
    database.run("DELETE FROM subscription_products");
    EXPECT_EQ(run("--demo subscribe monthly"),
              (ProgramResult{1, "Monthly subscription is active.\n",
                             "The service did not take the purchase: unknown product\n"}));
    const QJsonObject answer = failedJSON("--demo restore-purchases");
    EXPECT_EQ(answer[u"status_message"].toString(), text("Purchases restored."));
    EXPECT_EQ(answer[u"error_message"].toString(), text("The service did not take the purchase: unknown product"));
    EXPECT_EQ(answer[u"synced"], QJsonValue(false));
    EXPECT_EQ(answer[u"account"].toObject(), before) << "fetched all the same";
    EXPECT_EQ(account(), before);
    database.run("INSERT INTO subscription_products SELECT * FROM kept");
    EXPECT_EQ(run("--demo restore-purchases"), (ProgramResult{0, "Purchases restored.\n", ""}));
    EXPECT_EQ(account()[u"plan_gb"].toInt(), 500);
}

TEST_F(TarnwikctlSubscription, brokenFilesAreKeptAsideAndToldOnce)
{
    signIntoDemo();
    expectKeptAside("configuration.json", R"({"storefront":"USA","products":[{"id":5}]})", "--demo subscribe monthly");
    EXPECT_EQ(run("--demo subscribe monthly").status, 0);
    expectKeptAside("transactions.json", "[[[", "--demo subscriptions");
    EXPECT_EQ(activePlans(), QStringList());
    m_home.write(text(configurationFile), "{}");
    m_home.write(text(storeFolder) + text("/transactions.json"), "nothing");
    EXPECT_EQ(run("--demo subscriptions").error.count('\n'), 2) << "each file has its sentence";
    EXPECT_EQ(run("--demo subscriptions").error, "");
}

TEST_F(TarnwikctlSubscription, everyCommandSaysWhatItNeeds)
{
    EXPECT_EQ(run("--demo subscribe monthly"), failure("Not signed in.", 3));
    EXPECT_EQ(run("--demo restore-purchases"), failure("Not signed in.", 3));
    for (const char *line :
         {"--demo subscribe", "--demo subscribe weekly", "--demo restore-purchases monthly", "store revoke monthly",
          "store approve", "--demo store", "--demo store dance", "--demo store approve monthly"}) {
        const ProgramResult result = run(line);
        EXPECT_EQ(result.status, 2) << line;
        EXPECT_EQ(result.output, "") << line;
    }
    EXPECT_EQ(storeFiles(text("transactions")), QStringList());
}

TEST_F(TarnwikctlSubscription, theStoreBelongsToItsOwnerAlone)
{
    // The first thing that ever happens in this demo.
    EXPECT_EQ(run("--demo store purchase monthly").status, 0);
    constexpr auto others =
        QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    for (const char *name : {"", "/store/transactions.json", "/store/identity.pem"}) {
        const QFile file(m_home.path(text("data/tarnwik/demo") + text(name)));
        ASSERT_TRUE(file.exists()) << name;
        EXPECT_EQ(file.permissions() & others, QFile::Permissions()) << name;
    }
}

TEST_F(TarnwikctlSubscription, aPurchaseWithoutRoomForItFails)
{
    signIntoDemo();
    const QJsonObject before = account();
    ASSERT_EQ(run("--demo store purchase yearly").status, 0);
    const QString folder = m_home.path(text(storeFolder));
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
    const ProgramResult result =
        start(words("--demo subscribe monthly"), {}, nullptr, test::obeyFilePermissions)->result();
    const ProgramResult change =
        start(words("--demo store revoke yearly"), {}, nullptr, test::obeyFilePermissions)->result();
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(result.error.contains(folder.toUtf8())) << result.error.constData();
    EXPECT_EQ(change.status, 1);
    EXPECT_EQ(change.output, "");
    EXPECT_EQ(account(), before);
    EXPECT_EQ(activePlans(), words("yearly"));
}

} // namespace

} // namespace tarnwik
