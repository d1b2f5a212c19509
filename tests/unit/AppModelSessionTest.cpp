#include "support/ModelFixture.h"

#include <QSignalSpy>

namespace tarnwik::test {

using Start = ModelTest;
using SignIn = ModelTest;
using SignOut = ModelTest;

TEST_F(Start, hasTheDefaultServerAndNoSession)
{
    const AppModel model;
    EXPECT_EQ(model.serverURLString(), text("https://api.tarnwik.example"));
    EXPECT_EQ(model.authToken(), std::nullopt);
    EXPECT_FALSE(model.isSignedIn());
    EXPECT_EQ(model.account(), std::nullopt);
    EXPECT_TRUE(model.nodes().isEmpty());
    EXPECT_TRUE(model.devices().isEmpty());
    EXPECT_EQ(model.selectedNodeID(), std::nullopt);
    EXPECT_EQ(model.selectedNode(), std::nullopt);
    EXPECT_EQ(model.selectedSection(), AppSection(AppSection::connect));
    EXPECT_FALSE(model.isLoading());
    EXPECT_EQ(model.errorMessage(), std::nullopt);
    settleEvents();
    EXPECT_TRUE(requests().isEmpty());
    EXPECT_EQ(m_platform.clock->pendingCount(), 0);
    EXPECT_TRUE(m_platform.tunnelManager->operations.isEmpty());
}

TEST_F(Start, restoresServerAndTokenWithoutARequest)
{
    storeSession();
    AppModel model;
    EXPECT_EQ(model.serverURLString(), text("https://stored.example"));
    EXPECT_EQ(model.authToken(), text("stored-token"));
    EXPECT_TRUE(model.isSignedIn());
    settleEvents();
    EXPECT_TRUE(requests().isEmpty());
    run(model.refresh());
    EXPECT_EQ(lastURL(), text("https://stored.example/api/customer/v1/devices"));
    EXPECT_EQ(lastAuthorization(), "Bearer stored-token");
}

TEST_F(Start, countsAnEmptyTokenAsASession)
{
    storeSession("https://stored.example", "");
    EXPECT_TRUE(AppModel().isSignedIn());
}

TEST_F(Start, keepsTheDefaultClientWhenTheStoredServerIsNoURL)
{
    storeSession("https://exa mple.com");
    AppModel model;
    EXPECT_TRUE(model.isSignedIn());
    EXPECT_EQ(model.serverURLString(), text("https://exa mple.com"));
    run(model.refreshAccount());
    EXPECT_EQ(lastURL(), text("https://api.tarnwik.example/api/customer/v1/session"));
    EXPECT_EQ(lastAuthorization(), "none");
}

TEST_F(Start, takesTheDefaultServerFromTheDictionary)
{
    m_platform.informationDictionary->objects.insert(text("TarnwikDefaultServerURL"), text(" https://d.example\n"));
    EXPECT_EQ(AppModel().serverURLString(), text("https://d.example"));
}

TEST_F(Start, usesWhatItIsGiven)
{
    const auto otherSession = std::make_shared<FakeHTTPSession>();
    auto controller = std::make_unique<VPNController>(text("org.other.tunnel"), text("OTHER.group"));
    VPNController *given = controller.get();
    AppModel model(TarnwikAPIClient(*URL::fromString(text("https://given.example")), {}, otherSession),
                   KeychainStore(text("Other"), text("OTHER.group")), std::move(controller));
    EXPECT_EQ(model.vpnController(), given);
    Running refresh(model.refreshAccount());
    ASSERT_EQ(otherSession->exchanges.size(), 1U);
    // The server comes from the defaults, the HTTP session from the client that was given.
    EXPECT_EQ(otherSession->exchanges[0]->request.url.absoluteString(),
              text("https://api.tarnwik.example/api/customer/v1/session"));
    otherSession->exchanges[0]->answer(200, sampleJSON<AccountResponse>());
    refresh.result();
}

TEST_F(Start, makesAControllerOfTheDeploymentsSettings)
{
    m_platform.informationDictionary->objects = {{text("TarnwikTunnelBundleIdentifier"), text("org.example.tunnel")},
                                                 {text("TarnwikKeychainAccessGroup"), text("TEAM.group")}};
    const AppModel model;
    run(model.vpnController()->connect(decode<TunnelProfile>(tunnelProfileJSON), text("key")));
    const auto &protocol = m_platform.tunnelManager->created.front()->protocolConfiguration;
    EXPECT_EQ(protocol->providerBundleIdentifier, text("org.example.tunnel"));
    EXPECT_EQ(protocol->providerConfiguration[text("keychain_access_group")], text("TEAM.group"));
}

TEST_F(SignIn, takesSessionThenDefaultsThenRefreshesThenLoops)
{
    AppModel model;
    model.setServerURLString(text("https://typed.example/"));
    run(model.signIn(text(" ada@example.com "), text(" pass word ")));
    EXPECT_EQ(requests(), QStringList({m_postSession, m_getAccount, m_getNodes, m_getDevices}));
    const auto &request = m_platform.httpSession->exchanges.front()->request;
    EXPECT_EQ(request.url.absoluteString(), text("https://typed.example/api/customer/v1/session"));
    EXPECT_EQ(
        *request.body,
        R"({"device_name":"macOS client","email":" ada@example.com ","password":" pass word ","platform":"macos"})");
    EXPECT_EQ(model.authToken(), text("secret-token"));
    EXPECT_EQ(model.account(), decode<Account>(accountJSON));
    EXPECT_EQ(m_platform.userDefaults->strings[text("TarnwikServerURL")], text("https://typed.example/"));
    EXPECT_EQ(m_platform.userDefaults->strings[text("TarnwikAuthToken")], text("secret-token"));
    EXPECT_EQ(lastAuthorization(), "Bearer secret-token");
    EXPECT_EQ(model.selectedNodeID(), 5);
    EXPECT_FALSE(model.isLoading());
    EXPECT_EQ(model.errorMessage(), std::nullopt);
    EXPECT_EQ(m_platform.clock->nextDelay(), std::chrono::seconds(20));
}

TEST_F(SignIn, storesTheServerAsItIsThenAndKeepsToTheOneItSignedInAt)
{
    AppModel model;
    model.setServerURLString(text("https://first.example"));
    m_answers.remove(m_postSession);
    Running running(model.signIn(text("e"), text("p")));
    model.setServerURLString(text("https://edited.example"));
    m_platform.httpSession->waiting(m_postSession).answer(200, sampleJSON<SessionResponse>());
    running.result();
    EXPECT_EQ(m_platform.userDefaults->writes,
              QStringList({text("set TarnwikServerURL"), text("set TarnwikAuthToken")}));
    EXPECT_EQ(m_platform.userDefaults->strings[text("TarnwikServerURL")], text("https://edited.example"));
    EXPECT_EQ(lastURL(), text("https://first.example/api/customer/v1/devices"));
}

TEST_F(SignIn, sendsNoToken)
{
    storeSession();
    AppModel model;
    Running running(model.signIn(text("e"), text("p")));
    for (const auto &[name, value] : m_platform.httpSession->exchanges.front()->request.headers)
        EXPECT_NE(name, "Authorization");
    running.result();
}

TEST_F(SignIn, failsOnUnparsableServerURL)
{
    for (const char *server :
         {"", " https://x", "https://x ", "https://exa mple.com", "http://[::1", "https://h:port/"}) {
        AppModel model;
        model.setServerURLString(text(server));
        run(model.signIn(text("e"), text("p")));
        EXPECT_EQ(model.errorMessage(), text("Enter a valid Tarnwik server URL.")) << server;
        EXPECT_FALSE(model.isSignedIn());
        EXPECT_FALSE(model.isLoading());
    }
    EXPECT_TRUE(requests().isEmpty());
    EXPECT_TRUE(m_platform.userDefaults->writes.isEmpty());
}

TEST_F(SignIn, showsTheServersErrorWithBlanksForUnderscores)
{
    const QList<std::pair<const char *, const char *>> shown{
        {"a_b_c", "a b c"}, {"Forbidden", "Forbidden"}, {"_x__y_", " x  y "}, {"", ""}};
    for (const auto &[code, message] : shown) {
        AppModel model;
        m_answers[m_postSession] = {401, QByteArray(R"({"error":")") + code + "\"}"};
        run(model.signIn(text("e"), text("p")));
        EXPECT_EQ(model.errorMessage(), text(message));
        EXPECT_FALSE(model.isLoading());
        EXPECT_FALSE(model.isSignedIn());
    }
    EXPECT_TRUE(m_platform.userDefaults->writes.isEmpty());
}

TEST_F(SignIn, showsTransportAndDecodingErrorsInThePlatformsWords)
{
    AppModel model;
    m_answers[m_postSession] = {200, "<html>"};
    run(model.signIn(text("e"), text("p")));
    EXPECT_EQ(model.errorMessage(), text("The data couldn’t be read because it isn’t in the correct format."));
    m_answers.remove(m_postSession);
    Running running(model.signIn(text("e"), text("p")));
    EXPECT_EQ(model.errorMessage(), std::nullopt) << "cleared at the start";
    m_platform.httpSession->waiting(m_postSession).fail(URLError::CannotConnectToHost);
    running.result();
    EXPECT_EQ(model.errorMessage(), text("Could not connect to the server."));
}

TEST_F(SignIn, staysSignedInWhenTheRefreshFails)
{
    m_answers[m_getAccount] = {500, {}};
    AppModel model;
    run(model.signIn(text("e"), text("p")));
    EXPECT_TRUE(model.isSignedIn());
    EXPECT_EQ(model.account(), decode<Account>(accountJSON));
    EXPECT_EQ(model.errorMessage(), text("Server returned HTTP 500."));
    EXPECT_TRUE(m_platform.userDefaults->strings.contains(text("TarnwikAuthToken")));
    EXPECT_EQ(m_platform.clock->pendingCount(), 0) << "the loop was started";
}

TEST_F(SignIn, endsInMemoryWhenTheDefaultsCannotBeWritten)
{
    m_platform.userDefaults->isWritable = false;
    AppModel model;
    run(model.signIn(text("e"), text("p")));
    EXPECT_TRUE(model.isSignedIn());
    EXPECT_EQ(model.errorMessage(), text("The settings cannot be written."));
    EXPECT_EQ(requests(), QStringList({m_postSession}));
    EXPECT_EQ(m_platform.clock->pendingCount(), 0);
}

TEST_F(SignIn, leavesTheMessageAloneWhenStopped)
{
    AppModel model;
    std::stop_source stop;
    m_answers.remove(m_postSession);
    Running running(model.signIn(text("e"), text("p"), stop.get_token()));
    EXPECT_TRUE(model.isLoading());
    stop.request_stop();
    running.result();
    EXPECT_EQ(model.errorMessage(), std::nullopt);
    EXPECT_FALSE(model.isLoading());
    EXPECT_FALSE(model.isSignedIn());
}

TEST_F(SignIn, notifiesOnceForEachChange)
{
    AppModel model;
    QSignalSpy loading(&model, &AppModel::isLoadingChanged);
    QSignalSpy tokens(&model, &AppModel::authTokenChanged);
    QSignalSpy accounts(&model, &AppModel::accountChanged);
    QSignalSpy messages(&model, &AppModel::errorMessageChanged);
    QSignalSpy nodeLists(&model, &AppModel::nodesChanged);
    QSignalSpy deviceLists(&model, &AppModel::devicesChanged);
    QSignalSpy choices(&model, &AppModel::selectedNodeIDChanged);
    run(model.signIn(text("e"), text("p")));
    EXPECT_EQ(loading.count(), 2);
    EXPECT_EQ(tokens.count(), 1);
    EXPECT_EQ(accounts.count(), 1) << "the account was refreshed with an equal one";
    EXPECT_EQ(messages.count(), 0);
    EXPECT_EQ(nodeLists.count(), 1);
    EXPECT_EQ(deviceLists.count(), 0) << "an empty list replaced an empty list";
    EXPECT_EQ(choices.count(), 1);
}

TEST_F(SignOut, clearsTheSessionAndKeepsServerAndSection)
{
    AppModel model;
    model.setServerURLString(text("https://typed.example"));
    run(model.signIn(text("e"), text("p")));
    model.setSelectedSection(AppSection::account);
    forgetRequests();
    run(model.signOut());
    EXPECT_EQ(requests(), QStringList({m_deleteSession}));
    EXPECT_EQ(lastAuthorization(), "Bearer secret-token");
    EXPECT_FALSE(model.isSignedIn());
    EXPECT_EQ(model.account(), std::nullopt);
    EXPECT_TRUE(model.nodes().isEmpty());
    EXPECT_TRUE(model.devices().isEmpty());
    EXPECT_EQ(model.selectedNodeID(), std::nullopt);
    EXPECT_EQ(model.selectedSection(), AppSection(AppSection::account));
    EXPECT_EQ(model.serverURLString(), text("https://typed.example"));
    EXPECT_EQ(m_platform.userDefaults->strings,
              (QMap<QString, QString>{{text("TarnwikServerURL"), text("https://typed.example")}}));
    EXPECT_TRUE(m_platform.tunnelManager->operations.contains(text("stop")));
    EXPECT_EQ(m_platform.clock->pendingCount(), 0);
    EXPECT_EQ(model.errorMessage(), std::nullopt);
    EXPECT_FALSE(model.isLoading());
}

TEST_F(SignOut, endsSignedOutWhateverServerAndTunnelSay)
{
    storeSession();
    AppModel model;
    m_answers.remove(m_deleteSession);
    m_platform.tunnelManager->failures.insert(text("loadAll"), text("NetworkManager is not running."));
    Running running(model.signOut());
    EXPECT_TRUE(model.isSignedIn()) << "the server is told first";
    m_platform.httpSession->waiting(m_deleteSession).fail(URLError::CannotConnectToHost);
    running.result();
    EXPECT_FALSE(model.isSignedIn());
    EXPECT_EQ(model.errorMessage(), std::nullopt);
    EXPECT_FALSE(m_platform.userDefaults->strings.contains(text("TarnwikAuthToken")));
}

TEST_F(SignOut, stopsTheTunnelAndTellsWhenTheTokenCannotBeForgotten)
{
    storeSession();
    AppModel model;
    m_platform.userDefaults->isWritable = false;
    run(model.signOut());
    EXPECT_FALSE(model.isSignedIn());
    EXPECT_TRUE(m_platform.tunnelManager->operations.contains(text("stop")));
    EXPECT_EQ(model.errorMessage(), text("The settings cannot be written."));
}

TEST_F(SignOut, stopsTheLoopFirstAndWaitsForTheTunnelLast)
{
    storeSession();
    AppModel model;
    model.startUsageRefreshLoop();
    m_answers.remove(m_deleteSession);
    m_platform.tunnelManager->held = QStringList{text("stop")};
    Running running(model.signOut());
    settleEvents();
    EXPECT_EQ(m_platform.clock->pendingCount(), 0) << "the loop still ran while the server was told";
    m_platform.httpSession->waiting(m_deleteSession).answer(204);
    ASSERT_TRUE(spinUntil([&] { return m_platform.tunnelManager->operations.contains(text("stop")); }));
    EXPECT_FALSE(model.isSignedIn());
    EXPECT_FALSE(m_platform.userDefaults->strings.contains(text("TarnwikAuthToken")));
    EXPECT_FALSE(running.hasEnded());
    m_platform.tunnelManager->release();
    running.result();
}

TEST_F(SignOut, stopsTheTunnelEvenWhenItIsStoppedItself)
{
    storeSession();
    AppModel model;
    std::stop_source stop;
    m_answers.remove(m_deleteSession);
    Running running(model.signOut(stop.get_token()));
    stop.request_stop();
    running.result();
    EXPECT_FALSE(model.isSignedIn());
    EXPECT_TRUE(m_platform.tunnelManager->operations.contains(text("stop")));
    EXPECT_EQ(model.errorMessage(), std::nullopt);
}

TEST_F(SignOut, tellsOfATokenThatStaysOnTheDiskEvenWhenItIsStopped)
{
    storeSession();
    AppModel model;
    m_platform.userDefaults->isWritable = false;
    std::stop_source stop;
    m_answers.remove(m_deleteSession);
    Running running(model.signOut(stop.get_token()));
    stop.request_stop();
    running.result();
    EXPECT_EQ(model.errorMessage(), text("The settings cannot be written."));
}

TEST_F(SignOut, leavesTheClientWithItsOldToken)
{
    storeSession();
    AppModel model;
    run(model.signOut());
    m_answers[m_getAccount] = {401, R"({"error":"session_expired"})"};
    run(model.refreshFromUI());
    EXPECT_EQ(lastAuthorization(), "Bearer stored-token");
    EXPECT_EQ(model.errorMessage(), text("session expired"));
    EXPECT_FALSE(model.isSignedIn());
}

TEST_F(ModelTest, editingTheServerTakesEffectAtTheNextSignInOnly)
{
    storeSession();
    AppModel model;
    QSignalSpy edits(&model, &AppModel::serverURLStringChanged);
    model.setServerURLString(text("https://new.example"));
    model.setServerURLString(text("https://new.example"));
    EXPECT_EQ(edits.count(), 1);
    run(model.refreshAccount());
    EXPECT_EQ(lastURL(), text("https://stored.example/api/customer/v1/session"));
    EXPECT_TRUE(m_platform.userDefaults->writes.isEmpty());
}

} // namespace tarnwik::test
