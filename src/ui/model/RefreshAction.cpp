#include "ui/model/RefreshAction.h"

#include "async/Detach.h"

namespace tarnwik {

RefreshAction::RefreshAction(AppModel *model)
    : Action({.title = QStringLiteral("Refresh"),
              .symbol = QStringLiteral("arrow.clockwise"),
              .shortcut = QStringLiteral("Ctrl+R"),
              .isEnabled = false},
             [this, model] { async::detach(run(this, model)); })
{
}

void RefreshAction::trigger()
{
    if (!isRunning() || isEnabled())
        perform();
}

Task<> RefreshAction::run(QPointer<RefreshAction> action, QPointer<AppModel> model)
{
    action->countRuns(1);
    co_await model->refreshFromUI();
    if (model)
        co_await model->vpnController()->refreshStatus();
    if (action)
        action->countRuns(-1);
}

void RefreshAction::countRuns(int change)
{
    const bool wasRunning = isRunning();
    m_runCount += change;
    if (isRunning() != wasRunning)
        Q_EMIT isRunningChanged();
}

} // namespace tarnwik
