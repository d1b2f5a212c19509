#include "ui/model/Presentation.h"
#include "FormatterFixture.h"
#include "ui/model/AccountPresentation.h"
#include "ui/model/NodePresentation.h"

#include <QMetaProperty>

#include <limits>

namespace tarnwik::test {

namespace {

constexpr qint64 gigabyte = 1'073'741'824;

class PresentationTest : public testing::Test
{
protected:
    PresentationTest()
    {
        m_node.name = text(u"fra-01");
        m_node.provider = text(u"Northern");
        m_node.region = text(u"new york");
        m_node.status = text(u"online");
        m_node.runtime = text(u"amnezia_wg_go");
        m_node.endpoint = text(u"192.0.2.3:51820");
        m_account.status = text(u"active");
        m_account.subscriptionStatus = text(u"past_due");
        m_account.planGb = 50;
        m_account.usedBytes = 5 * gigabyte;
        m_account.quotaBytes = 20 * gigabyte;
    }

    double fraction(qint64 usedBytes, qint64 quotaBytes)
    {
        m_account.usedBytes = usedBytes;
        m_account.quotaBytes = quotaBytes;
        return presentation::usageFraction(m_account);
    }

    QString deviceDetail(int profiles)
    {
        CustomerDevice device;
        device.platform = text(u"macos");
        device.profiles.resize(profiles);
        return presentation::deviceDetail(device);
    }

    std::optional<QString> portal(const QString &address)
    {
        m_account.billingPortalUrl = address;
        return presentation::billingPortalURL(m_account);
    }

