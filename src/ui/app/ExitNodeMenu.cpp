#include "ui/app/ExitNodeMenu.h"

#include "ui/app/MenuText.h"

#include <algorithm>
#include <utility>

namespace tarnwik {

ExitNodeMenu::ExitNodeMenu(AppModelFacade *appModel)
    : QMenu(QStringLiteral("Exit Node"))
    , m_appModel(appModel)
    , m_items(this)
{
    m_items.setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    const NodeListModel *nodes = appModel->nodes();
    QObject::connect(nodes, &NodeListModel::rowsInserted, this, &ExitNodeMenu::nodesChanged);
    QObject::connect(nodes, &NodeListModel::rowsRemoved, this, &ExitNodeMenu::nodesChanged);
    QObject::connect(nodes, &NodeListModel::dataChanged, this, &ExitNodeMenu::nodesChanged);
    QObject::connect(appModel, &AppModelFacade::selectedNodeIndexChanged, this, &ExitNodeMenu::markSelected);
    QObject::connect(this, &QMenu::aboutToShow, this, &ExitNodeMenu::build);
    QObject::connect(&m_items, &QActionGroup::triggered, this, &ExitNodeMenu::select);
    buildWhenShort();
}

void ExitNodeMenu::nodesChanged()
{
    m_isBuilt = false;
    // Once for all the changes of one new list.
    if (std::exchange(m_isRebuildPending, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isRebuildPending = false;
            if (!m_isBuilt)
                buildWhenShort();
        },
        Qt::QueuedConnection);
}

void ExitNodeMenu::buildWhenShort()
{
    if (m_appModel->nodes()->count() <= shortList)
        build();
    else
        rebuild(std::max(m_appModel->selectedNodeIndex(), 0), 1);
}

void ExitNodeMenu::build()
{
    if (std::exchange(m_isBuilt, true))
        return;
    rebuild(0, m_appModel->nodes()->count());
}

void ExitNodeMenu::rebuild(int first, int count)
{
    clear();
    for (int row = first; row < first + count; ++row)
        add(row);
    markSelected();
}

void ExitNodeMenu::add(int row)
{
    const NodeListModel *nodes = m_appModel->nodes();
    const QString caption = nodes->data(nodes->index(row), NodeListModel::CaptionRole).toString();
    QAction *item = addAction(menuText(caption));
    item->setCheckable(true);
    // The node, not its row: that may be another one by the time that the item is chosen.
    item->setData(nodes->records().at(row).id);
    m_items.addAction(item);
}

void ExitNodeMenu::markSelected()
{
    const auto &nodes = m_appModel->nodes()->records();
    const int selected = m_appModel->selectedNodeIndex();
    const QVariant id = selected >= 0 && selected < nodes.size() ? QVariant(nodes.at(selected).id) : QVariant();
    for (QAction *item : m_items.actions())
        item->setChecked(item->data() == id);
}

void ExitNodeMenu::select(const QAction *item)
{
    const auto &nodes = m_appModel->nodes()->records();
    const auto chosen = std::ranges::find(nodes, item->data().toLongLong(), &ExitNode::id);
    // The desktop may still show the menu though it may no longer be used.
    if (menuAction()->isEnabled() && chosen != nodes.end())
        m_appModel->selectNode(int(chosen - nodes.begin()));
    // Choosing the chosen one took its mark away.
    markSelected();
}

} // namespace tarnwik
