#include "ui/model/DeviceListModel.h"
#include "ui/model/NodeListModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <numeric>

namespace tarnwik::test {

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QList<ExitNode> nodes(const QList<int> &ids)
{
    QList<ExitNode> list;
    for (const int id : ids) {
        ExitNode node;
        node.id = id;
        node.name = QString::number(id);
        list << node;
    }
    return list;
}

CustomerDevice device(int id, int profiles)
{
    CustomerDevice device;
    device.id = id;
    device.name = text("laptop");
    device.platform = text("macos");
    device.enabled = true;
    device.profiles.resize(profiles);
    return device;
}

/// A list of nodes that writes down what it tells its views: "remove 0-1", "insert 2-2", "change 0-0", "count".
class NodeList : public testing::Test
{
protected:
    NodeList()
    {
        QObject::connect(&m_model, &QAbstractItemModel::rowsRemoved, &m_model,
                         [this](const QModelIndex &, int first, int last) { note("remove", first, last); });
        QObject::connect(&m_model, &QAbstractItemModel::rowsInserted, &m_model,
                         [this](const QModelIndex &, int first, int last) { note("insert", first, last); });
        QObject::connect(
            &m_model, &QAbstractItemModel::dataChanged, &m_model,
            [this](const QModelIndex &first, const QModelIndex &last) { note("change", first.row(), last.row()); });
        QObject::connect(&m_model, &QAbstractItemModel::modelReset, &m_model, [this] { m_told << text("reset"); });
        QObject::connect(&m_model, &QAbstractItemModel::layoutChanged, &m_model, [this] { m_told << text("layout"); });
        QObject::connect(&m_model, &CountedListModel::countChanged, &m_model, [this] { m_told << text("count"); });
    }

    void note(const char *what, int first, int last)
    {
        m_told << QStringLiteral("%1 %2-%3").arg(text(what)).arg(first).arg(last);
    }

    /// What the list tells when it becomes that of \a ids.
    QStringList becoming(const QList<int> &ids) { return becoming(nodes(ids)); }

    QStringList becoming(const QList<ExitNode> &list)
    {
        m_told.clear();
        m_model.setRecords(list);
        EXPECT_EQ(m_model.records(), list);
        EXPECT_EQ(m_model.count(), list.size());
        return m_told;
    }

    QVariant value(int row, NodeListModel::Role role) const { return m_model.data(m_model.index(row), role); }

