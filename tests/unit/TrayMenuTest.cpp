#include "ui/app/TarnwikMenuBarView.h"

#include "support/ModelFixture.h"
#include "ui/app/MenuText.h"

#include <QSignalSpy>

namespace tarnwik::test {

namespace {

/// The tray's menu over the real model. The samples' node is in region "eu" and has the name "fra-1" or the like.
class TrayMenu : public ModelTest
{
protected:
    QList<QAction *> visibleItems() const
    {
        QList<QAction *> items;
        for (QAction *item : m_menu.actions()) {
            if (item->isVisible())
                items.append(item);
        }
        return items;
    }

    QStringList titles() const
    {
        QStringList titles;
        for (const QAction *item : visibleItems())
            titles.append(item->isSeparator() ? text("---") : item->text());
        return titles;
    }

    QAction *item(const char *title) const
    {
        for (QAction *item : visibleItems()) {
            if (item->text() == text(title))
                return item;
        }
        throw std::runtime_error(std::string("no item ") + title);
    }

    void signIn()
    {
        m_model.setServerURLString(text("https://server.example"));
        run(m_model.signIn(text("a@b.example"), text("secret")));
        settleEvents();
    }

    void setStatus(VPNStatus status)
    {
        if (!m_configuration)
            m_configuration = m_platform.tunnelManager->addSaved(text("Tarnwik"));
        m_configuration->currentStatus = status;
        run(m_model.vpnController()->refreshStatus());
        settleEvents();
    }

    QStringList nodeTitles() const
    {
        QStringList titles;
        for (const QAction *item : exitNodeMenu()->actions())
            titles.append(item->text());
        return titles;
    }

    int checkedRow() const
    {
        const auto items = exitNodeMenu()->actions();
        for (int row = 0; row < items.size(); ++row) {
            if (items[row]->isChecked())
                return row;
        }
        return -1;
    }

    QMenu *exitNodeMenu() const { return item("Exit Node")->menu(); }

    /// A list of so many nodes, numbered from 1.
    void serveNodes(int count)
    {
        QList<int> ids;
        for (int id = 1; id <= count; ++id)
            ids.append(id);
        m_answers[m_getNodes] = {200, nodes(ids)};
    }