    const UserLocale m_locale{"en_US"};
    ExitNode m_node;
    Account m_account;
};

using NodeCaption = PresentationTest;
using NodeDetail = PresentationTest;
using RuntimeLine = PresentationTest;
using NodeStatus = PresentationTest;
using DeviceDetail = PresentationTest;
using UsageFraction = PresentationTest;
using UsageTexts = PresentationTest;
using AccountStatusLine = PresentationTest;
using Billing = PresentationTest;

TEST_F(NodeCaption, capitalisesTheWordsOfTheRegionAndLeavesTheName)
{
    EXPECT_EQ(presentation::nodeCaption(m_node), text(u"New York · fra-01"));
    m_node.region = text(u"EU-WEST île");
    m_node.name = text(u"NODE a_b");
    EXPECT_EQ(presentation::nodeCaption(m_node), text(u"Eu-West Île · NODE a_b"));
}

TEST_F(NodeCaption, keepsItsSeparatorWhereAPartIsEmpty)
{
    m_node.region = QString();
    EXPECT_EQ(presentation::nodeCaption(m_node), text(u" · fra-01"));
}

TEST_F(NodeDetail, joinsProviderRegionAndEndpointAsTheyStand)
{
    EXPECT_EQ(presentation::nodeDetail(m_node), text(u"Northern · new york · 192.0.2.3:51820"));
    m_node.region = QString();
    EXPECT_EQ(presentation::nodeDetail(m_node), text(u"Northern ·  · 192.0.2.3:51820"));
}

TEST_F(RuntimeLine, hasABlankForEveryUnderscoreOfTheRuntimeAlone)
{
    m_node.name = text(u"fra_01");
    EXPECT_EQ(presentation::runtimeLine(m_node), text(u"fra_01 · amnezia wg go"));
}

TEST_F(NodeStatus, isCapitalised)
{
    EXPECT_EQ(presentation::nodeStatusText(m_node), text(u"Online"));
    m_node.status = text(u"DOWN for maintenance");
    EXPECT_EQ(presentation::nodeStatusText(m_node), text(u"Down For Maintenance"));
}

TEST_F(NodeStatus, isOnlineOnlyToTheLetter)
{
    EXPECT_TRUE(presentation::isOnline(m_node));
    for (const auto *status : {u"Online", u"ONLINE", u"online ", u"", u"offline"}) {
        m_node.status = text(status);
        EXPECT_FALSE(presentation::isOnline(m_node)) << m_node.status.toStdString();
    }
}

TEST_F(DeviceDetail, isSingularForOneProfileAlone)
{
    EXPECT_EQ(deviceDetail(0), text(u"macos · 0 profiles"));
    EXPECT_EQ(deviceDetail(1), text(u"macos · 1 profile"));
    EXPECT_EQ(deviceDetail(2), text(u"macos · 2 profiles"));
    EXPECT_EQ(deviceDetail(1234), text(u"macos · 1234 profiles"));
}

TEST_F(UsageFraction, isTheShareOfTheQuota)
{
    EXPECT_EQ(fraction(5 * gigabyte, 20 * gigabyte), 0.25);
    EXPECT_EQ(fraction(0, 20 * gigabyte), 0);
    EXPECT_EQ(fraction(1, 3), 1.0 / 3.0);
}

TEST_F(UsageFraction, isNothingWithoutAQuota)
{
    EXPECT_EQ(fraction(5, 0), 0);
    EXPECT_EQ(fraction(5, -1), 0);
    EXPECT_EQ(fraction(-5, -10), 0);
    EXPECT_EQ(fraction(1, 1), 1);
}

TEST_F(UsageFraction, isClampedFromAboveOnly)
{
    EXPECT_EQ(fraction(21, 20), 1);
    EXPECT_EQ(fraction(std::numeric_limits<qint64>::max(), 1), 1);
    EXPECT_EQ(fraction(-5, 20), -0.25);
}

TEST_F(UsageTexts, nameThePlanAsItStandsAndNotTheQuota)
{
    EXPECT_EQ(presentation::usageCaption(m_account), text(u"5 GB used of 50 GB"));
    EXPECT_EQ(presentation::usageMenuText(m_account), text(u"5 GB of 50 GB"));
    EXPECT_EQ(presentation::planText(m_account), text(u"50 GB"));
    m_account.quotaBytes = 0;
    EXPECT_EQ(presentation::usageCaption(m_account), text(u"5 GB used of 50 GB"));
}

TEST_F(UsageTexts, neverReformatThePlan)
{
    m_account.planGb = 1'234'567;
    EXPECT_EQ(presentation::planText(m_account), text(u"1234567 GB"));
    m_account.planGb = -1;
    EXPECT_EQ(presentation::usageMenuText(m_account), text(u"5 GB of -1 GB"));
}

TEST_F(UsageTexts, ignoreTheCycle)
{
    m_account.cycleUsedBytes = 1;
    m_account.cycleQuotaBytes = 1;
    EXPECT_EQ(presentation::usageCaption(m_account), text(u"5 GB used of 50 GB"));
    EXPECT_EQ(presentation::usageFraction(m_account), 0.25);
}

TEST_F(UsageTexts, writeTheAmountInTheUsersLocale)
{
    m_account.usedBytes = gigabyte * 3 / 2;
    const UserLocale german("de_DE");
    EXPECT_EQ(presentation::usageMenuText(m_account), text(u"1,5 GB of 50 GB"));
}

TEST_F(AccountStatusLine, hasBlanksInTheSubscriptionsStatusAlone)
{
    EXPECT_EQ(presentation::accountStatusLine(m_account), text(u"Account active · subscription past due"));
    m_account.status = text(u"on_hold");
    m_account.subscriptionStatus = text(u"in_grace_period");
    EXPECT_EQ(presentation::accountStatusLine(m_account), text(u"Account on_hold · subscription in grace period"));
}

TEST_F(Billing, namesTheProviderAsItStands)
{
    m_account.billingProvider = text(u"app_store");
    EXPECT_EQ(presentation::billingProviderText(m_account), text(u"app_store"));
}

TEST_F(Billing, isNotConnectedWithoutAProvider)
{
    EXPECT_EQ(presentation::billingProviderText(m_account), text(u"Not connected"));
}

TEST_F(Billing, hasAPortalWhereTheServerNamesAURL)
{
    EXPECT_EQ(portal(text(u"https://billing.example/7?a=b")), text(u"https://billing.example/7?a=b"));
    EXPECT_EQ(portal(text(u"https://billing.example/ü")), text(u"https://billing.example/%C3%BC"));
}

TEST_F(Billing, hasNoPortalWhereTheServerNamesNoneOrNoURL)
{
    EXPECT_EQ(portal(QString()), std::nullopt);
    EXPECT_EQ(portal(text(u"https://[broken")), std::nullopt);
}

TEST_F(PresentationTest, makesAnAccountReadableInOneGo)
{
    m_account.email = text(u"ada@example.com");
    m_account.serviceEnabled = true;
    m_account.monthlyPriceCents = 999;
    const AccountPresentation account(m_account);
    const QMetaObject &properties = AccountPresentation::staticMetaObject;
    const auto value = [&](const char *name) {
        return properties.property(properties.indexOfProperty(name)).readOnGadget(&account);
    };
    EXPECT_EQ(value("email"), text(u"ada@example.com"));
    EXPECT_EQ(value("statusLine"), text(u"Account active · subscription past due"));
    EXPECT_EQ(value("isServiceEnabled"), true);
    EXPECT_EQ(value("usageFraction"), 0.25);
    EXPECT_EQ(value("usageCaption"), text(u"5 GB used of 50 GB"));
    EXPECT_EQ(account.usageMenuText(), text(u"5 GB of 50 GB"));
    EXPECT_EQ(value("planText"), text(u"50 GB"));
    EXPECT_EQ(value("monthlyPrice"), text(u"$9.99"));
    EXPECT_EQ(value("billingProvider"), text(u"Not connected"));
    EXPECT_FALSE(value("billingPortalURL").isValid()) << "absent, not empty";
}

TEST_F(PresentationTest, makesANodeReadableInOneGo)
{
    const NodePresentation node(m_node);
    const QMetaObject &properties = NodePresentation::staticMetaObject;
    const auto value = [&](const char *name) {
        return properties.property(properties.indexOfProperty(name)).readOnGadget(&node).toString();
    };
    EXPECT_EQ(value("runtimeLine"), text(u"fra-01 · amnezia wg go"));
    EXPECT_EQ(value("caption"), text(u"New York · fra-01"));
    EXPECT_EQ(node.caption(), value("caption"));
}

} // namespace
} // namespace tarnwik::test
