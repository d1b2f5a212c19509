#include "platform/embedded/store/StoreConfiguration.h"
#include "platform/AppStore.h"

#include <gtest/gtest.h>

#include <QFile>

namespace tarnwik {

namespace {

QByteArray withProducts(const QByteArray &products)
{
    return R"({"storefront": "USA", "products": [)" + products + "]}";
}

QByteArray withRest(const QByteArray &rest)
{
    return R"({"storefront": "USA", "products": [], )" + rest + "}";
}

const QByteArray good = R"({"id": "a", "period": "P1M", "display_prices": {"USA": "$1"}})";

struct Refused
{
    QByteArray json;
    const char *problem;
};

} // namespace

TEST(StoreConfiguration, readsEveryField)
{
    const StoreConfiguration configuration = parseStoreConfiguration(R"({
        "storefront": "DEU",
        "products": [
            {"id": "b", "period": "P2W", "display_prices": {"DEU": "1,00 €", "USA": "$1"}},
            {"id": "a", "period": "P999D", "display_prices": {}}],
        "next_purchase": {"outcome": "failing", "message": "No."},
        "delays_ms": {"products": 1, "purchase": 600000, "sync": 3e2}})");
    StoreConfiguration expected;
    expected.storefront = QStringLiteral("DEU");
    expected.products = {
        {QStringLiteral("b"),
         {2, u'W'},
         {{QStringLiteral("DEU"), QStringLiteral("1,00 €")}, {QStringLiteral("USA"), QStringLiteral("$1")}}},
        {QStringLiteral("a"), {999, u'D'}, {}}};
    expected.nextPurchase = PurchaseScript::Failing;
    expected.failureMessage = QStringLiteral("No.");
    expected.productsDelay = std::chrono::milliseconds(1);
    expected.purchaseDelay = std::chrono::milliseconds(600000);
    expected.syncDelay = std::chrono::milliseconds(300);
    EXPECT_EQ(configuration, expected);
}

TEST(StoreConfiguration, needsNeitherOutcomeNorDelays)
{
    const StoreConfiguration configuration = parseStoreConfiguration(withProducts(good));
    EXPECT_EQ(configuration.nextPurchase, PurchaseScript::Success);
    EXPECT_EQ(
        configuration.productsDelay.count() + configuration.purchaseDelay.count() + configuration.syncDelay.count(), 0);
    EXPECT_EQ(parseStoreConfiguration(withRest(R"("delays_ms": {"sync": 7})")).syncDelay.count(), 7);
}

TEST(StoreConfiguration, knowsEveryOutcome)
{
    const QList<std::pair<QByteArray, PurchaseScript>> outcomes{{"success", PurchaseScript::Success},
                                                                {"pending", PurchaseScript::Pending},
                                                                {"cancelled", PurchaseScript::Cancelled},
                                                                {"unknown", PurchaseScript::Unknown},
                                                                {"unverified", PurchaseScript::Unverified}};
    for (const auto &[word, outcome] : outcomes) {
        const QByteArray json = withRest(R"("next_purchase": {"outcome": ")" + word + R"("})");
        EXPECT_EQ(parseStoreConfiguration(json).nextPurchase, outcome) << word.constData();
    }
}

