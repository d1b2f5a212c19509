#include "store/AppStoreSubscriptionPlan.h"

#include <gtest/gtest.h>

#include <QSet>

namespace tarnwik {

namespace {

using Plan = AppStoreSubscriptionPlan;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

TEST(AppStoreSubscriptionPlan, listsMonthlyThenYearly)
{
    ASSERT_EQ(Plan::allCases.size(), 2U);
    EXPECT_EQ(Plan::allCases[0], Plan::monthly);
    EXPECT_EQ(Plan::allCases[1], Plan::yearly);
}

TEST(AppStoreSubscriptionPlan, knowsEverythingWithoutTheStore)
{
    const Plan monthly = Plan::monthly;
    EXPECT_EQ(monthly.rawValue(), text("monthly"));
    EXPECT_EQ(monthly.productID(), text("tarnwik.sub.monthly"));
    EXPECT_EQ(monthly.id(), text("tarnwik.sub.monthly"));
    EXPECT_EQ(monthly.title(), text("Monthly"));
    EXPECT_EQ(monthly.fallbackPrice(), text("$14.99"));

    const Plan yearly = Plan::yearly;
    EXPECT_EQ(yearly.rawValue(), text("yearly"));
    EXPECT_EQ(yearly.productID(), text("tarnwik.sub.yearly"));
    EXPECT_EQ(yearly.id(), text("tarnwik.sub.yearly"));
    EXPECT_EQ(yearly.title(), text("Yearly"));
    EXPECT_EQ(yearly.fallbackPrice(), text("$119.00"));
}

TEST(AppStoreSubscriptionPlan, isFoundByItsExactRawValueOnly)
{
    EXPECT_EQ(Plan::fromRawValue(text("monthly")), Plan(Plan::monthly));
    EXPECT_EQ(Plan::fromRawValue(text("yearly")), Plan(Plan::yearly));
    for (const char *other : {"Monthly", "YEARLY", "monthly ", "", "weekly", "tarnwik.sub.monthly"})
        EXPECT_FALSE(Plan::fromRawValue(text(other))) << other;
}

TEST(AppStoreSubscriptionPlan, priceLineFallsBackToTheKnownPrice)
{
    EXPECT_EQ(Plan(Plan::monthly).priceLine(std::nullopt), text("$14.99/month"));
    EXPECT_EQ(Plan(Plan::yearly).priceLine(std::nullopt), text("$119.00/year \u00B7 $9.99/month"));
}

TEST(AppStoreSubscriptionPlan, priceLineTakesTheStoresPriceAsItIs)
{
    EXPECT_EQ(Plan(Plan::monthly).priceLine(text("13,99\u00A0€")), text("13,99\u00A0€/month"));
    EXPECT_EQ(Plan(Plan::yearly).priceLine(text("€129,99")), text("€129,99/year \u00B7 $9.99/month"));
    // An empty price is a price that the store gave.
    EXPECT_EQ(Plan(Plan::monthly).priceLine(QString()), text("/month"));
}

TEST(AppStoreSubscriptionPlan, isHashedByItsCase)
{
    const QSet<Plan> plans{Plan::monthly, Plan::yearly, Plan::monthly};
    EXPECT_EQ(plans.size(), 2);
}

} // namespace
} // namespace tarnwik
