#pragma once

#include "ui/model/AppModelFacade.h"

#include <QActionGroup>
#include <QMenu>

namespace tarnwik {

/// The choice of the exit node, as a submenu of the tray's menu: the nodes in the server's order, the chosen one
/// marked, none when nothing, or nothing that is there, was chosen.
///
/// Long lists are built when they are opened; until then a single row stands for them, since desktops do not open an
/// empty menu.
class ExitNodeMenu final : public QMenu
{
    Q_OBJECT

public:
    /// \a appModel must outlive this object.
    explicit ExitNodeMenu(AppModelFacade *appModel);

    /// Lists of up to so many nodes are built at once.
    static constexpr int shortList = 100;

private:
    void nodesChanged();
    void buildWhenShort();
    void build();
    void rebuild(int first, int count);
    void add(int row);
    void markSelected();
    void select(const QAction *item);

    AppModelFacade *const m_appModel;
    QActionGroup m_items;
    bool m_isBuilt = false;
    bool m_isRebuildPending = false;
};

} // namespace tarnwik