TEST(StoreConfiguration, refusesWhatItDoesNotUnderstandAndTellsWhere)
{
    const QList<Refused> refused{
        {"", "it is not a JSON object"},
        {"[]", "it is not a JSON object"},
        {"{} x", "it is not a JSON object"},
        {"{}", "storefront is missing"},
        {R"({"storefront": "USA"})", "products is missing"},
        {R"({"storefront": "usa", "products": []})", "storefront is no three-letter country code such as USA"},
        {R"({"storefront": 7, "products": []})", "storefront must be a text"},
        {R"({"storefront": "USA", "products": {}})", "products must be a list"},
        {withProducts("7"), "products[0] must be an object"},
        {withProducts("{}"), "products[0].id is missing"},
        {withProducts(good + R"(,{"id": 5, "period": "P1M", "display_prices": {}})"), "products[1].id must be a text"},
        {withProducts(good + R"(,{"id": "", "period": "P1M", "display_prices": {}})"),
         "products[1].id must not be empty"},
        {withProducts(good + "," + good), "products[1].id appears twice"},
        {withProducts(R"({"id": "a", "display_prices": {}})"), "products[0].period is missing"},
        {withProducts(R"({"id": "a", "period": "P0M", "display_prices": {}})"),
         "products[0].period is no period such as P1M or P1Y"},
        {withProducts(R"({"id": "a", "period": "P1M\n", "display_prices": {}})"),
         "products[0].period is no period such as P1M or P1Y"},
        {withProducts(R"({"id": "a", "period": "P1M"})"), "products[0].display_prices is missing"},
        {withProducts(R"({"id": "a", "period": "P1M", "display_prices": []})"),
         "products[0].display_prices must be an object"},
        {withProducts(R"({"id": "a", "period": "P1M", "display_prices": {"USA": ""}})"),
         "products[0].display_prices.USA must not be empty"},
        {withProducts(R"({"id": "a", "period": "P1M", "display_prices": {"US": "$1"}})"),
         "products[0].display_prices.US is no three-letter country code such as USA"},
        {withProducts(R"({"id": "a", "period": "P1M", "display_prices": {}, "price": 1})"),
         "products[0].price is not a known key"},
        {withRest(R"("next_purchase": {})"), "next_purchase.outcome is missing"},
        {withRest(R"("next_purchase": {"outcome": "Success"})"),
         "next_purchase.outcome must be success, pending, cancelled, failing, unknown or unverified"},
        {withRest(R"("next_purchase": {"outcome": "failing"})"), "next_purchase.message is missing"},
        {withRest(R"("next_purchase": {"outcome": "success", "message": 1})"), "next_purchase.message must be a text"},
        {withRest(R"("delays_ms": {"sync": -1})"), "delays_ms.sync must be a whole number from 0 to 600000"},
        {withRest(R"("delays_ms": {"sync": 600001})"), "delays_ms.sync must be a whole number from 0 to 600000"},
        {withRest(R"("delays_ms": {"purchase": 0.5})"), "delays_ms.purchase must be a whole number from 0 to 600000"},
        {withRest(R"("delays_ms": {"products": "1"})"), "delays_ms.products must be a whole number from 0 to 600000"},
        {withRest(R"("delays_ms": {"product": 1})"), "delays_ms.product is not a known key"},
        {withRest(R"("delays": {})"), "delays is not a known key"},
    };
    for (const Refused &example : refused) {
        try {
            parseStoreConfiguration(example.json);
            ADD_FAILURE() << "accepted: " << example.json.constData();
        } catch (const StoreError &error) {
            EXPECT_EQ(
                error.localizedDescription(),
                QStringLiteral("The store configuration is refused: %1.").arg(QString::fromUtf8(example.problem)));
        }
    }
}

TEST(StoreConfiguration, isTheExampleWithoutAFile)
{
    QFile example(QStringLiteral(TARNWIK_STORE_FILE));
    ASSERT_TRUE(example.open(QIODevice::ReadOnly));
    const StoreConfiguration configuration = builtInStoreConfiguration();
    EXPECT_EQ(configuration, parseStoreConfiguration(example.readAll()));
    EXPECT_EQ(configuration.offered(QStringLiteral("tarnwik.sub.monthly"))->displayPrices[QStringLiteral("USA")],
              QStringLiteral("$14.99"));
    EXPECT_EQ(configuration.offered(QStringLiteral("tarnwik.sub.yearly"))->displayPrices[QStringLiteral("USA")],
              QStringLiteral("$119.00"));
}

TEST(StoreConfiguration, periodsFollowTheCalendar)
{
    const QDateTime start(QDate(2028, 1, 31), QTime(12, 0), Qt::UTC);
    const auto end = [&](int count, char16_t unit) {
        return SubscriptionPeriod{count, unit}.endAfter(start).toString(QStringLiteral("yyyy-MM-dd hh:mm"));
    };
    EXPECT_EQ(end(1, u'M'), QStringLiteral("2028-02-29 12:00"));
    EXPECT_EQ(end(1, u'Y'), QStringLiteral("2029-01-31 12:00"));
    EXPECT_EQ(end(2, u'W'), QStringLiteral("2028-02-14 12:00"));
    EXPECT_EQ(end(3, u'D'), QStringLiteral("2028-02-03 12:00"));
}

} // namespace tarnwik
