#pragma once

#include "core/SubscriptionFlow.h"
#include "ui/model/PlanListModel.h"

#include <QObject>
#include <QProperty>
#include <QVariant>

namespace tarnwik {

/// The App Store block as QML sees it. Lives on the main thread.
class SubscriptionsFacade final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(tarnwik::PlanListModel *plans READ plans CONSTANT)
    Q_PROPERTY(bool hasActiveSubscription READ hasActiveSubscription NOTIFY hasActiveSubscriptionChanged)
    Q_PROPERTY(bool isRestoringPurchases READ isRestoringPurchases NOTIFY isRestoringPurchasesChanged)
    Q_PROPERTY(QVariant statusMessage READ statusMessage NOTIFY statusMessageChanged)
    Q_PROPERTY(QVariant errorMessage READ errorMessage NOTIFY errorMessageChanged)

public:
    /// \a model and \a store must outlive this object.
    SubscriptionsFacade(AppModel *model, AppStoreSubscriptionStore *store);

    PlanListModel *plans() { return &m_plans; }
    bool hasActiveSubscription() const { return m_hasActiveSubscription; }
    bool isRestoringPurchases() const { return m_store->isRestoringPurchases(); }
    QVariant statusMessage() const;
    QVariant errorMessage() const;

    /// Starts the purchase of a plan, through the store and the service to the account on the screen. It runs to its
    /// end whatever becomes of the screen. \a planIndex is its row among the plans; one that does not exist is ignored.
    Q_INVOKABLE void purchase(int planIndex);

    /// The same with what was bought before.
    Q_INVOKABLE void restorePurchases();

Q_SIGNALS:
    void hasActiveSubscriptionChanged();
    void isRestoringPurchasesChanged();
    void statusMessageChanged();
    void errorMessageChanged();

private:
    static Task<> finish(Task<SubscriptionFlowResult> flow);

    AppModel *m_model;
    AppStoreSubscriptionStore *m_store;
    PlanListModel m_plans;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(SubscriptionsFacade, bool, m_hasActiveSubscription, false,
                                         &SubscriptionsFacade::hasActiveSubscriptionChanged)
};

} // namespace tarnwik
