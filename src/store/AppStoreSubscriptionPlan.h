#pragma once

#include <QString>

#include <array>
#include <optional>

namespace tarnwik {

/// The plans that are sold as App Store subscriptions, with all that is known of them without asking the store.
/// Equality and hashing are those of the case.
class AppStoreSubscriptionPlan
{
public:
    enum Case {
        monthly,
        yearly,
    };

    static constexpr std::array<Case, 2> allCases{monthly, yearly};

    constexpr AppStoreSubscriptionPlan(Case plan) // NOLINT(google-explicit-constructor): a case is a plan
        : m_case(plan)
    {
    }

    /// The plan that is called \a rawValue, if any.
    static std::optional<AppStoreSubscriptionPlan> fromRawValue(const QString &rawValue);

    QString rawValue() const;
    QString id() const { return productID(); }

    /// The plan's product in the App Store.
    QString productID() const;
    QString title() const;

    /// What the plan costs where the store has not told.
    QString fallbackPrice() const;

    /// The price with its period. The yearly plan's price a month is fixed text, whatever \a displayPrice says: it is
    /// never computed.
    QString priceLine(const std::optional<QString> &displayPrice) const;

    constexpr Case plan() const { return m_case; }
    constexpr bool operator==(const AppStoreSubscriptionPlan &) const = default;
    friend constexpr size_t qHash(AppStoreSubscriptionPlan plan, size_t seed = 0) noexcept
    {
        return seed ^ plan.m_case;
    }

private:
    Case m_case;
};

} // namespace tarnwik
