#include "UIModelFixture.h"
#include "ui/model/AppModelFacade.h"
#include "ui/model/AppearanceTasks.h"
#include "ui/model/ApplicationActions.h"
#include "ui/model/SubscriptionsFacade.h"
#include "ui/model/VPNControllerFacade.h"

#include <QJSEngine>

namespace tarnwik::test {

namespace {

/// What the screens' bindings see, through the engine that runs them.
class UIModelInQML : public UIModelTest
{
protected:
    UIModelInQML()
    {
        give("appModel", &m_appModel);
        give("vpnController", &m_vpnController);
        give("subscriptions", &m_subscriptions);
        give("actions", &m_actions);
        give("tasks", &m_tasks);
    }

    void give(const char *name, QObject *object)
    {
        QJSEngine::setObjectOwnership(object, QJSEngine::CppOwnership);
        m_engine.globalObject().setProperty(text(name), m_engine.newQObject(object));
    }

    /// The value of an expression as text, with its type.
    std::string evaluated(const char *expression)
    {
        const QJSValue value = m_engine.evaluate(text("(function(v) { return typeof v + ' ' + v })(") + text("(")
                                                 + text(expression) + text("))"));
        return value.toString().toStdString();
    }

    AppStoreSubscriptionStore m_store;
    AppModelFacade m_appModel{&model()};
    VPNControllerFacade m_vpnController{model().vpnController()};
    SubscriptionsFacade m_subscriptions{&model(), &m_store};
    ApplicationActions m_actions{&model(), m_platform.desktop};
    AppearanceTasks m_tasks{&model(), &m_store};
    QJSEngine m_engine;
};

} // namespace

TEST_F(UIModelInQML, isUndefinedWhereSomethingIsAbsent)
{
    for (const char *absent : {"appModel.errorMessage", "appModel.account", "appModel.selectedNode",
                               "subscriptions.statusMessage", "subscriptions.errorMessage"})
        EXPECT_EQ(evaluated(absent), "undefined undefined") << absent;
}

TEST_F(UIModelInQML, hasTheAccountsTexts)
{
    refresh();
    EXPECT_EQ(evaluated("appModel.account.email"), "string ada@example.com");
    EXPECT_EQ(evaluated("appModel.account.isServiceEnabled"), "boolean true");
    EXPECT_EQ(evaluated("appModel.account.usageFraction > 0.046 && appModel.account.usageFraction < 0.047"),
              "boolean true");
    EXPECT_EQ(evaluated("appModel.account.planText"), "string 100 GB");
    EXPECT_EQ(evaluated("appModel.account.billingPortalURL"), "string https://billing.example.com/7");
    EXPECT_EQ(evaluated("appModel.selectedNode.runtimeLine"), "string Reykjavík · awg");
}

TEST_F(UIModelInQML, hasNoBillingPortalWhereTheServerNamesNone)
{
    QByteArray body = sampleJSON<AccountResponse>();
    m_answers[m_getAccount] = {200, body.replace("https://billing.example.com/7", "")};
    refresh();
    EXPECT_EQ(evaluated("appModel.account.billingPortalURL"), "undefined undefined");
}

TEST_F(UIModelInQML, hasListsWithACount)
{
    EXPECT_EQ(evaluated("appModel.nodes.count"), "number 0");
    refresh();
    EXPECT_EQ(evaluated("appModel.nodes.count"), "number 2");
    EXPECT_EQ(evaluated("appModel.devices.count"), "number 0");
    EXPECT_EQ(evaluated("subscriptions.plans.count"), "number 2");
    EXPECT_EQ(evaluated("appModel.sections[1].title"), "string Account");
    EXPECT_EQ(evaluated("appModel.sections.length"), "number 3");
}

TEST_F(UIModelInQML, choosesNodesAndSections)
{
    refresh();
    EXPECT_EQ(evaluated("appModel.selectNode(1), appModel.selectedNodeIndex"), "number 1");
    EXPECT_EQ(evaluated("appModel.selectedSection = 'settings', appModel.selectedSection"), "string settings");
    EXPECT_EQ(evaluated("appModel.serverURLString = 'x', appModel.serverURLString"), "string x");
    EXPECT_EQ(model().serverURLString(), text("x"));
}

TEST_F(UIModelInQML, triggersActions)
{
    EXPECT_EQ(evaluated("actions.vpn.title"), "string Connect");
    EXPECT_EQ(evaluated("actions.vpn.state"), "number 0");
    EXPECT_EQ(evaluated("actions.vpn.isEnabledOnScreen"), "boolean false");
    EXPECT_EQ(evaluated("vpnController.statusLabel"), "string Not configured");
    EXPECT_EQ(evaluated("actions.refresh.trigger(), actions.refresh.isRunning"), "boolean true");
    EXPECT_EQ(evaluated("actions.refresh.isEnabled"), "boolean false");
    ASSERT_TRUE(spinUntil([&] { return !m_actions.refresh()->isRunning(); }));
}

TEST_F(UIModelInQML, beginsAndEndsTasksByNumber)
{
    m_answers.remove(m_getAccount);
    const int dashboard = AppearanceTasks::Dashboard;
    m_engine.globalObject().setProperty(text("kind"), dashboard);
    EXPECT_EQ(evaluated("handle = tasks.begin(kind)"), "number 1");
    settleEvents();
    EXPECT_TRUE(model().isLoading());
    EXPECT_EQ(evaluated("tasks.end(handle)"), "undefined undefined");
    settleEvents();
    EXPECT_FALSE(model().isLoading());
}

} // namespace tarnwik::test
