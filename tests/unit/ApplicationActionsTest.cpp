#include "ui/model/ApplicationActions.h"
#include "UIModelFixture.h"

namespace tarnwik::test {

namespace {

class ApplicationActionsTest : public UIModelTest
{
protected:
    ApplicationActions &actions()
    {
        if (!m_actions)
            m_actions = std::make_unique<ApplicationActions>(&model(), m_platform.desktop);
        return *m_actions;
    }

    static QString look(const Action *action)
    {
        return QStringList({action->title(), action->symbol(), action->shortcut()}).join(QStringLiteral(", "));
    }

    void waitForTheEnd()
    {
        ASSERT_TRUE(spinUntil([this] { return !model().isLoading(); }));
    }

    QStringList openedURLs() const { return m_platform.desktop->openedURLs; }

    void setPortal(const QByteArray &address)
    {
        QByteArray body = sampleJSON<AccountResponse>();
        m_answers[m_getAccount] = {200, body.replace("https://billing.example.com/7", address)};
        run(model().refreshAccount());
        forgetRequests();
    }

    std::unique_ptr<ApplicationActions> m_actions;
};

} // namespace

TEST_F(ApplicationActionsTest, haveTheirTitlesSymbolsAndShortcuts)
{
    EXPECT_EQ(look(actions().openDashboard()), text("Open Dashboard, , Ctrl+0"));
    EXPECT_EQ(look(actions().openTarnwik()), text("Open Tarnwik, , "));
    EXPECT_EQ(look(actions().vpn()), text("Connect, power, Ctrl+Shift+C"));
    EXPECT_EQ(look(actions().refresh()), text("Refresh, arrow.clockwise, Ctrl+R"));
    EXPECT_EQ(look(actions().settings()), text("Settings, gearshape, "));
    EXPECT_EQ(look(actions().signOut()), text("Sign Out, rectangle.portrait.and.arrow.right, "));
    EXPECT_EQ(look(actions().quit()), text("Quit, , Ctrl+Q"));
    EXPECT_EQ(look(actions().settingsRefresh()), text("Refresh, arrow.clockwise, "));
    EXPECT_EQ(look(actions().settingsSignOut()), text("Sign Out, rectangle.portrait.and.arrow.right, "));
    EXPECT_EQ(look(actions().emailSupport()), text("Email support, , "));
    EXPECT_EQ(look(actions().manageBilling()), text("Manage billing, creditcard, "));
}

TEST_F(ApplicationActionsTest, offerRefreshAndSignOutWithASessionAlone)
{
    EXPECT_TRUE(actions().refresh()->isEnabled());
    EXPECT_TRUE(actions().signOut()->isEnabled());
    signOut();
    EXPECT_FALSE(actions().refresh()->isEnabled());
    EXPECT_FALSE(actions().signOut()->isEnabled());
    run(model().signIn(text("e"), text("p")));
    EXPECT_TRUE(actions().refresh()->isEnabled());
    EXPECT_TRUE(actions().signOut()->isEnabled());
}

TEST_F(ApplicationActionsTest, offerRefreshAndSignOutOnlyWhileTheModelIsIdle)
{
    actions();
    startLoading();
    EXPECT_FALSE(actions().refresh()->isEnabled());
    EXPECT_FALSE(actions().signOut()->isEnabled());
    finishLoading();
    EXPECT_TRUE(actions().refresh()->isEnabled());
    EXPECT_TRUE(actions().signOut()->isEnabled());
}

TEST_F(ApplicationActionsTest, offerAllElseWhateverTheModelDoes)
{
    signOut();
    run(model().signIn(text("e"), text("p")));
    startLoading();
    for (const Action *action :
         {actions().openDashboard(), actions().openTarnwik(), actions().settings(), actions().quit(),
          actions().settingsRefresh(), actions().settingsSignOut(), actions().emailSupport()})
        EXPECT_TRUE(action->isEnabled()) << look(action).toStdString();
    finishLoading();
}

TEST_F(ApplicationActionsTest, tellOnlyOfChanges)
{
    const QSignalSpy changes(actions().signOut(), &Action::changed);
    refresh();
    EXPECT_EQ(changes.count(), 0) << "a fetch in the background";
    run(model().refreshFromUI());
    EXPECT_EQ(changes.count(), 2) << "disabled, and enabled again";
    signOut();
    EXPECT_EQ(changes.count(), 3);
}

TEST_F(ApplicationActionsTest, signOut)
{
    actions().signOut()->trigger();
    waitForTheEnd();
    EXPECT_FALSE(model().isSignedIn());
    EXPECT_EQ(requests(), QStringList({m_deleteSession}));
}

TEST_F(ApplicationActionsTest, signOutNobodyTwice)
{
    m_answers.remove(m_deleteSession);
    actions().signOut()->trigger();
    actions().signOut()->trigger();
    EXPECT_EQ(requests(), QStringList({m_deleteSession}));
    m_platform.httpSession->waiting(m_deleteSession).answer(204);
    waitForTheEnd();
}

TEST_F(ApplicationActionsTest, leaveAllRulesToTheModelOnTheSettingsScreen)
{
    signOut();
    actions().settingsRefresh()->trigger();
    waitForTheEnd();
    EXPECT_EQ(requests().first(), m_getAccount);
    forgetRequests();
    actions().settingsSignOut()->trigger();
    waitForTheEnd();
    EXPECT_EQ(requests(), QStringList({m_deleteSession}));
    forgetRequests();
    actions().settingsSignOut()->trigger();
    actions().settingsSignOut()->trigger();
    waitForTheEnd();
    EXPECT_EQ(requests(), QStringList({m_deleteSession, m_deleteSession})) << "two tasks";
}

TEST_F(ApplicationActionsTest, refreshFromTheSettingsWithoutAskingForTheStatus)
{
    actions().settingsRefresh()->trigger();
    waitForTheEnd();
    settleEvents();
    EXPECT_EQ(requests().count(m_getNodes), 1);
    EXPECT_TRUE(m_platform.tunnelManager->operations.isEmpty());
    EXPECT_FALSE(actions().refresh()->isRunning());
}

TEST_F(ApplicationActionsTest, askTheShellForWindowsAndForTheEnd)
{
    const QSignalSpy mainWindow(&actions(), &ApplicationActions::openMainWindowRequested);
    const QSignalSpy settings(&actions(), &ApplicationActions::settingsRequested);
    const QSignalSpy quit(&actions(), &ApplicationActions::quitRequested);
    actions().openDashboard()->trigger();
    EXPECT_EQ(mainWindow.count(), 1);
    actions().openTarnwik()->trigger();
    EXPECT_EQ(mainWindow.count(), 2);
    actions().settings()->trigger();
    EXPECT_EQ(settings.count(), 1);
    EXPECT_EQ(quit.count(), 0);
    actions().quit()->trigger();
    EXPECT_EQ(quit.count(), 1);
    EXPECT_EQ(mainWindow.count() + settings.count(), 3);
}

TEST_F(ApplicationActionsTest, writeToTheSupport)
{
    actions().emailSupport()->trigger();
    EXPECT_EQ(openedURLs(), QStringList({text("mailto:support@tarnwik.example")}));
}

TEST_F(ApplicationActionsTest, openTheBillingPortalWhereThereIsOne)
{
    EXPECT_FALSE(actions().manageBilling()->isEnabled()) << "no account";
    actions().manageBilling()->trigger();
    EXPECT_TRUE(openedURLs().isEmpty());
    setPortal("https://billing.example.com/8");
    EXPECT_TRUE(actions().manageBilling()->isEnabled());
    actions().manageBilling()->trigger();
    EXPECT_EQ(openedURLs(), QStringList({text("https://billing.example.com/8")}));
    for (const auto *address : {"", "https://[broken"}) {
        setPortal(address);
        EXPECT_FALSE(actions().manageBilling()->isEnabled()) << address;
    }
}

} // namespace tarnwik::test