    NodeListModel m_model;
    QStringList m_told;
    QAbstractItemModelTester m_tester{&m_model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST_F(NodeList, hasARowForEveryNode)
{
    ExitNode node;
    node.id = 1LL << 62;
    node.name = text("fra-01");
    node.provider = text("Northern");
    node.region = text("new york");
    node.status = text("Online");
    node.endpoint = text("192.0.2.3:51820");
    EXPECT_EQ(becoming(QList{node}), QStringList({text("insert 0-0"), text("count")}));
    EXPECT_EQ(value(0, NodeListModel::NameRole), text("fra-01"));
    EXPECT_EQ(value(0, NodeListModel::DetailRole), text("Northern · new york · 192.0.2.3:51820"));
    EXPECT_EQ(value(0, NodeListModel::StatusTextRole), text("Online"));
    EXPECT_EQ(value(0, NodeListModel::IsOnlineRole), false) << "another word than online";
    EXPECT_EQ(value(0, NodeListModel::CaptionRole), text("New York · fra-01"));
    EXPECT_FALSE(m_model.data(m_model.index(1), NodeListModel::NameRole).isValid());
    EXPECT_FALSE(m_model.data(m_model.index(0), Qt::DecorationRole).isValid());
}

TEST_F(NodeList, namesItsRolesForQML)
{
    const QHash<int, QByteArray> names = m_model.roleNames();
    EXPECT_EQ(QSet<QByteArray>(names.begin(), names.end()),
              QSet<QByteArray>({"name", "detail", "statusText", "isOnline", "caption"}));
}

TEST_F(NodeList, tellsNothingWhenItComesAgainAsItWas)
{
    becoming({1, 2, 3});
    EXPECT_EQ(becoming({1, 2, 3}), QStringList());
}

TEST_F(NodeList, tellsNothingOfWhatNoRowShows)
{
    QList<ExitNode> list = nodes({1});
    becoming(list);
    list[0].runtime = text("other");
    list[0].hasIpv6 = true;
    EXPECT_EQ(becoming(list), QStringList());
}

TEST_F(NodeList, tellsOfChangedRowsAloneWhenTheNodesAreTheSame)
{
    QList<ExitNode> list = nodes({1, 2, 3, 4, 5, 6});
    becoming(list);
    list[1].status = text("offline");
    list[2].endpoint = text("elsewhere");
    list[5].region = text("no");
    EXPECT_EQ(becoming(list), QStringList({text("change 1-2"), text("change 5-5")}));
    list[0].name = text("other");
    EXPECT_EQ(becoming(list), QStringList({text("change 0-0")}));
    list[5].provider = text("other");
    EXPECT_EQ(becoming(list), QStringList({text("change 5-5")}));
}

TEST_F(NodeList, tellsOfRowsThatCameAndWent)
{
    becoming({1, 2, 3});
    EXPECT_EQ(becoming({1, 2, 3, 4}), QStringList({text("insert 3-3"), text("count")}));
    EXPECT_EQ(becoming({0, 1, 2, 3, 4}), QStringList({text("insert 0-0"), text("count")}));
    EXPECT_EQ(becoming({0, 1, 3, 4}), QStringList({text("remove 2-2"), text("count")}));
    EXPECT_EQ(becoming({0, 9, 4}), QStringList({text("remove 1-2"), text("insert 1-1"), text("count")}));
    EXPECT_EQ(becoming({0, 4, 9}), QStringList({text("remove 1-2"), text("insert 1-2")})) << "as many as before";
    EXPECT_EQ(becoming(QList<int>()), QStringList({text("remove 0-2"), text("count")}));
}

TEST_F(NodeList, tellsOfAChangeBesideARowThatCame)
{
    QList<ExitNode> list = nodes({1, 3});
    becoming(list);
    list.insert(1, nodes({2}).first());
    list[0].status = text("offline");
    list[2].status = text("offline");
    EXPECT_EQ(becoming(list), QStringList({text("insert 1-1"), text("change 0-0"), text("change 2-2"), text("count")}));
}

TEST_F(NodeList, bearsTheSameIdentifierTwice)
{
    becoming({1, 1, 1});
    EXPECT_EQ(becoming({1, 1}), QStringList({text("remove 2-2"), text("count")}));
    EXPECT_EQ(becoming({1, 1}), QStringList());
}

TEST_F(NodeList, tellsOfOneChangedRowAmongTenThousand)
{
    QList<int> ids(10'000);
    std::iota(ids.begin(), ids.end(), 0);
    QList<ExitNode> list = nodes(ids);
    becoming(list);
    list[9'999].status = text("online");
    EXPECT_EQ(becoming(list), QStringList({text("change 9999-9999")}));
}

TEST(DeviceList, hasARowForEveryDevice)
{
    DeviceListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.setRecords({device(1, 1), device(2, 0)});
    EXPECT_EQ(model.count(), 2);
    EXPECT_EQ(model.data(model.index(0), DeviceListModel::NameRole), text("laptop"));
    EXPECT_EQ(model.data(model.index(0), DeviceListModel::DetailRole), text("macos · 1 profile"));
    EXPECT_EQ(model.data(model.index(1), DeviceListModel::DetailRole), text("macos · 0 profiles"));
    EXPECT_EQ(model.data(model.index(0), DeviceListModel::IsEnabledRole), true);
    const QHash<int, QByteArray> names = model.roleNames();
    EXPECT_EQ(QSet<QByteArray>(names.begin(), names.end()), QSet<QByteArray>({"name", "detail", "isEnabled"}));
    EXPECT_EQ(changes.count(), 0);
}

TEST(DeviceList, tellsOfWhatItsRowsShowAlone)
{
    DeviceListModel model;
    model.setRecords({device(1, 1)});
    const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    CustomerDevice same = device(1, 1);
    same.profiles[0].rxBytes = 5;
    same.publicKey = text("other");
    model.setRecords({same});
    EXPECT_EQ(changes.count(), 0);
    model.setRecords({device(1, 2)});
    EXPECT_EQ(changes.count(), 1);
    CustomerDevice disabled = device(1, 2);
    disabled.enabled = false;
    model.setRecords({disabled});
    EXPECT_EQ(changes.count(), 2);
    disabled.name = text("desktop");
    model.setRecords({disabled});
    EXPECT_EQ(changes.count(), 3);
    disabled.platform = text("ios");
    model.setRecords({disabled});
    EXPECT_EQ(changes.count(), 4);
}

} // namespace tarnwik::test
