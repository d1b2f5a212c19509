#include "ui/model/AppModelFacade.h"
#include "UIModelFixture.h"
#include "ui/model/VPNControllerFacade.h"

namespace tarnwik::test {

namespace {

using namespace std::chrono_literals;

class AppModelFacadeTest : public UIModelTest
{
protected:
    AppModelFacade &facade()
    {
        if (!m_facade)
            m_facade = std::make_unique<AppModelFacade>(&model());
        return *m_facade;
    }

    QVariant property(const char *name) { return facade().property(name); }
    QString caption() { return facade().selectedNode() ? facade().selectedNode()->caption() : QString(); }

    std::unique_ptr<AppModelFacade> m_facade;
};

} // namespace

TEST_F(AppModelFacadeTest, hasUndefinedForAllThatIsAbsent)
{
    EXPECT_FALSE(property("errorMessage").isValid());
    EXPECT_FALSE(property("account").isValid());
    EXPECT_FALSE(property("selectedNode").isValid());
    EXPECT_EQ(property("selectedNodeIndex"), -1);
    EXPECT_EQ(facade().nodes()->count(), 0);
    EXPECT_EQ(facade().devices()->count(), 0);
}

TEST_F(AppModelFacadeTest, takesWhatTheModelHoldsAlready)
{
    m_answers[m_getDevices] = {200, devices({device(1, "macos")})};
    refresh();
    EXPECT_TRUE(facade().isSignedIn());
    EXPECT_TRUE(facade().account());
    EXPECT_EQ(facade().nodes()->count(), 2);
    EXPECT_EQ(facade().devices()->count(), 1);
    EXPECT_EQ(facade().selectedNodeIndex(), 0);
    EXPECT_EQ(caption(), text("Is · Reykjavík"));
}

TEST_F(AppModelFacadeTest, followsARefreshWithOneNotificationOfEachChange)
{
    const QSignalSpy account(&facade(), &AppModelFacade::accountChanged);
    const QSignalSpy index(&facade(), &AppModelFacade::selectedNodeIndexChanged);
    const QSignalSpy node(&facade(), &AppModelFacade::selectedNodeChanged);
    const QSignalSpy signedIn(&facade(), &AppModelFacade::isSignedInChanged);
    refresh();
    EXPECT_EQ(account.count(), 1);
    EXPECT_EQ(index.count(), 1);
    EXPECT_EQ(node.count(), 1);
    EXPECT_EQ(signedIn.count(), 0);
    refresh();
    EXPECT_EQ(account.count() + index.count() + node.count(), 3) << "nothing changed";
}

TEST_F(AppModelFacadeTest, tellsNothingOfAnAccountThatLooksTheSame)
{
    refresh();
    const QSignalSpy modelChanges(&model(), &AppModel::accountChanged);
    const QSignalSpy changes(&facade(), &AppModelFacade::accountChanged);
    QByteArray body = sampleJSON<AccountResponse>();
    m_answers[m_getAccount] = {200, body.replace("4999999999", "4999999998")};
    run(model().refreshAccount());
    EXPECT_EQ(modelChanges.count(), 1);
    EXPECT_EQ(changes.count(), 0) << "no screen shows the cycle";
    m_answers[m_getAccount] = {200, body.replace("5000000000", "6000000000")};
    run(model().refreshAccount());
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(AppModelFacadeTest, tellsOfTheSessionAndNotOfItsToken)
{
    const QSignalSpy changes(&facade(), &AppModelFacade::isSignedInChanged);
    run(model().signIn(text("e"), text("p")));
    EXPECT_EQ(changes.count(), 0) << "another token is a session all the same";
    signOut();
    EXPECT_EQ(changes.count(), 1);
    EXPECT_FALSE(facade().isSignedIn());
}

TEST_F(AppModelFacadeTest, clearsEverythingAtSignOut)
{
    m_answers[m_getDevices] = {200, devices({device(1, "macos")})};
    refresh();
    facade();
    signOut();
    EXPECT_FALSE(property("account").isValid());
    EXPECT_FALSE(property("selectedNode").isValid());
    EXPECT_EQ(facade().selectedNodeIndex(), -1);
    EXPECT_EQ(facade().nodes()->count(), 0);
    EXPECT_EQ(facade().devices()->count(), 0);
}

TEST_F(AppModelFacadeTest, choosesANodeByItsRow)
{
    refresh();
    facade().selectNode(1);
    EXPECT_EQ(model().selectedNodeID(), 9);
    EXPECT_EQ(facade().selectedNodeIndex(), 1);
}

TEST_F(AppModelFacadeTest, choosesNothingByARowThatIsNotThere)
{
    refresh();
    facade().selectNode(1);
    for (const int row : {-1, 2, 1000})
        facade().selectNode(row);
    EXPECT_EQ(model().selectedNodeID(), 9);
}

TEST_F(AppModelFacadeTest, showsNoRowForAStaleChoiceThoughAConnectWouldTakeTheFirst)
{
    refresh();
    facade().selectNode(1);
    const QSignalSpy changes(&facade(), &AppModelFacade::selectedNodeIndexChanged);
    m_answers[m_getNodes] = {200, nodes({5, 6})};
    refresh();
    EXPECT_EQ(model().selectedNodeID(), 9);
    EXPECT_EQ(facade().selectedNodeIndex(), -1);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(facade().selectedNode());
    m_answers[m_getNodes] = {200, nodes({4, 5, 6, 9})};
    refresh();
    EXPECT_EQ(facade().selectedNodeIndex(), 3) << "the choice came back, on another row";
}

TEST_F(AppModelFacadeTest, showsNoRowForNoChoice)
{
    refresh();
    facade();
    model().setSelectedNodeID(std::nullopt);
    EXPECT_EQ(facade().selectedNodeIndex(), -1);
    EXPECT_TRUE(facade().selectedNode());
}

TEST_F(AppModelFacadeTest, followsTheSelectedNodesOwnChanges)
{
    refresh();
    EXPECT_EQ(property("selectedNode").value<NodePresentation>(), NodePresentation(*model().selectedNode()));
    const QSignalSpy changes(&facade(), &AppModelFacade::selectedNodeChanged);
    QByteArray list = nodes({5, 9});
    m_answers[m_getNodes] = {200, list.replace("\"runtime\":\"awg\"", "\"runtime\":\"awg_go\"")};
    refresh();
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(property("selectedNode").value<NodePresentation>(), NodePresentation(*model().selectedNode()));
}

TEST_F(AppModelFacadeTest, editsTheServerInPlace)
{
    const QSignalSpy changes(&facade(), &AppModelFacade::serverURLStringChanged);
    EXPECT_EQ(facade().serverURLString(), text("https://stored.example"));
    facade().setProperty("serverURLString", text("not a url"));
    EXPECT_EQ(model().serverURLString(), text("not a url"));
    facade().setServerURLString(text("not a url"));
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(AppModelFacadeTest, keepsTheSectionByItsRawValue)
{
    const QSignalSpy changes(&facade(), &AppModelFacade::selectedSectionChanged);
    EXPECT_EQ(facade().selectedSection(), text("connect"));
    facade().setSelectedSection(text("account"));
    EXPECT_EQ(model().selectedSection(), AppSection(AppSection::account));
    facade().setSelectedSection(text("account"));
    facade().setSelectedSection(text("Account"));
    facade().setSelectedSection(QString());
    EXPECT_EQ(facade().selectedSection(), text("account"));
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(AppModelFacadeTest, listsTheSectionsInTheirOrder)
{
    QStringList sections;
    for (const QVariant &section : facade().sections()) {
        const QVariantMap map = section.toMap();
        sections << map[text("section")].toString() + text(",") + map[text("title")].toString() + text(",")
                + map[text("symbol")].toString();
    }
    EXPECT_EQ(sections,
              QStringList({text("connect,Connect,network"), text("account,Account,person.crop.circle"),
                           text("settings,Settings,gearshape")}));
}

TEST_F(AppModelFacadeTest, signsInWithTheTextsAsTheyAre)
{
    signOut();
    const QSignalSpy changes(&facade(), &AppModelFacade::isSignedInChanged);
    facade().signIn(text(" ada@example.com"), text(" "));
    EXPECT_TRUE(facade().isLoading()) << "at once: the button must not be pressed twice";
    ASSERT_TRUE(spinUntil([&] { return !facade().isLoading(); }));
    EXPECT_TRUE(facade().isSignedIn());
    EXPECT_EQ(changes.count(), 1);
    const QByteArray body = *m_platform.httpSession->exchanges.front()->request.body;
    EXPECT_TRUE(body.contains("\" ada@example.com\"")) << body.toStdString();
    EXPECT_TRUE(body.contains("\" \"")) << body.toStdString();
}

TEST_F(AppModelFacadeTest, showsWhyASignInFailed)
{
    signOut();
    m_answers[m_postSession] = {401, R"({"error":"invalid_credentials"})"};
    const QSignalSpy errors(&facade(), &AppModelFacade::errorMessageChanged);
    facade().signIn(text("e"), text("p"));
    ASSERT_TRUE(spinUntil([&] { return !facade().isLoading(); }));
    EXPECT_EQ(facade().errorMessage(), text("invalid credentials"));
    EXPECT_EQ(errors.count(), 1);
    EXPECT_FALSE(facade().isSignedIn());
}

TEST_F(AppModelFacadeTest, leavesASignInRunningWhenItGoes)
{
    signOut();
    m_answers.remove(m_postSession);
    facade().signIn(text("e"), text("p"));
    m_facade.reset();
    m_platform.httpSession->waiting(m_postSession).answer(200, sampleJSON<SessionResponse>());
    EXPECT_TRUE(spinUntil([&] { return model().isSignedIn() && !model().isLoading(); }));
}

TEST_F(AppModelFacadeTest, startsTwoSignInsWhenAskedTwice)
{
    signOut();
    facade().signIn(text("e"), text("p"));
    facade().signIn(text("e"), text("p"));
    EXPECT_EQ(requests().count(m_postSession), 2);
    settleEvents();
}

using VPNControllerFacadeTest = UIModelTest;

TEST_F(VPNControllerFacadeTest, followsTheStatus)
{
    const VPNControllerFacade facade(model().vpnController());
    EXPECT_EQ(facade.property("statusLabel"), text("Not configured"));
    EXPECT_EQ(facade.actionState(), VPNActionState::CanConnect);
    setStatus(VPNStatus::Connecting);
    EXPECT_EQ(facade.statusLabel(), text("Connecting"));
    EXPECT_EQ(facade.actionState(), VPNActionState::InTransition);
    setStatus(VPNStatus::Connected);
    EXPECT_EQ(facade.statusLabel(), text("Connected"));
    EXPECT_EQ(facade.actionState(), VPNActionState::CanDisconnect);
}

TEST_F(VPNControllerFacadeTest, tellsNothingOfAStatusThatReadsTheSame)
{
    setStatus(VPNStatus::Connecting);
    const VPNControllerFacade facade(model().vpnController());
    const QSignalSpy changes(&facade, &VPNControllerFacade::changed);
    setStatus(VPNStatus::Reasserting);
    EXPECT_EQ(changes.count(), 0);
    setStatus(VPNStatus::Disconnecting);
    EXPECT_EQ(changes.count(), 1) << "another label";
    setStatus(VPNStatus::Disconnected);
    EXPECT_EQ(changes.count(), 2);
}

} // namespace tarnwik::test