    std::shared_ptr<FakeTunnelConfiguration> m_configuration;
    AppModel m_model;
    AppModelFacade m_appModel{&m_model};
    VPNControllerFacade m_vpnController{m_model.vpnController()};
    ApplicationActions m_actions{&m_model, m_platform.desktop};
    AppStoreSubscriptionStore m_store;
    AppearanceTasks m_tasks{&m_model, &m_store};
    TarnwikMenuBarView m_menu{&m_appModel, &m_vpnController, &m_actions, &m_tasks};
};

TEST_F(TrayMenu, signedOutItOffersWhatNeedsNoSession)
{
    EXPECT_EQ(titles(),
              (QStringList{text("Not configured"), text("---"), text("Connect"), text("Refresh"), text("---"),
                           text("Open Tarnwik"), text("Settings"), text("Sign Out"), text("---"), text("Quit")}));
    for (const char *disabled : {"Not configured", "Connect", "Refresh", "Sign Out"})
        EXPECT_FALSE(item(disabled)->isEnabled()) << disabled;
    for (const char *enabled : {"Open Tarnwik", "Settings", "Quit"})
        EXPECT_TRUE(item(enabled)->isEnabled()) << enabled;
}

TEST_F(TrayMenu, signedInItTellsUsageAndNodeAndOffersTheNodes)
{
    signIn();
    const QString usage = menuText(m_appModel.account()->usageMenuText());
    const QString node = menuText(m_appModel.selectedNode()->caption());
    EXPECT_EQ(titles(),
              (QStringList{text("Not configured"), usage, node, text("---"), text("Connect"), text("Exit Node"),
                           text("Refresh"), text("---"), text("Open Tarnwik"), text("Settings"), text("Sign Out"),
                           text("---"), text("Quit")}));
    EXPECT_TRUE(usage.contains(text(" of "))) << usage.toStdString();
    EXPECT_TRUE(usage.endsWith(text(" GB"))) << usage.toStdString();
    for (const char *enabled : {"Connect", "Exit Node", "Refresh", "Sign Out"})
        EXPECT_TRUE(item(enabled)->isEnabled()) << enabled;
    EXPECT_FALSE(visibleItems()[1]->isEnabled());
    EXPECT_FALSE(visibleItems()[2]->isEnabled());
}

TEST_F(TrayMenu, whileTheTunnelChangesItShowsTheStatusAndNothingCanBeChosen)
{
    signIn();
    for (const auto &[status, label] :
         {std::pair(VPNStatus::Connecting, "Connecting"), std::pair(VPNStatus::Disconnecting, "Disconnecting")}) {
        setStatus(status);
        EXPECT_EQ(visibleItems()[4]->text(), text(label));
        EXPECT_FALSE(visibleItems()[4]->isEnabled());
        EXPECT_FALSE(item("Exit Node")->isEnabled());
    }
}

TEST_F(TrayMenu, connectedItOffersToDisconnectAndKeepsTheNode)
{
    signIn();
    setStatus(VPNStatus::Connected);
    EXPECT_EQ(visibleItems()[0]->text(), text("Connected"));
    EXPECT_TRUE(item("Disconnect")->isEnabled());
    EXPECT_FALSE(item("Exit Node")->isEnabled());
}

TEST_F(TrayMenu, aNodeCannotBeChosenOnceTheTunnelRunsThoughTheMenuIsStillOpen)
{
    signIn();
    const std::optional<qint64> before = m_model.selectedNodeID();
    QAction *second = exitNodeMenu()->actions()[1];
    setStatus(VPNStatus::Connecting);
    second->trigger();
    EXPECT_EQ(m_model.selectedNodeID(), before);
    EXPECT_EQ(checkedRow(), m_appModel.selectedNodeIndex());
}

TEST_F(TrayMenu, tenThousandNodesAreNoRowsBeforeTheyAreLookedAt)
{
    serveNodes(10000);
    signIn();
    EXPECT_EQ(exitNodeMenu()->actions().size(), 1);
}

TEST_F(TrayMenu, whileTheModelWorksTheSessionsCommandsRest)
{
    signIn();
    m_answers.remove(m_getAccount);
    Running<> refresh(m_model.refreshFromUI());
    for (const char *disabled : {"Connect", "Refresh", "Sign Out"})
        EXPECT_FALSE(item(disabled)->isEnabled()) << disabled;
    EXPECT_TRUE(item("Exit Node")->isEnabled());
    m_platform.httpSession->waiting(m_getAccount).answer(200, sampleJSON<AccountResponse>());
    refresh.result();
    EXPECT_TRUE(item("Sign Out")->isEnabled());
}

TEST_F(TrayMenu, withoutNodesThereIsNoChoice)
{
    m_answers[m_getNodes] = {200, nodes({})};
    signIn();
    EXPECT_FALSE(titles().contains(text("Exit Node")));
    EXPECT_FALSE(item("Connect")->isEnabled());
}

TEST_F(TrayMenu, theChosenNodeIsMarkedAndAnotherCanBeChosen)
{
    signIn();
    EXPECT_EQ(checkedRow(), m_appModel.selectedNodeIndex());
    exitNodeMenu()->actions()[1]->trigger();
    EXPECT_EQ(m_model.selectedNodeID(), 9);
    EXPECT_EQ(checkedRow(), 1);
    exitNodeMenu()->actions()[1]->trigger();
    EXPECT_EQ(checkedRow(), 1);
    m_model.setSelectedNodeID(5);
    EXPECT_EQ(checkedRow(), 0);
}

TEST_F(TrayMenu, aStaleChoiceMarksNothing)
{
    signIn();
    m_model.setSelectedNodeID(77);
    EXPECT_EQ(checkedRow(), -1);
}

TEST_F(TrayMenu, theNodesStandInTheServersOrderAndFollowIt)
{
    serveNodes(3);
    signIn();
    EXPECT_EQ(exitNodeMenu()->actions().size(), 3);
    m_answers[m_getNodes] = {200, nodes({3, 1})};
    run(m_model.refresh());
    settleEvents();
    ASSERT_EQ(exitNodeMenu()->actions().size(), 2);
    exitNodeMenu()->actions()[0]->trigger();
    EXPECT_EQ(m_model.selectedNodeID(), 3);
}

TEST_F(TrayMenu, aNodeThatWentMeanwhileCannotBeChosen)
{
    serveNodes(3);
    signIn();
    const std::optional<qint64> before = m_model.selectedNodeID();
    QPointer<QAction> third = exitNodeMenu()->actions()[2];
    // Before the menu follows the new list.
    bool wasChosen = false;
    QObject::connect(m_appModel.nodes(), &NodeListModel::countChanged, &m_menu, [&] {
        if (third && !std::exchange(wasChosen, true))
            third->trigger();
    });
    m_answers[m_getNodes] = {200, nodes({1, 2})};
    run(m_model.refresh());
    EXPECT_TRUE(wasChosen);
    EXPECT_EQ(m_model.selectedNodeID(), before);
}

TEST_F(TrayMenu, aLongListIsBuiltWhenItIsOpened)
{
    const int count = ExitNodeMenu::shortList + 1;
    serveNodes(count);
    signIn();
    EXPECT_EQ(exitNodeMenu()->actions().size(), 1);
    EXPECT_TRUE(exitNodeMenu()->actions().front()->isChecked());
    Q_EMIT exitNodeMenu()->aboutToShow();
    EXPECT_EQ(exitNodeMenu()->actions().size(), count);
    EXPECT_EQ(checkedRow(), m_appModel.selectedNodeIndex());
    m_model.setSelectedNodeID(50);
    EXPECT_EQ(checkedRow(), 49);
}

TEST_F(TrayMenu, itsButtonsAreTheProgramsActions)
{
    signIn();
    QSignalSpy opened(&m_actions, &ApplicationActions::openMainWindowRequested);
    QSignalSpy settings(&m_actions, &ApplicationActions::settingsRequested);
    QSignalSpy quit(&m_actions, &ApplicationActions::quitRequested);
    item("Open Tarnwik")->trigger();
    item("Settings")->trigger();
    item("Quit")->trigger();
    EXPECT_EQ(opened.size(), 1);
    EXPECT_EQ(settings.size(), 1);
    EXPECT_EQ(quit.size(), 1);
    forgetRequests();
    item("Refresh")->trigger();
    EXPECT_TRUE(spinUntil([&] { return requests().contains(m_getNodes) && !m_model.isLoading(); }));
    item("Sign Out")->trigger();
    EXPECT_TRUE(spinUntil([&] { return !m_model.isSignedIn(); }));
}

TEST_F(TrayMenu, itsItemsHaveNoKeys)
{
    signIn();
    for (const QAction *item : m_menu.actions())
        EXPECT_TRUE(item->shortcut().isEmpty()) << item->text().toStdString();
}

TEST_F(TrayMenu, eachTimeThatItOpensItAsksForTheStatusAndWhatTheUserIsEntitledTo)
{
    m_configuration = m_platform.tunnelManager->addSaved(text("Tarnwik"));
    for (const auto &[status, label] :
         {std::pair(VPNStatus::Connected, "Connected"), std::pair(VPNStatus::Disconnected, "Disconnected")}) {
        m_configuration->currentStatus = status;
        m_platform.appStore->operations.clear();
        Q_EMIT m_menu.aboutToShow();
        EXPECT_TRUE(spinUntil([&] { return m_tasks.runningCount() == 0; }));
        EXPECT_EQ(visibleItems()[0]->text(), text(label));
        EXPECT_TRUE(m_platform.appStore->operations.contains(text("entitlements")));
        Q_EMIT m_menu.aboutToHide();
    }
}

TEST_F(TrayMenu, withItTheStoresTaskGoesAndTheStatusIsStillTaken)
{
    m_platform.appStore->held = {text("products")};
    m_platform.tunnelManager->held = {text("loadAll")};
    m_platform.tunnelManager->addSaved(text("Tarnwik"))->currentStatus = VPNStatus::Connected;
    Q_EMIT m_menu.aboutToShow();
    settleEvents();
    EXPECT_TRUE(m_store.isLoadingProducts());
    Q_EMIT m_menu.aboutToHide();
    settleEvents();
    EXPECT_FALSE(m_store.isLoadingProducts());
    EXPECT_FALSE(m_platform.appStore->operations.contains(text("entitlements")));
    m_platform.tunnelManager->release();
    EXPECT_TRUE(spinUntil([&] { return visibleItems()[0]->text() == text("Connected"); }));
}

TEST_F(TrayMenu, openedAgainWithoutHavingBeenClosedItRunsTheStoresTaskOnce)
{
    m_platform.appStore->held = {text("products")};
    Q_EMIT m_menu.aboutToShow();
    Q_EMIT m_menu.aboutToShow();
    settleEvents();
    EXPECT_EQ(m_tasks.runningCount(), 1);
}

TEST(MenuText, everyCharacterIsShown)
{
    EXPECT_EQ(menuText(text("Frankfurt · fra-1")), text("Frankfurt · fra-1"));
    EXPECT_EQ(menuText(text("fra_1")), text("fra__1"));
    EXPECT_EQ(menuText(text("A&B & C")), text("A&&B & C"));
    EXPECT_EQ(menuText(text("two\nlines\tand a tab")), text("two lines and a tab"));
    EXPECT_EQ(menuText(text(" · fra  1 ")), text(" · fra  1 ")) << "blanks are the server's";
}

TEST(MenuText, inAMenuThatIsNotOnTheBusOnlyOneCharacterMarksKeys)
{
    EXPECT_EQ(menuText(text("fra_1"), DesktopMenuBar::Always), text("fra_1"));
    EXPECT_EQ(menuText(text("A&B & C"), DesktopMenuBar::Always), text("A&&B && C"));
}

TEST(MenuText, whatIsLongerThanAMenuIsWideIsElided)
{
    const QString longest(80, u'a');
    EXPECT_EQ(menuText(longest), longest);
    EXPECT_EQ(menuText(longest + u'a'), longest.first(79) + u'\u2026');
    EXPECT_EQ(menuText(QString(10'000, u'_')), QString(158, u'_') + u'\u2026') << "cut before it is escaped";
    EXPECT_EQ(menuText(longest.first(78) + text("😀😀")), longest.first(78) + u'\u2026') << "no half characters";
}

} // namespace
} // namespace tarnwik::test
