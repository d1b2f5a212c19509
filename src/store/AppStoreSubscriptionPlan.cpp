#include "store/AppStoreSubscriptionPlan.h"

namespace tarnwik {

namespace {

struct Description
{
    QString rawValue;
    QString productID;
    QString title;
    QString fallbackPrice;
    /// What follows the price.
    QString priceSuffix;
};

const Description &description(AppStoreSubscriptionPlan::Case plan)
{
    static const std::array<Description, AppStoreSubscriptionPlan::allCases.size()> descriptions{{
        {QStringLiteral("monthly"), QStringLiteral("tarnwik.sub.monthly"), QStringLiteral("Monthly"),
         QStringLiteral("$14.99"), QStringLiteral("/month")},
        {QStringLiteral("yearly"), QStringLiteral("tarnwik.sub.yearly"), QStringLiteral("Yearly"),
         QStringLiteral("$119.00"), QStringLiteral("/year \u00B7 $9.99/month")},
    }};
    return descriptions[plan];
}

} // namespace

std::optional<AppStoreSubscriptionPlan> AppStoreSubscriptionPlan::fromRawValue(const QString &rawValue)
{
    for (const Case plan : allCases) {
        if (description(plan).rawValue == rawValue)
            return plan;
    }
    return std::nullopt;
}

QString AppStoreSubscriptionPlan::rawValue() const
{
    return description(m_case).rawValue;
}

QString AppStoreSubscriptionPlan::productID() const
{
    return description(m_case).productID;
}

QString AppStoreSubscriptionPlan::title() const
{
    return description(m_case).title;
}

QString AppStoreSubscriptionPlan::fallbackPrice() const
{
    return description(m_case).fallbackPrice;
}

QString AppStoreSubscriptionPlan::priceLine(const std::optional<QString> &displayPrice) const
{
    return displayPrice.value_or(fallbackPrice()) + description(m_case).priceSuffix;
}

} // namespace tarnwik
