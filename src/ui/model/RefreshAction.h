#pragma once

#include "core/AppModel.h"
#include "ui/model/Action.h"

#include <QPointer>

namespace tarnwik {

/// Fetches everything anew, then asks for the tunnel's status.
class RefreshAction final : public Action
{
    Q_OBJECT
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged)

public:
    /// \a model must outlive this object.
    explicit RefreshAction(AppModel *model);

    /// A run has not ended: what shows progress shows it until then.
    bool isRunning() const { return m_runCount > 0; }

    /// Starts a run. The screen that shows progress has no rule for its button but this: while a run is under way
    /// another one starts only where the menus offer it.
    void trigger() override;

Q_SIGNALS:
    void isRunningChanged();

private:
    static Task<> run(QPointer<RefreshAction> action, QPointer<AppModel> model);
    void countRuns(int change);

    int m_runCount = 0;
};

} // namespace tarnwik
