#include "ui/model/AppearanceTasks.h"
#include "UIModelFixture.h"

namespace tarnwik::test {

namespace {

using namespace std::chrono_literals;

class AppearanceTasksTest : public UIModelTest
{
protected:
    AppearanceTasks &tasks()
    {
        if (!m_tasks)
            m_tasks = std::make_unique<AppearanceTasks>(&model(), &m_store);
        return *m_tasks;
    }

    FakeAppStore &appStore() { return *m_platform.appStore; }
    QStringList storeOperations() { return appStore().operations; }
    QStringList tunnelOperations() const { return m_platform.tunnelManager->operations; }
    bool hasUsageLoop() const { return m_platform.clock->pendingCount() == 1; }

    /// Begins a task and lets it run as far as it comes.
    int begin(AppearanceTasks::Kind kind)
    {
        const int handle = tasks().begin(kind);
        settleEvents();
        settleEvents();
        return handle;
    }

    const QString m_loadProducts = text("products tarnwik.sub.monthly tarnwik.sub.yearly");
    AppStoreSubscriptionStore m_store;
    std::unique_ptr<AppearanceTasks> m_tasks;
};

} // namespace

TEST_F(AppearanceTasksTest, bringTheStoreUpToDateForAWindowAndForTheAccountScreen)
{
    appStore().offered = {{text("tarnwik.sub.monthly"), text("€15")}};
    begin(AppearanceTasks::Environment);
    QStringList begun = storeOperations();
    EXPECT_EQ(begun.takeLast(), text("entitlements")) << "last of all";
    begun.sort();
    EXPECT_EQ(begun, QStringList({m_loadProducts, text("updates")}));
    EXPECT_EQ(appStore().listenerCount, 1);
    EXPECT_EQ(tasks().runningCount(), 0);

    appStore().operations.clear();
    begin(AppearanceTasks::AccountScreen);
    EXPECT_EQ(storeOperations(), QStringList({text("entitlements")})) << "the rest is done once";
    EXPECT_EQ(appStore().listenerCount, 1);
}

TEST_F(AppearanceTasksTest, readEntitlementsOnlyAfterTheProducts)
{
    appStore().held = {text("products")};
    begin(AppearanceTasks::Environment);
    EXPECT_FALSE(storeOperations().contains(text("entitlements")));
    EXPECT_EQ(tasks().runningCount(), 1);
    appStore().release();
    EXPECT_TRUE(spinUntil([&] { return tasks().runningCount() == 0; }));
    EXPECT_TRUE(storeOperations().contains(text("entitlements")));
}

TEST_F(AppearanceTasksTest, readEntitlementsEvenIfThereAreNoProducts)
{
    appStore().failures.insert(text("products"), text("No connection to the store."));
    begin(AppearanceTasks::AccountScreen);
    EXPECT_TRUE(storeOperations().contains(text("entitlements")));
}

TEST_F(AppearanceTasksTest, stopBringingTheStoreUpToDateWithTheScreen)
{
    appStore().held = {text("products")};
    const int handle = begin(AppearanceTasks::AccountScreen);
    tasks().end(handle);
    settleEvents();
    EXPECT_FALSE(m_store.isLoadingProducts());
    EXPECT_FALSE(storeOperations().contains(text("entitlements")));
    EXPECT_EQ(tasks().runningCount(), 0);
    EXPECT_EQ(appStore().listenerCount, 1) << "the listener stays as long as the store";
}

TEST_F(AppearanceTasksTest, refreshForTheDashboardAndThenStartTheUsageLoop)
{
    m_answers.remove(m_getNodes);
    begin(AppearanceTasks::Dashboard);
    EXPECT_TRUE(model().isLoading());
    EXPECT_FALSE(hasUsageLoop()) << "only after the refresh";
    m_platform.httpSession->waiting(m_getNodes).answer(200, nodes({1}));
    EXPECT_TRUE(spinUntil([&] { return hasUsageLoop(); }));
    EXPECT_TRUE(tunnelOperations().isEmpty()) << "the Connect screen asks for the status";
}

TEST_F(AppearanceTasksTest, startTheUsageLoopEvenIfTheRefreshFailed)
{
    m_answers[m_getAccount] = {500, {}};
    begin(AppearanceTasks::Dashboard);
    EXPECT_TRUE(model().errorMessage());
    EXPECT_TRUE(hasUsageLoop());
}

TEST_F(AppearanceTasksTest, stopTheRefreshWithTheDashboardAndShowNoError)
{
    m_answers.remove(m_getAccount);
    const int handle = begin(AppearanceTasks::Dashboard);
    EXPECT_TRUE(model().isLoading());
    tasks().end(handle);
    settleEvents();
    EXPECT_TRUE(m_platform.httpSession->exchanges.back()->token.stop_requested());
    EXPECT_FALSE(model().isLoading());
    EXPECT_FALSE(model().errorMessage());
    EXPECT_TRUE(hasUsageLoop()) << "somebody is signed in still";
}

TEST_F(AppearanceTasksTest, takeNoStepBeforeTheEventLoopComesRound)
{
    const int handle = tasks().begin(AppearanceTasks::Dashboard);
    EXPECT_FALSE(model().isLoading());
    tasks().end(handle);
    settleEvents();
    EXPECT_TRUE(requests().isEmpty()) << "the screen went at once";
}

TEST_F(AppearanceTasksTest, refreshADashboardThatASignInBroughtUpWithTheNewSession)
{
    signOut();
    QObject::connect(&model(), &AppModel::authTokenChanged, &tasks(),
                     [this] { tasks().begin(AppearanceTasks::Dashboard); });
    run(model().signIn(text("e"), text("p")));
    ASSERT_TRUE(spinUntil([&] { return tasks().runningCount() == 0; }));
    EXPECT_EQ(requests().count(m_getAccount), 2) << "the sign-in's own, and the dashboard's";
    const std::pair<QByteArray, QByteArray> newSession("Authorization", "Bearer secret-token");
    for (const auto &exchange : m_platform.httpSession->exchanges) {
        if (exchange->summary() == m_postSession)
            continue;
        EXPECT_TRUE(exchange->request.headers.contains(newSession));
    }
    EXPECT_TRUE(hasUsageLoop()) << "one, though both start it";
}

TEST_F(AppearanceTasksTest, askForTheStatusForTheConnectScreen)
{
    m_platform.tunnelManager->addSaved(text("Tarnwik"))->currentStatus = VPNStatus::Connected;
    begin(AppearanceTasks::ConnectScreen);
    EXPECT_EQ(model().vpnController()->status(), VPNStatus::Connected);
    EXPECT_TRUE(requests().isEmpty());
    EXPECT_FALSE(hasUsageLoop());
}

TEST_F(AppearanceTasksTest, stopAskingForTheStatusWithTheConnectScreen)
{
    m_platform.tunnelManager->held = {text("loadAll")};
    m_platform.tunnelManager->addSaved(text("Tarnwik"))->currentStatus = VPNStatus::Connected;
    const int handle = begin(AppearanceTasks::ConnectScreen);
    tasks().end(handle);
    settleEvents();
    m_platform.tunnelManager->release();
    settleEvents();
    EXPECT_EQ(model().vpnController()->status(), VPNStatus::Invalid);
}

TEST_F(AppearanceTasksTest, askForTheStatusForTheMenuAndThenStartTheUsageLoop)
{
    m_platform.tunnelManager->held = {text("loadAll")};
    begin(AppearanceTasks::MenuBar);
    EXPECT_FALSE(hasUsageLoop()) << "only after the status";
    m_platform.tunnelManager->release();
    EXPECT_TRUE(spinUntil([&] { return hasUsageLoop(); }));
    begin(AppearanceTasks::MenuBar);
    EXPECT_TRUE(hasUsageLoop()) << "one, however often the menu is opened";
    EXPECT_TRUE(requests().isEmpty());
}

TEST_F(AppearanceTasksTest, startNoUsageLoopForTheMenuWithoutASession)
{
    signOut();
    begin(AppearanceTasks::MenuBar);
    EXPECT_FALSE(hasUsageLoop());
}

TEST_F(AppearanceTasksTest, finishForTheMenuThoughItIsGone)
{
    m_platform.tunnelManager->held = {text("loadAll")};
    tasks().end(begin(AppearanceTasks::MenuBar));
    m_platform.tunnelManager->release();
    EXPECT_TRUE(spinUntil([&] { return hasUsageLoop(); }));
}

TEST_F(AppearanceTasksTest, keepScreensOfOneKindApart)
{
    m_answers.remove(m_getAccount);
    const int first = begin(AppearanceTasks::Dashboard);
    const int second = begin(AppearanceTasks::Dashboard);
    EXPECT_NE(first, second);
    EXPECT_EQ(requests().count(m_getAccount), 2);
    tasks().end(first);
    settleEvents();
    EXPECT_TRUE(m_platform.httpSession->exchanges[0]->token.stop_requested());
    EXPECT_FALSE(m_platform.httpSession->exchanges[1]->token.stop_requested());
    EXPECT_EQ(tasks().runningCount(), 1);
}

TEST_F(AppearanceTasksTest, ignoreTheEndOfWhatHasEnded)
{
    const int handle = begin(AppearanceTasks::Dashboard);
    tasks().end(handle);
    tasks().end(handle);
    tasks().end(0);
    tasks().end(-7);
    EXPECT_TRUE(hasUsageLoop()) << "the loop is the model's";
}

TEST_F(AppearanceTasksTest, stopAtTheirOwnersEnd)
{
    m_answers.remove(m_getAccount);
    begin(AppearanceTasks::Dashboard);
    m_tasks.reset();
    settleEvents();
    EXPECT_TRUE(m_platform.httpSession->exchanges.back()->token.stop_requested());
    EXPECT_FALSE(model().isLoading());
}

TEST_F(AppearanceTasksTest, endWithTheModel)
{
    m_answers.remove(m_getAccount);
    begin(AppearanceTasks::Dashboard);
    tasks().begin(AppearanceTasks::ConnectScreen);
    m_model.reset();
    m_platform.httpSession->waiting(m_getAccount).answer(200, sampleJSON<AccountResponse>());
    EXPECT_TRUE(spinUntil([&] { return m_tasks->runningCount() == 0; }));
    EXPECT_TRUE(tunnelOperations().isEmpty());
}

} // namespace tarnwik::test
