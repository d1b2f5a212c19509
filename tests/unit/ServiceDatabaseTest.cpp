#include "ServiceFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QTemporaryDir>

#include <thread>

namespace tarnwik::service {
namespace {

class ServiceDatabaseFile : public ServiceTest
{
protected:
    ServiceDatabaseFile() { m_databasePath = m_folder.filePath(QStringLiteral("service.db")); }

    /// What is said about the file at the database's place.
    std::string refusal()
    {
        try {
            makeService();
        } catch (const ServiceDatabaseError &error) {
            return QString(error.localizedDescription()).remove(m_databasePath).toStdString();
        }
        return "accepted";
    }

    void write(const QByteArray &bytes)
    {
        QFile file(m_databasePath);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    static QByteArray read(const QString &path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    QTemporaryDir m_folder;
};

ServiceResponse getSession(CustomerService &service, const QByteArray &token)
{
    return service.handle({.method = "GET",
                           .path = QStringLiteral("/api/customer/v1/session"),
                           .authorization = "Bearer " + token,
                           .contentType = {},
                           .body = {}});
}

TEST_F(ServiceDatabaseFile, keepsSessionsAndDataOverARestart)
{
    const QByteArray token = signIn();
    createProfile(token, createDevice(token).id, 1);
    const QByteArray before = send("GET", QStringLiteral("devices"), {}, token).body;

    // The seed of the second start has another account, which is not looked at.
    m_seed = Seed();
    const auto restarted = makeService();
    EXPECT_EQ(getSession(*restarted, token).status, 200);
    EXPECT_EQ(restarted
                  ->handle({.method = "GET",
                            .path = QStringLiteral("/api/customer/v1/devices"),
                            .authorization = "Bearer " + token,
                            .contentType = {},
                            .body = {}})
                  .body,
              before);
}

TEST_F(ServiceDatabaseFile, isReadableByItsOwnerAlone)
{
    signIn();
    for (const QFileInfo &file : QDir(m_folder.path()).entryInfoList(QDir::Files))
        EXPECT_EQ(file.permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions())
            << qPrintable(file.fileName());
}

TEST_F(ServiceDatabaseFile, holdsNoPasswordAndNoTokenInTheClear)
{
    m_seed.accounts[0].password = QStringLiteral("correct horse battery");
    const QByteArray token = signIn("demo@tarnwik.example", "correct horse battery");
    trySignIn("demo@tarnwik.example", "mistyped password");
    trySignIn("secret-typed-here@x.example", "demo");
    const QByteArray rawToken = QByteArray::fromBase64(token, QByteArray::Base64UrlEncoding);

    bool hasSeenTheAccount = false;
    for (const QFileInfo &file : QDir(m_folder.path()).entryInfoList(QDir::Files)) {
        const QByteArray bytes = read(file.filePath());
        hasSeenTheAccount |= bytes.contains("demo@tarnwik.example");
        for (const QByteArray &secret :
             {QByteArray("correct horse battery"), QByteArray("mistyped password"), QByteArray("secret-typed-here"),
              token, rawToken, rawToken.toHex(), rawToken.toBase64()}) {
            EXPECT_FALSE(bytes.contains(secret)) << qPrintable(file.fileName());
        }
    }
    EXPECT_TRUE(hasSeenTheAccount);
}

TEST_F(ServiceDatabaseFile, thatIsNoDatabaseIsRefusedAndLeftAsItIs)
{
    const QByteArray bytes = "These are someone's notes.\n" + QByteArray(5000, 'x');
    write(bytes);
    EXPECT_EQ(refusal(), "The database  cannot be opened: it is damaged or no database at all.");
    EXPECT_EQ(read(m_databasePath), bytes);
}

TEST_F(ServiceDatabaseFile, ofAnotherProgramIsRefusedAndLeftAsItIs)
{
    Database(m_databasePath).runScript("CREATE TABLE notes (text); INSERT INTO notes VALUES ('mine')");
    const QByteArray bytes = read(m_databasePath);
    EXPECT_EQ(refusal(), "The database  cannot be opened: it belongs to another program.");
    EXPECT_EQ(read(m_databasePath), bytes);
}

TEST_F(ServiceDatabaseFile, ofALaterVersionIsRefused)
{
    makeService();
    Database(m_databasePath).runScript("PRAGMA user_version = 99");
    EXPECT_EQ(refusal(), "The database  cannot be opened: it was made by another version of the service.");
}

TEST_F(ServiceDatabaseFile, thatIsDamagedIsRefusedAndLeftAsItIs)
{
    makeService();
    QByteArray bytes = read(m_databasePath);
    ASSERT_GT(bytes.size(), 12'288);
    constexpr qsizetype page = 4096;
    bytes.replace(page, 2 * page, QByteArray(2 * page, '\x5a'));
    write(bytes);
    EXPECT_EQ(refusal(), "The database  cannot be opened: it is damaged or no database at all.");
    EXPECT_EQ(read(m_databasePath), bytes);
}

TEST_F(ServiceDatabaseFile, thatIsAFolderOrInAMissingOneIsRefused)
{
    m_databasePath = m_folder.path();
    EXPECT_EQ(refusal(), "The database  cannot be opened: unable to open database file.");
    m_databasePath = m_folder.filePath(QStringLiteral("none/service.db"));
    EXPECT_EQ(refusal(), "The database  cannot be opened: unable to open database file.");
}

TEST_F(ServiceDatabaseFile, aFailureInsideIsAnInternalErrorWithoutDetails)
{
    const QByteArray token = signIn();
    Database(m_databasePath).runScript("DROP TABLE sessions");
    EXPECT_EQ(getSession(service(), token).body, R"({"error":"internal_error"})");
    EXPECT_EQ(getSession(service(), token).status, 500);
}

TEST_F(ServiceDatabaseFile, aSuspendedAccountMaySignOutAndNothingElse)
{
    const QByteArray token = signIn();
    Database(m_databasePath).runScript("UPDATE accounts SET status = 'suspended'");
    EXPECT_EQ(outcome(send("GET", QStringLiteral("session"), {}, token)), "403 account_suspended");
    EXPECT_EQ(outcome(send("GET", QStringLiteral("nodes"), {}, token)), "403 account_suspended");
    EXPECT_EQ(send("DELETE", QStringLiteral("session"), {}, token).status, 204);
}

TEST_F(ServiceDatabaseFile, aDisabledDeviceGetsNoTunnel)
{
    const QByteArray token = signIn();
    const qint64 device = createDevice(token).id;
    const qint64 profile = createProfile(token, device, 1).profile.id;
    Database(m_databasePath).runScript("UPDATE devices SET enabled = 0");
    EXPECT_EQ(outcome(tryCreateProfile(token, device, 1)), "403 device_disabled");
    EXPECT_EQ(outcome(send("GET", QStringLiteral("device-profiles/%1/tunnel-profile").arg(profile), {}, token)),
              "403 device_disabled");
}

TEST_F(ServiceDatabaseFile, aFreedAddressIsGivenOutAgain)
{
    const QByteArray token = signIn();
    const qint64 first = createDevice(token).id;
    createProfile(token, first, 1);
    createProfile(token, createDevice(token).id, 1);
    Database(m_databasePath).runScript("DELETE FROM profiles WHERE host_number = 2");
    EXPECT_EQ(createProfile(token, createDevice(token).id, 1).profile.assignedIp, QStringLiteral("10.64.0.2"));
    EXPECT_EQ(createProfile(token, first, 1).profile.assignedIp, QStringLiteral("10.64.0.4"));
}

TEST_F(ServiceDatabaseFile, isMadeOnceWhenSeveralServicesStartTogether)
{
    std::vector<std::thread> threads;
    std::atomic<int> failures = 0;
    threads.reserve(8);
    for (int index = 0; index < 8; ++index) {
        threads.emplace_back([&] {
            try {
                makeService();
            } catch (const ServiceDatabaseError &error) {
                ++failures;
                ADD_FAILURE() << error.what();
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(trySignIn().status, 200);
}

TEST_F(ServiceDatabaseFile, severalServicesOnItGiveOutDifferentAddresses)
{
    const QByteArray token = signIn();
    QList<qint64> deviceIds;
    for (int count = 0; count < 10; ++count)
        deviceIds.append(createDevice(token).id);

    // Each thread has a connection of its own, as another process would.
    std::vector<std::thread> threads;
    std::vector<QList<QString>> addresses(deviceIds.size());
    threads.reserve(addresses.size());
    for (std::size_t index = 0; index < addresses.size(); ++index) {
        threads.emplace_back([&, index] {
            const auto own = makeService();
            for (const QByteArray node : {"1", "2", "3"}) {
                const ServiceResponse response = own->handle(
                    {.method = "POST",
                     .path =
                         QStringLiteral("/api/customer/v1/devices/%1/node-profiles").arg(deviceIds[qsizetype(index)]),
                     .authorization = "Bearer " + token,
                     .contentType = "application/json",
                     .body = R"({"node_id":)" + node + R"(,"protocol":"amneziawg"})"});
                addresses[index].append(decode<DeviceProfileResponse>(response.body).profile.assignedIp);
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QSet<QString> distinct;
    for (const QList<QString> &list : addresses)
        distinct.unite(QSet<QString>(list.begin(), list.end()));
    EXPECT_EQ(distinct.size(), 30);
}

TEST_F(ServiceTest, threadsMayShareOneService)
{
    const QByteArray token = signIn();
    std::vector<std::thread> threads;
    std::atomic<int> created = 0;
    threads.reserve(16);
    for (int index = 0; index < 16; ++index) {
        const QString key = newKey();
        threads.emplace_back([&, key] { created += tryCreateDevice(token, key).status == 201 ? 1 : 0; });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(created, 10);
    EXPECT_EQ(devices(token).size(), 10);
}

} // namespace
} // namespace tarnwik::service
