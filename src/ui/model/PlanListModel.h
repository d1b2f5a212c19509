#pragma once

#include "store/AppStoreSubscriptionStore.h"
#include "ui/model/CountedListModel.h"

#include <array>

namespace tarnwik {

/// The plans of the App Store block, a row each, in the order of AppStoreSubscriptionPlan::allCases.
class PlanListModel final : public CountedListModel
{
    Q_OBJECT

public:
    enum Role {
        TitleRole = Qt::UserRole,
        PriceLineRole,
        /// The user's subscription to the plan is active.
        IsActiveRole,
        /// The plan is being bought.
        IsPurchasingRole,
        /// The store has no product for the plan, and none is on its way.
        IsUnavailableRole,
    };

    /// \a store must outlive this object.
    explicit PlanListModel(const AppStoreSubscriptionStore *store);

    int rowCount(const QModelIndex &parent) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    /// What the store says of a plan.
    struct Row
    {
        QString priceLine;
        bool isActive = false;
        bool isPurchasing = false;
        bool isUnavailable = false;

        bool operator==(const Row &) const = default;
    };

    static constexpr auto &plans = AppStoreSubscriptionPlan::allCases;

    Row row(AppStoreSubscriptionPlan plan) const;
    void update();

    const AppStoreSubscriptionStore *m_store;
    std::array<Row, plans.size()> m_rows;
};

} // namespace tarnwik
