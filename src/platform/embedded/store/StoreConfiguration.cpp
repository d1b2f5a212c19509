#include "platform/embedded/store/StoreConfiguration.h"

#include "platform/embedded/store/StoreJSON.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <utility>

namespace tarnwik {

namespace {

constexpr qint64 longestDelay = 600'000; // milliseconds

QString storefrontFrom(const StoreJSON &place, const QString &code)
{
    const bool isCode =
        code.size() == 3 && std::all_of(code.begin(), code.end(), [](QChar c) { return c >= u'A' && c <= u'Z'; });
    if (!isCode)
        place.refuse(QStringLiteral("is no three-letter country code such as USA"));
    return code;
}

SubscriptionPeriod periodFrom(const StoreJSON &place)
{
    static const QRegularExpression form(QStringLiteral("\\AP([1-9][0-9]{0,2})([DWMY])\\z"));
    const QRegularExpressionMatch match = form.match(place.text());
    if (!match.hasMatch())
        place.refuse(QStringLiteral("is no period such as P1M or P1Y"));
    SubscriptionPeriod period;
    period.count = match.captured(1).toInt();
    period.unit = match.captured(2).front();
    return period;
}

SoldProduct productFrom(const StoreJSON &place)
{
    place.allowOnly({QStringLiteral("id"), QStringLiteral("period"), QStringLiteral("display_prices")});
    SoldProduct product;
    product.id = place[QStringLiteral("id")].textThatIsNotEmpty();
    product.period = periodFrom(place[QStringLiteral("period")]);
    const StoreJSON prices = place[QStringLiteral("display_prices")];
    for (const QString &storefront : prices.keys()) {
        const StoreJSON price = prices[storefront];
        product.displayPrices.insert(storefrontFrom(price, storefront), price.textThatIsNotEmpty());
    }
    return product;
}

QList<SoldProduct> productsFrom(const StoreJSON &list)
{
    QList<SoldProduct> products;
    for (const StoreJSON &place : list.items()) {
        const SoldProduct product = productFrom(place);
        const bool isKnown =
            std::any_of(products.begin(), products.end(), [&](const auto &known) { return known.id == product.id; });
        if (isKnown)
            place[QStringLiteral("id")].refuse(QStringLiteral("appears twice"));
        products.append(product);
    }
    return products;
}

PurchaseScript outcomeFrom(const StoreJSON &place)
{
    static const std::array<std::pair<QString, PurchaseScript>, 6> outcomes{{
        {QStringLiteral("success"), PurchaseScript::Success},
        {QStringLiteral("pending"), PurchaseScript::Pending},
        {QStringLiteral("cancelled"), PurchaseScript::Cancelled},
        {QStringLiteral("failing"), PurchaseScript::Failing},
        {QStringLiteral("unknown"), PurchaseScript::Unknown},
        {QStringLiteral("unverified"), PurchaseScript::Unverified},
    }};
    const QString word = place.text();
    const auto *outcome =
        std::find_if(outcomes.begin(), outcomes.end(), [&](const auto &entry) { return entry.first == word; });
    if (outcome == outcomes.end())
        place.refuse(QStringLiteral("must be success, pending, cancelled, failing, unknown or unverified"));
    return outcome->second;
}

void readNextPurchase(const StoreJSON &place, StoreConfiguration &configuration)
{
    place.allowOnly({QStringLiteral("outcome"), QStringLiteral("message")});
    configuration.nextPurchase = outcomeFrom(place[QStringLiteral("outcome")]);
    // Other outcomes may keep the message: it waits for the next time that purchases are to fail.
    if (configuration.nextPurchase == PurchaseScript::Failing || place.find(QStringLiteral("message")))
        configuration.failureMessage = place[QStringLiteral("message")].textThatIsNotEmpty();
}

void readDelays(const StoreJSON &place, StoreConfiguration &configuration)
{
    place.allowOnly({QStringLiteral("products"), QStringLiteral("purchase"), QStringLiteral("sync")});
    const auto delay = [&](const QString &key) {
        const auto found = place.find(key);
        return std::chrono::milliseconds(found ? found->integer(0, longestDelay) : 0);
    };
    configuration.productsDelay = delay(QStringLiteral("products"));
    configuration.purchaseDelay = delay(QStringLiteral("purchase"));
    configuration.syncDelay = delay(QStringLiteral("sync"));
}

} // namespace

QDateTime SubscriptionPeriod::endAfter(const QDateTime &start) const
{
    constexpr int daysOfAWeek = 7;
    switch (unit.unicode()) {
    case u'D':
        return start.addDays(count);
    case u'W':
        return start.addDays(qint64(count) * daysOfAWeek);
    case u'Y':
        return start.addYears(count);
    default:
        return start.addMonths(count);
    }
}

std::optional<SoldProduct> StoreConfiguration::offered(const QString &productID) const
{
    for (const SoldProduct &product : products) {
        if (product.id == productID && product.displayPrices.contains(storefront))
            return product;
    }
    return std::nullopt;
}

StoreConfiguration parseStoreConfiguration(const QByteArray &json)
{
    const StoreJSON root = StoreJSON::parse(json, QStringLiteral("The store configuration is refused"));
    root.allowOnly({QStringLiteral("storefront"), QStringLiteral("products"), QStringLiteral("next_purchase"),
                    QStringLiteral("delays_ms")});
    StoreConfiguration configuration;
    const StoreJSON storefront = root[QStringLiteral("storefront")];
    configuration.storefront = storefrontFrom(storefront, storefront.text());
    configuration.products = productsFrom(root[QStringLiteral("products")]);
    if (const auto place = root.find(QStringLiteral("next_purchase")))
        readNextPurchase(*place, configuration);
    if (const auto place = root.find(QStringLiteral("delays_ms")))
        readDelays(*place, configuration);
    return configuration;
}

} // namespace tarnwik
