#pragma once

#include "ui/app/ExitNodeMenu.h"
#include "ui/model/AppearanceTasks.h"
#include "ui/model/ApplicationActions.h"
#include "ui/model/VPNControllerFacade.h"

#include <QMenu>

namespace tarnwik {

/// The menu behind the program's icon in the desktop's tray. It tells the tunnel's state, the usage and the node, and
/// offers the program's actions; it follows the models as they change.
class TarnwikMenuBarView final : public QMenu
{
    Q_OBJECT

public:
    /// All of these must outlive this object.
    TarnwikMenuBarView(AppModelFacade *appModel, const VPNControllerFacade *vpnController, ApplicationActions *actions,
                       AppearanceTasks *tasks);

private:
    void appear();
    void disappear();
    QAction *addLine();
    void updateStatus();
    void updateAccount();
    void updateNode();
    void updateExitNode();

    AppModelFacade *const m_appModel;
    const VPNControllerFacade *const m_vpnController;
    AppearanceTasks *const m_tasks;
    int m_environment = 0;
    QAction *m_statusLine = nullptr;
    QAction *m_usageLine = nullptr;
    QAction *m_nodeLine = nullptr;
    ExitNodeMenu m_exitNode;
};

} // namespace tarnwik
