#include "ui/model/VPNAction.h"
#include "UIModelFixture.h"

namespace tarnwik::test {

namespace {

class VPNActionTest : public UIModelTest
{
protected:
    VPNAction &action()
    {
        if (!m_action)
            m_action = std::make_unique<VPNAction>(&model());
        return *m_action;
    }

    QStringList look() { return {action().title(), action().symbol(), action().shortcut()}; }

    QStringList tunnelOperations() const { return m_platform.tunnelManager->operations; }

    std::unique_ptr<VPNAction> m_action;
};

} // namespace

TEST_F(VPNActionTest, isConnectWhileThereIsNoTunnel)
{
    EXPECT_EQ(action().state(), VPNActionState::CanConnect);
    EXPECT_EQ(look(), QStringList({text("Connect"), text("power"), text("Ctrl+Shift+C")}));
}

TEST_F(VPNActionTest, isDisconnectWhileConnected)
{
    setStatus(VPNStatus::Connected);
    EXPECT_EQ(action().state(), VPNActionState::CanDisconnect);
    EXPECT_EQ(look(), QStringList({text("Disconnect"), text("xmark.circle"), text("Ctrl+Shift+D")}));
    EXPECT_TRUE(action().isEnabled());
}

TEST_F(VPNActionTest, isTheStatusWithoutAShortcutWhileTheTunnelChanges)
{
    refresh();
    action();
    for (const auto &[status, label] :
         {std::pair(VPNStatus::Connecting, "Connecting"), std::pair(VPNStatus::Reasserting, "Connecting"),
          std::pair(VPNStatus::Disconnecting, "Disconnecting")}) {
        setStatus(status);
        EXPECT_EQ(action().state(), VPNActionState::InTransition);
        EXPECT_EQ(look(), QStringList({text(label), QString(), QString()}));
        EXPECT_FALSE(action().isEnabled());
        EXPECT_FALSE(action().isEnabledOnScreen());
    }
}

TEST_F(VPNActionTest, needsANodeToConnect)
{
    EXPECT_FALSE(action().isEnabled());
    EXPECT_FALSE(action().isEnabledOnScreen());
    refresh();
    EXPECT_TRUE(action().isEnabled());
    EXPECT_TRUE(action().isEnabledOnScreen());
    m_answers[m_getNodes] = {200, nodes({})};
    refresh();
    EXPECT_FALSE(action().isEnabled());
    EXPECT_FALSE(action().isEnabledOnScreen());
}

TEST_F(VPNActionTest, isNotOfferedWhileTheModelIsLoading)
{
    refresh();
    EXPECT_TRUE(action().isEnabled());
    startLoading();
    EXPECT_FALSE(action().isEnabled());
    EXPECT_FALSE(action().isEnabledOnScreen());
    finishLoading();
    EXPECT_TRUE(action().isEnabled());
    setStatus(VPNStatus::Connected);
    startLoading();
    EXPECT_FALSE(action().isEnabled()) << "not even to disconnect";
    finishLoading();
}

TEST_F(VPNActionTest, isOfferedByTheMenusOnlyWithASessionAndByTheScreenWithout)
{
    signOut();
    // Nodes that are there without a session: those of a fetch that was under way when the session ended.
    run(model().refresh());
    EXPECT_FALSE(action().isEnabled());
    EXPECT_TRUE(action().isEnabledOnScreen());
    run(model().signIn(text("e"), text("p")));
    EXPECT_TRUE(action().isEnabled());
}

TEST_F(VPNActionTest, disconnectsWithoutASession)
{
    signOut();
    setStatus(VPNStatus::Connected);
    EXPECT_TRUE(action().isEnabled());
    action().trigger();
    EXPECT_TRUE(model().isLoading());
    ASSERT_TRUE(spinUntil([&] { return !model().isLoading(); }));
    EXPECT_EQ(tunnelOperations(), QStringList({text("stop")}));
    EXPECT_EQ(action().state(), VPNActionState::CanConnect);
}

TEST_F(VPNActionTest, connects)
{
    refresh();
    action().trigger();
    EXPECT_TRUE(model().isLoading());
    EXPECT_FALSE(action().isEnabled()) << "at once: it must not be done twice";
    ASSERT_TRUE(spinUntil([&] { return m_platform.httpSession->isWaiting(m_postDevice); }));
    m_platform.httpSession->waiting(m_postDevice).fail(URLError::TimedOut);
    ASSERT_TRUE(spinUntil([&] { return !model().isLoading(); }));
    EXPECT_TRUE(action().isEnabled());
}

TEST_F(VPNActionTest, doesNothingWhileItIsNotOffered)
{
    action().trigger();
    EXPECT_FALSE(model().errorMessage()) << "the model was asked, and had no node";
    refresh();
    startLoading();
    action().trigger();
    finishLoading();
    EXPECT_FALSE(requests().contains(m_postDevice));
    forgetRequests();
    setStatus(VPNStatus::Disconnecting);
    action().trigger();
    EXPECT_FALSE(model().isLoading());
    EXPECT_TRUE(requests().isEmpty());
    EXPECT_TRUE(tunnelOperations().isEmpty());
}

TEST_F(VPNActionTest, tellsOnceOfEachChangeAndOnlyWhenAllIsSet)
{
    refresh();
    int changes = 0;
    QObject::connect(&action(), &Action::changed, &action(), [&] {
        ++changes;
        EXPECT_EQ(action().state() == VPNActionState::CanDisconnect, action().title() == text("Disconnect"));
    });
    const QSignalSpy states(&action(), &VPNAction::stateChanged);
    setStatus(VPNStatus::Connected);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(states.count(), 1);
    refresh();
    EXPECT_EQ(changes, 1) << "nothing changed";
    EXPECT_EQ(states.count(), 1);
    setStatus(VPNStatus::Connecting);
    setStatus(VPNStatus::Reasserting);
    EXPECT_EQ(changes, 2);
}

TEST_F(VPNActionTest, leavesAConnectRunningWhenItGoes)
{
    setStatus(VPNStatus::Connected);
    m_platform.tunnelManager->held = {text("stop")};
    action().trigger();
    m_action.reset();
    settleEvents();
    EXPECT_TRUE(model().isLoading());
    m_platform.tunnelManager->release();
    EXPECT_TRUE(spinUntil([&] { return model().vpnController()->status() == VPNStatus::Disconnected; }));
}

} // namespace tarnwik::test
