#include "ui/model/PlanListModel.h"

#include <utility>

namespace tarnwik {

PlanListModel::PlanListModel(const AppStoreSubscriptionStore *store)
    : m_store(store)
{
    using Store = AppStoreSubscriptionStore;
    for (const auto changed : {&Store::productsChanged, &Store::purchasedProductIDsChanged,
                               &Store::isLoadingProductsChanged, &Store::purchaseInProgressProductIDChanged})
        QObject::connect(store, changed, this, &PlanListModel::update);
    update();
}

int PlanListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(plans.size());
}

PlanListModel::Row PlanListModel::row(AppStoreSubscriptionPlan plan) const
{
    const std::optional<StoreProduct> product = m_store->product(plan);
    Row row;
    row.priceLine = plan.priceLine(product ? std::optional(product->displayPrice) : std::nullopt);
    row.isActive = m_store->isActive(plan);
    row.isPurchasing = m_store->purchaseInProgressProductID() == plan.productID();
    row.isUnavailable = !product && !m_store->isLoadingProducts();
    return row;
}

void PlanListModel::update()
{
    for (size_t i = 0; i < plans.size(); ++i) {
        Row former = std::exchange(m_rows[i], row(plans[i]));
        if (former != m_rows[i])
            Q_EMIT dataChanged(index(static_cast<int>(i)), index(static_cast<int>(i)));
    }
}

QVariant PlanListModel::data(const QModelIndex &index, int role) const
{
    if (!hasRow(index))
        return {};
    const auto i = static_cast<size_t>(index.row());
    switch (role) {
    case TitleRole:
        return AppStoreSubscriptionPlan(plans[i]).title();
    case PriceLineRole:
        return m_rows[i].priceLine;
    case IsActiveRole:
        return m_rows[i].isActive;
    case IsPurchasingRole:
        return m_rows[i].isPurchasing;
    case IsUnavailableRole:
        return m_rows[i].isUnavailable;
    default:
        return {};
    }
}

QHash<int, QByteArray> PlanListModel::roleNames() const
{
    return {{TitleRole, "title"},
            {PriceLineRole, "priceLine"},
            {IsActiveRole, "isActive"},
            {IsPurchasingRole, "isPurchasing"},
            {IsUnavailableRole, "isUnavailable"}};
}

} // namespace tarnwik
