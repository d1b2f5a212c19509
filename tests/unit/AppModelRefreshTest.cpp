#include "support/ModelFixture.h"

#include <QSignalSpy>

namespace tarnwik::test {

namespace {

class Refresh : public ModelTest
{
protected:
    Refresh() { storeSession(); }

    FakeHTTPSession &server() { return *m_platform.httpSession; }
};

QByteArray accountWithUsage(int bytes)
{
    return "{\"account\":" + QByteArray(accountJSON).replace("5000000000", QByteArray::number(bytes)) + "}";
}

} // namespace

TEST_F(Refresh, fetchesTheAccountAndThenNodesAndDevicesAtOnce)
{
    AppModel model;
    m_answers.clear();
    Running running(model.refresh());
    EXPECT_EQ(requests(), QStringList({m_getAccount}));
    server().waiting(m_getAccount).answer(200, sampleJSON<AccountResponse>());
    ASSERT_TRUE(spinUntil([&] { return server().isWaiting(m_getDevices); }));
    EXPECT_TRUE(server().isWaiting(m_getNodes));
    EXPECT_TRUE(model.account());
    EXPECT_FALSE(model.isLoading());

    // The devices are there first; they are published behind the nodes all the same.
    server().waiting(m_getDevices).answer(200, devices({device(1, "macos")}));
    settleEvents();
    EXPECT_TRUE(model.devices().isEmpty());
    server().waiting(m_getNodes).answer(200, nodes({5, 9}));
    running.result();
    EXPECT_EQ(model.nodes().size(), 2);
    EXPECT_EQ(model.devices().size(), 1);
}

TEST_F(Refresh, choosesTheFirstNodeWhenNoneIsChosen)
{
    AppModel model;
    run(model.refresh());
    EXPECT_EQ(model.selectedNodeID(), 5);
    EXPECT_EQ(model.selectedNode()->id, 5);
}

TEST_F(Refresh, keepsAChoiceThatHasGoneAndFallsBackToTheFirstNode)
{
    AppModel model;
    model.setSelectedNodeID(3);
    run(model.refresh());
    EXPECT_EQ(model.selectedNodeID(), 3);
    EXPECT_EQ(model.selectedNode()->id, 5);
    model.setSelectedNodeID(9);
    EXPECT_EQ(model.selectedNode()->id, 9);
}

TEST_F(Refresh, leavesNothingChosenWithoutNodes)
{
    m_answers[m_getNodes] = {200, nodes({})};
    AppModel model;
    run(model.refresh());
    EXPECT_EQ(model.selectedNodeID(), std::nullopt);
    EXPECT_EQ(model.selectedNode(), std::nullopt);
}

TEST_F(Refresh, changesNothingWhenTheAccountFails)
{
    AppModel model;
    m_answers[m_getAccount] = {401, R"({"error":"session_expired"})"};
    EXPECT_THROW(run(model.refresh()), APIErrorEnvelope);
    EXPECT_EQ(requests(), QStringList({m_getAccount}));
    EXPECT_EQ(model.account(), std::nullopt);
    EXPECT_TRUE(model.isSignedIn()) << "a rejected token does not sign anybody out";
}

TEST_F(Refresh, keepsWhatWasThereBehindTheRequestThatFails)
{
    AppModel model;
    m_answers[m_getDevices] = {200, devices({device(1, "macos")})};
    run(model.refresh());
    const auto nodesBefore = model.nodes();
    const auto devicesBefore = model.devices();

    m_answers[m_getAccount] = {200, accountWithUsage(111)};
    m_answers[m_getNodes] = {503, {}};
    m_answers[m_getDevices] = {200, devices({})};
    EXPECT_THROW(run(model.refresh()), TarnwikClientError);
    EXPECT_EQ(model.account()->usedBytes, 111);
    EXPECT_EQ(model.nodes(), nodesBefore);
    EXPECT_EQ(model.devices(), devicesBefore);

    m_answers[m_getNodes] = {200, nodes({7})};
    m_answers[m_getDevices] = {500, {}};
    EXPECT_THROW(run(model.refresh()), TarnwikClientError);
    EXPECT_EQ(model.nodes().first().id, 7);
    EXPECT_EQ(model.devices(), devicesBefore);

    const auto accountBefore = model.account();
    m_answers[m_getAccount] = {500, {}};
    EXPECT_THROW(run(model.refresh()), TarnwikClientError);
    EXPECT_EQ(model.account(), accountBefore);
    EXPECT_EQ(model.nodes().first().id, 7);
    EXPECT_EQ(model.devices(), devicesBefore);
}

TEST_F(Refresh, awaitsTheDevicesThatItStopped)
{
    AppModel model;
    m_answers.remove(m_getDevices);
    m_answers[m_getNodes] = {503, {}};
    server().endsWhenStopped = false;
    Running running(model.refresh());
    ASSERT_TRUE(
        spinUntil([&] { return server().exchanges.size() == 3 && server().exchanges.back()->token.stop_requested(); }));
    settleEvents();
    EXPECT_FALSE(running.hasEnded());
    server().exchanges.back()->fail(URLError::Cancelled);
    EXPECT_THROW(running.result(), TarnwikClientError);
}

TEST_F(Refresh, stopsAndAwaitsTheDevicesWhenTheNodesFail)
{
    AppModel model;
    m_answers.remove(m_getDevices);
    m_answers[m_getNodes] = {503, {}};
    Running running(model.refresh());
    ASSERT_TRUE(spinUntil([&] { return running.hasEnded(); }));
    EXPECT_THROW(running.result(), TarnwikClientError);
    EXPECT_TRUE(server().exchanges.back()->token.stop_requested());
    EXPECT_TRUE(model.account());
    EXPECT_TRUE(model.nodes().isEmpty());
    EXPECT_EQ(model.selectedNodeID(), std::nullopt);
}

TEST_F(Refresh, tellsTheNodesErrorWhenBothFail)
{
    AppModel model;
    m_answers[m_getDevices] = {500, {}};
    m_answers.remove(m_getNodes);
    Running running(model.refreshFromUI());
    ASSERT_TRUE(spinUntil([&] { return server().isWaiting(m_getNodes); }));
    settleEvents();
    EXPECT_FALSE(running.hasEnded()) << "a failure of the devices stopped the nodes";
    server().waiting(m_getNodes).answer(503);
    running.result();
    EXPECT_EQ(model.errorMessage(), text("Server returned HTTP 503."));
}

TEST_F(Refresh, keepsAccountAndNodesWhenTheDevicesFail)
{
    AppModel model;
    m_answers[m_getDevices] = {500, {}};
    EXPECT_THROW(run(model.refresh()), TarnwikClientError);
    EXPECT_TRUE(model.account());
    EXPECT_EQ(model.nodes().size(), 2);
    EXPECT_TRUE(model.devices().isEmpty());
    EXPECT_EQ(model.selectedNodeID(), std::nullopt) << "the choice comes last";
}

TEST_F(Refresh, stopsBothRequestsWhenItIsStopped)
{
    AppModel model;
    m_answers.remove(m_getNodes);
    m_answers.remove(m_getDevices);
    std::stop_source stop;
    Running running(model.refreshFromUI(stop.get_token()));
    ASSERT_TRUE(spinUntil([&] { return server().isWaiting(m_getDevices); }));
    stop.request_stop();
    running.result();
    EXPECT_TRUE(server().exchanges[1]->token.stop_requested());
    EXPECT_TRUE(server().exchanges[2]->token.stop_requested());
    EXPECT_EQ(model.errorMessage(), std::nullopt);
    EXPECT_FALSE(model.isLoading());
}

TEST_F(Refresh, showsOnTheScreenThatItRunsAndFails)
{
    AppModel model;
    QSignalSpy loading(&model, &AppModel::isLoadingChanged);
    m_answers[m_getAccount] = {401, R"({"error":"session_expired"})"};
    run(model.refreshFromUI());
    EXPECT_EQ(loading.count(), 2);
    EXPECT_EQ(model.errorMessage(), text("session expired"));
    m_answers[m_getAccount] = {200, sampleJSON<AccountResponse>()};
    run(model.refreshFromUI());
    EXPECT_EQ(model.errorMessage(), std::nullopt);
}

TEST_F(Refresh, letsTheFirstOfTwoOverlappingOperationsEndTheLoading)
{
    AppModel model;
    m_answers.remove(m_getAccount);
    Running first(model.refreshFromUI());
    Running second(model.refreshFromUI());
    EXPECT_TRUE(model.isLoading());
    server().waiting(m_getAccount).answer(500);
    first.result();
    EXPECT_FALSE(model.isLoading()) << "nothing guards against overlapping operations";
    EXPECT_EQ(model.errorMessage(), text("Server returned HTTP 500."));
    server().waiting(m_getAccount).answer(200, sampleJSON<AccountResponse>());
    second.result();
    EXPECT_EQ(model.errorMessage(), text("Server returned HTTP 500.")) << "success clears no message";
}

TEST_F(Refresh, letsTheLastWriteWin)
{
    AppModel model;
    m_answers.remove(m_getAccount);
    Running refresh(model.refresh());
    Running background(model.refreshAccount());
    server().exchanges[1]->answer(200, accountWithUsage(222));
    background.result();
    EXPECT_EQ(model.account()->usedBytes, 222);
    server().exchanges[0]->answer(200, accountWithUsage(111));
    refresh.result();
    EXPECT_EQ(model.account()->usedBytes, 111);
}

TEST_F(Refresh, writesWhatItGotAfterASignOutToo)
{
    AppModel model;
    m_answers.remove(m_getAccount);
    Running fetch(model.refreshAccount());
    run(model.signOut());
    server().waiting(m_getAccount).answer(200, sampleJSON<AccountResponse>());
    fetch.result();
    EXPECT_TRUE(model.account());
    EXPECT_FALSE(model.isSignedIn());
}

TEST_F(Refresh, usesTheClientOfItsStart)
{
    AppModel model;
    m_answers.remove(m_getAccount);
    Running refresh(model.refresh());
    run(model.signOut());
    model.setServerURLString(text("https://other.example"));
    Running signIn(model.signIn(text("e"), text("p")));
    ASSERT_TRUE(spinUntil([&] { return server().exchanges.size() == 4; }));
    EXPECT_EQ(server().exchanges[0]->request.url.absoluteString(),
              text("https://stored.example/api/customer/v1/session"));
    server().exchanges[0]->answer(200, sampleJSON<AccountResponse>());
    server().exchanges[3]->answer(200, sampleJSON<AccountResponse>());
    refresh.result();
    signIn.result();
    // The requests that started after the change went to the new server.
    EXPECT_EQ(server().exchanges[4]->request.url.absoluteString(), text("https://other.example/api/customer/v1/nodes"));
}

TEST_F(Refresh, endsQuietlyWhenTheModelGoes)
{
    auto model = std::make_unique<AppModel>();
    m_answers.remove(m_getNodes);
    Running running(model->refreshFromUI());
    ASSERT_TRUE(spinUntil([&] { return server().isWaiting(m_getNodes); }));
    model.reset();
    server().waiting(m_getNodes).answer(200, nodes({1}));
    running.result();
}

TEST_F(Refresh, signOutInItsMiddleEndsSignedOut)
{
    AppModel model;
    m_answers.remove(m_getNodes);
    std::stop_source screen;
    Running refresh(model.refreshFromUI(screen.get_token()));
    ASSERT_TRUE(spinUntil([&] { return server().isWaiting(m_getNodes); }));
    Running signOut(model.signOut());
    signOut.result();
    EXPECT_FALSE(model.isSignedIn());
    // The dashboard goes with the session, and takes its start-up task along.
    screen.request_stop();
    refresh.result();
    EXPECT_EQ(model.errorMessage(), std::nullopt);
    EXPECT_FALSE(model.isLoading());
    EXPECT_TRUE(model.nodes().isEmpty());
}

TEST_F(Refresh, takesTheAccountOfASyncedTransaction)
{
    AppModel model;
    const QString sync = text("POST /api/customer/v1/subscription/apple/transactions");
    m_answers[sync] = {200, sampleJSON<SubscriptionResponse>()};
    run(model.syncAppleTransaction(text("header.payload.signature")));
    EXPECT_EQ(*server().exchanges.back()->request.body, R"({"signed_transaction_jws":"header.payload.signature"})");
    EXPECT_TRUE(model.account());
    EXPECT_FALSE(model.isLoading());
}

TEST_F(Refresh, leavesTheAccountWhenATransactionIsRejected)
{
    AppModel model;
    run(model.refreshAccount());
    const auto before = model.account();
    m_answers[text("POST /api/customer/v1/subscription/apple/transactions")] = {422, R"({"error":"bad_transaction"})"};
    EXPECT_THROW(run(model.syncAppleTransaction(text("x"))), APIErrorEnvelope);
    EXPECT_EQ(model.account(), before);
    EXPECT_EQ(model.errorMessage(), std::nullopt);
    EXPECT_EQ(requests().size(), 2) << "it was retried";
}

TEST_F(Refresh, leavesTheAccountWhenItsFetchFails)
{
    AppModel model;
    run(model.refreshAccount());
    m_answers[m_getAccount] = {500, {}};
    EXPECT_THROW(run(model.refreshAccount()), TarnwikClientError);
    EXPECT_TRUE(model.account());
    EXPECT_EQ(model.errorMessage(), std::nullopt);
}

} // namespace tarnwik::test
