#include "ui/model/RefreshAction.h"
#include "UIModelFixture.h"

namespace tarnwik::test {

namespace {

class RefreshActionTest : public UIModelTest
{
protected:
    RefreshActionTest() { m_action->setEnabled(true); }

    QStringList tunnelOperations() const { return m_platform.tunnelManager->operations; }
    bool waitForTheEnd()
    {
        return spinUntil([this] { return !m_action->isRunning(); });
    }

    std::unique_ptr<RefreshAction> m_action = std::make_unique<RefreshAction>(&model());
};

} // namespace

TEST_F(RefreshActionTest, fetchesEverythingAndThenAsksForTheTunnelsStatus)
{
    m_answers.remove(m_getNodes);
    m_action->trigger();
    ASSERT_TRUE(spinUntil([&] { return m_platform.httpSession->isWaiting(m_getNodes); }));
    EXPECT_TRUE(tunnelOperations().isEmpty()) << "too early";
    m_platform.httpSession->waiting(m_getNodes).answer(200, nodes({1}));
    ASSERT_TRUE(waitForTheEnd());
    EXPECT_EQ(tunnelOperations(), QStringList({text("loadAll"), text("create")}));
    EXPECT_EQ(model().nodes().size(), 1);
}

TEST_F(RefreshActionTest, runsUntilBothHaveReturned)
{
    const QSignalSpy changes(m_action.get(), &RefreshAction::isRunningChanged);
    m_platform.tunnelManager->held = {text("loadAll")};
    m_action->trigger();
    EXPECT_TRUE(m_action->isRunning());
    ASSERT_TRUE(spinUntil([&] { return tunnelOperations().contains(text("loadAll")); }));
    settleEvents();
    EXPECT_FALSE(model().isLoading());
    EXPECT_TRUE(m_action->isRunning());
    m_platform.tunnelManager->release();
    EXPECT_TRUE(waitForTheEnd());
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(RefreshActionTest, asksForTheStatusEvenIfTheFetchFailed)
{
    m_answers[m_getAccount] = {500, {}};
    m_action->trigger();
    ASSERT_TRUE(waitForTheEnd());
    EXPECT_TRUE(model().errorMessage());
    EXPECT_TRUE(tunnelOperations().contains(text("loadAll")));
}

TEST_F(RefreshActionTest, startsNothingMoreWhileItRunsAndTheMenusDoNotOfferIt)
{
    m_action->setEnabled(false);
    m_action->trigger();
    m_action->trigger();
    EXPECT_TRUE(m_action->isRunning()) << "the screen has no rule for its button";
    EXPECT_EQ(requests().count(m_getAccount), 1);
    ASSERT_TRUE(waitForTheEnd());
    m_action->trigger();
    EXPECT_EQ(requests().count(m_getAccount), 2);
    ASSERT_TRUE(waitForTheEnd());
}

TEST_F(RefreshActionTest, startsASecondRunWhereTheMenusOfferIt)
{
    m_platform.tunnelManager->held = {text("loadAll")};
    m_action->trigger();
    ASSERT_TRUE(spinUntil([&] { return !model().isLoading(); }));
    const QSignalSpy changes(m_action.get(), &RefreshAction::isRunningChanged);
    m_action->trigger();
    EXPECT_EQ(requests().count(m_getAccount), 2);
    ASSERT_TRUE(spinUntil([&] { return !model().isLoading(); }));
    m_platform.tunnelManager->release();
    ASSERT_TRUE(waitForTheEnd());
    EXPECT_EQ(changes.count(), 1) << "it ran all the time";
}

TEST_F(RefreshActionTest, goesOnWithoutTheAction)
{
    m_answers.remove(m_getAccount);
    m_action->trigger();
    m_action.reset();
    m_platform.httpSession->waiting(m_getAccount).answer(200, sampleJSON<AccountResponse>());
    EXPECT_TRUE(spinUntil([&] { return tunnelOperations().contains(text("loadAll")); }));
    settleEvents();
    EXPECT_EQ(model().nodes().size(), 2);
}

TEST_F(RefreshActionTest, endsWithTheModel)
{
    m_answers.remove(m_getAccount);
    m_action->trigger();
    m_model.reset();
    m_platform.httpSession->waiting(m_getAccount).answer(200, sampleJSON<AccountResponse>());
    EXPECT_TRUE(waitForTheEnd());
    EXPECT_TRUE(tunnelOperations().isEmpty());
}

} // namespace tarnwik::test
