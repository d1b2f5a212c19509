#include "ServiceFixture.h"

#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <thread>

namespace tarnwik::service {
namespace {

/// A database file that version 1 of the service left behind.
class ServiceUpgrade : public ServiceTest
{
protected:
    void SetUp() override
    {
        m_databasePath = m_folder.filePath(QStringLiteral("service.db"));
        makeVersion1(m_databasePath);
    }

    static void makeVersion1(const QString &path)
    {
        QFile sql(QStringLiteral(TARNWIK_VERSION_1_SQL));
        ASSERT_TRUE(sql.open(QIODevice::ReadOnly));
        Database(path).runScript(sql.readAll().constData());
    }

    /// The first column of what \a sql finds in the file at \a path.
    static QStringList column(const QString &path, const QByteArray &sql)
    {
        Database database(path);
        Statement row = database.prepare(sql.constData());
        QStringList texts;
        while (row.step())
            texts.append(row.text(0));
        return texts;
    }

    static QStringList tables(const QString &path)
    {
        return column(path, "SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY name");
    }

    /// Everything in \a table, a text for each row.
    static QStringList rows(const QString &path, const QString &table)
    {
        const QStringList columns =
            column(path, "SELECT 'quote(\"' || name || '\")' FROM pragma_table_info('" + table.toLatin1() + "')");
        return column(path,
                      "SELECT " + columns.join(QLatin1String("||','||")).toLatin1() + " FROM " + table.toLatin1()
                          + " ORDER BY 1");
    }

    /// The form of the tables, and the marks of the file.
    static QStringList schema(const QString &path)
    {
        return column(path, "SELECT coalesce(sql, name) FROM sqlite_schema ORDER BY name")
            + column(path, "PRAGMA user_version") + column(path, "PRAGMA application_id");
    }

    static constexpr auto token = "D6NUpH2UZ0Cn3Sk0QlucP1snOiXC_JcavaDJi4BjRS4";

    QTemporaryDir m_folder;
};

TEST_F(ServiceUpgrade, losesNothing)
{
    const QString untouched = m_folder.filePath(QStringLiteral("untouched.db"));
    makeVersion1(untouched);
    makeService();
    const QStringList before = tables(untouched);
    ASSERT_TRUE(before.contains(QStringLiteral("profiles")));
    for (const QString &table : before) {
        EXPECT_EQ(rows(m_databasePath, table), rows(untouched, table)) << qPrintable(table);
        EXPECT_FALSE(rows(untouched, table).isEmpty()) << qPrintable(table);
    }
}

TEST_F(ServiceUpgrade, endsWithTheTablesOfANewDatabase)
{
    const QString upgraded = std::exchange(m_databasePath, m_folder.filePath(QStringLiteral("new.db")));
    makeService();
    const QString fresh = std::exchange(m_databasePath, upgraded);
    EXPECT_NE(schema(upgraded), schema(fresh));
    makeService();
    EXPECT_EQ(schema(upgraded), schema(fresh));
    // The built-in seed sells what an upgraded database does.
    EXPECT_EQ(rows(upgraded, QStringLiteral("subscription_products")),
              rows(fresh, QStringLiteral("subscription_products")));
}

TEST_F(ServiceUpgrade, keepsSessionsPasswordsAndDevices)
{
    m_now = Moment(std::chrono::milliseconds(1'795'271'636'672));
    EXPECT_EQ(account(token).usedBytes, 847'100'468);
    ASSERT_EQ(devices(token).size(), 1);
    EXPECT_EQ(devices(token).first().profiles.size(), 1);
    EXPECT_EQ(trySignIn().status, 200);
}

TEST_F(ServiceUpgrade, putsTheDefaultProductsOnSaleWhateverTheSeedSays)
{
    m_seed.subscriptionProducts =
        QList<SubscriptionProduct>{{.productId = QStringLiteral("other"), .planGb = 7, .monthlyPriceCents = 7}};
    makeService();
    EXPECT_EQ(rows(m_databasePath, QStringLiteral("subscription_products")),
              QStringList(
                  {QStringLiteral("'tarnwik.sub.monthly',500,1499"), QStringLiteral("'tarnwik.sub.yearly',1000,999")}));
}

TEST_F(ServiceUpgrade, happensOnceWhenSeveralServicesStartTogether)
{
    std::vector<std::thread> threads;
    threads.reserve(8);
    for (int index = 0; index < 8; ++index) {
        threads.emplace_back([&] {
            try {
                const auto own = makeService();
                EXPECT_EQ(own->handle({.method = "GET",
                                       .path = QStringLiteral("/api/customer/v1/session"),
                                       .authorization = QByteArray("Bearer ") + token,
                                       .contentType = {},
                                       .body = {}})
                              .status,
                          200);
            } catch (const ServiceDatabaseError &error) {
                ADD_FAILURE() << error.what();
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(rows(m_databasePath, QStringLiteral("subscription_products")).size(), 2);
}

TEST_F(ServiceUpgrade, thatFailsHalfwayLeavesVersion1)
{
    // A table that should not be there yet: the last step stumbles over it.
    Database(m_databasePath).runScript("CREATE TABLE subscription_periods (surprise)");
    const QStringList before = schema(m_databasePath);
    EXPECT_THROW(makeService(), ServiceDatabaseError);
    EXPECT_EQ(schema(m_databasePath), before);
    Database(m_databasePath).runScript("DROP TABLE subscription_periods");
    EXPECT_EQ(account(token).id, 1);
}

} // namespace
} // namespace tarnwik::service
