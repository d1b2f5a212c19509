#include "ui/app/TarnwikMenuBarView.h"

#include "ui/app/MenuItem.h"
#include "ui/app/MenuText.h"

namespace tarnwik {

TarnwikMenuBarView::TarnwikMenuBarView(AppModelFacade *appModel, const VPNControllerFacade *vpnController,
                                       ApplicationActions *actions, AppearanceTasks *tasks)
    : m_appModel(appModel)
    , m_vpnController(vpnController)
    , m_tasks(tasks)
    , m_exitNode(appModel)
{
    m_statusLine = addLine();
    m_usageLine = addLine();
    m_nodeLine = addLine();
    addSeparator();
    addMenuItem(this, actions->vpn(), MenuItemKeys::Hidden);
    addMenu(&m_exitNode);
    addMenuItem(this, actions->refresh(), MenuItemKeys::Hidden);
    addSeparator();
    addMenuItem(this, actions->openTarnwik(), MenuItemKeys::Hidden);
    addMenuItem(this, actions->settings(), MenuItemKeys::Hidden);
    addMenuItem(this, actions->signOut(), MenuItemKeys::Hidden);
    addSeparator();
    addMenuItem(this, actions->quit(), MenuItemKeys::Hidden);

    QObject::connect(this, &QMenu::aboutToShow, this, &TarnwikMenuBarView::appear);
    QObject::connect(this, &QMenu::aboutToHide, this, &TarnwikMenuBarView::disappear);
    QObject::connect(vpnController, &VPNControllerFacade::changed, this, &TarnwikMenuBarView::updateStatus);
    QObject::connect(appModel, &AppModelFacade::accountChanged, this, &TarnwikMenuBarView::updateAccount);
    QObject::connect(appModel, &AppModelFacade::selectedNodeChanged, this, &TarnwikMenuBarView::updateNode);
    QObject::connect(appModel->nodes(), &NodeListModel::countChanged, this, &TarnwikMenuBarView::updateExitNode);
    updateStatus();
    updateAccount();
    updateNode();
}

void TarnwikMenuBarView::appear()
{
    // Not every desktop tells that it closed the menu.
    disappear();
    m_environment = m_tasks->begin(AppearanceTasks::Environment);
    m_tasks->begin(AppearanceTasks::MenuBar);
}

void TarnwikMenuBarView::disappear()
{
    m_tasks->end(m_environment);
}

QAction *TarnwikMenuBarView::addLine()
{
    QAction *line = addAction(QString());
    line->setEnabled(false);
    return line;
}

void TarnwikMenuBarView::updateStatus()
{
    m_statusLine->setText(menuText(m_vpnController->statusLabel()));
    updateExitNode();
}

void TarnwikMenuBarView::updateAccount()
{
    const auto account = m_appModel->account();
    m_usageLine->setVisible(account.has_value());
    m_usageLine->setText(account ? menuText(account->usageMenuText()) : QString());
}

void TarnwikMenuBarView::updateNode()
{
    const auto node = m_appModel->selectedNode();
    m_nodeLine->setVisible(node.has_value());
    m_nodeLine->setText(node ? menuText(node->caption()) : QString());
}

void TarnwikMenuBarView::updateExitNode()
{
    QAction *exitNode = m_exitNode.menuAction();
    exitNode->setVisible(m_appModel->nodes()->count() > 0);
    exitNode->setEnabled(m_vpnController->actionState() == VPNActionState::CanConnect);
}

} // namespace tarnwik
