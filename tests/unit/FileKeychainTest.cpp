#include "platform/embedded/FileKeychain.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <thread>
#include <vector>

namespace tarnwik {

namespace {

class FileKeychainTest : public testing::Test
{
protected:
    static QVariantMap query(const QString &account, const std::optional<QString> &group = std::nullopt)
    {
        QVariantMap attributes{
            {kSecClass, kSecClassGenericPassword},
            {kSecAttrService, QStringLiteral("Tarnwik")},
            {kSecAttrAccount, account},
        };
        if (group) {
            attributes.insert(kSecAttrAccessGroup, *group);
        }
        return attributes;
    }

    OSStatus add(const QString &account, const QByteArray &data, const std::optional<QString> &group = std::nullopt)
    {
        QVariantMap attributes = query(account, group);
        attributes.insert(kSecValueData, data);
        return FileKeychain(m_path).SecItemAdd(attributes);
    }

    OSStatus read(const QString &account, const std::optional<QString> &group = std::nullopt)
    {
        QVariantMap attributes = query(account, group);
        attributes.insert(kSecReturnData, true);
        m_result.clear();
        return FileKeychain(m_path).SecItemCopyMatching(attributes, &m_result);
    }

    OSStatus remove(const QString &account, const std::optional<QString> &group = std::nullopt)
    {
        return FileKeychain(m_path).SecItemDelete(query(account, group));
    }

    QByteArray content() const
    {
        QFile file(m_path);
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    }

    void setContent(const QByteArray &content) const
    {
        QDir().mkpath(QFileInfo(m_path).path());
        QFile file(m_path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("demo/keychain.json"));
    const QString m_account = QStringLiteral("account");
    const QString m_groupA = QStringLiteral("A");
    const QString m_groupB = QStringLiteral("B");
    QVariant m_result;
};

} // namespace

TEST_F(FileKeychainTest, keepsAnyBytes)
{
    for (const QByteArray &data : {QByteArray(), QByteArray("a\0b", 3), QByteArray("\xff\xfe")}) {
        remove(m_account);
        EXPECT_EQ(add(m_account, data), errSecSuccess);
        EXPECT_EQ(read(m_account), errSecSuccess);
        EXPECT_EQ(m_result.metaType(), QMetaType::fromType<QByteArray>());
        EXPECT_EQ(m_result.toByteArray(), data);
    }
}

TEST_F(FileKeychainTest, anAbsentItemOrFileIsNotFound)
{
    EXPECT_EQ(read(m_account), errSecItemNotFound);
    EXPECT_EQ(remove(m_account), errSecItemNotFound);
    EXPECT_EQ(add(m_account, "value"), errSecSuccess);
    EXPECT_EQ(read(QStringLiteral("another")), errSecItemNotFound);
    EXPECT_EQ(remove(QStringLiteral("another")), errSecItemNotFound);
}

TEST_F(FileKeychainTest, addingNeverOverwrites)
{
    EXPECT_EQ(add(m_account, "first"), errSecSuccess);
    EXPECT_EQ(add(m_account, "second"), errSecDuplicateItem);
    EXPECT_EQ(read(m_account), errSecSuccess);
    EXPECT_EQ(m_result.toByteArray(), "first");
}

TEST_F(FileKeychainTest, groupsSeparateItemsAndTheirAbsenceMatchesAll)
{
    EXPECT_EQ(add(m_account, "a", m_groupA), errSecSuccess);
    EXPECT_EQ(read(m_account), errSecSuccess);
    EXPECT_EQ(m_result.toByteArray(), "a");
    EXPECT_EQ(read(m_account, m_groupB), errSecItemNotFound);
    EXPECT_EQ(read(m_account, QStringLiteral("")), errSecItemNotFound);

    EXPECT_EQ(add(m_account, "none"), errSecSuccess);
    EXPECT_EQ(add(m_account, "empty", QStringLiteral("")), errSecSuccess);
    EXPECT_EQ(add(m_account, "empty", QStringLiteral("")), errSecDuplicateItem);
    EXPECT_EQ(remove(m_account, QStringLiteral("")), errSecSuccess);
    EXPECT_EQ(read(m_account, m_groupA), errSecSuccess);
    EXPECT_EQ(remove(m_account), errSecSuccess);
    EXPECT_EQ(read(m_account), errSecItemNotFound);
}

TEST_F(FileKeychainTest, theFileBelongsToItsOwnerAlone)
{
    constexpr auto everyoneElse = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ReadOther
        | QFileDevice::WriteOther | QFileDevice::ExeGroup | QFileDevice::ExeOther;
    EXPECT_EQ(add(m_account, "value"), errSecSuccess);
    EXPECT_FALSE(QFile::permissions(m_path) & everyoneElse);

    QFile::setPermissions(m_path, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadOther);
    EXPECT_EQ(add(QStringLiteral("another"), "value"), errSecSuccess);
    EXPECT_FALSE(QFile::permissions(m_path) & everyoneElse);
}

TEST_F(FileKeychainTest, aFileThatIsNoKeychainIsReportedAndLeftAsItIs)
{
    for (const QByteArray &content :
         {QByteArray("nonsense"), QByteArray(), QByteArray("{}"), QByteArray("[7]"),
          QByteArray(R"([{"service": "a"}])"), QByteArray(R"([{"service": "a", "account": "b", "data": "?"}])"),
          QByteArray(R"([{"service": "a", "account": "b", "data": "", "access_group": 7}])")}) {
        setContent(content);
        EXPECT_EQ(read(m_account), errSecDecode) << content.constData();
        EXPECT_EQ(add(m_account, "value"), errSecDecode) << content.constData();
        EXPECT_EQ(remove(m_account), errSecDecode) << content.constData();
        EXPECT_EQ(this->content(), content);
    }
}

TEST_F(FileKeychainTest, whatCannotBeReadOrWrittenIsAnIOError)
{
    // A folder in the file's place, and a file in the folder's: neither is possible for the superuser either.
    QDir().mkpath(m_path);
    EXPECT_EQ(read(m_account), errSecIO);
    EXPECT_EQ(add(m_account, "value"), errSecIO);

    const QString file = m_folder.filePath(QStringLiteral("file"));
    QFile(file).open(QIODevice::WriteOnly);
    m_path = file + QStringLiteral("/keychain.json");
    EXPECT_EQ(add(m_account, "value"), errSecIO);
}

TEST_F(FileKeychainTest, aRefusedChangeLeavesTheFileAsItIs)
{
    EXPECT_EQ(add(m_account, "value"), errSecSuccess);
    const QByteArray before = content();
    EXPECT_EQ(add(m_account, "another"), errSecDuplicateItem);
    EXPECT_EQ(remove(QStringLiteral("absent")), errSecItemNotFound);
    EXPECT_EQ(content(), before);
}

TEST_F(FileKeychainTest, malformedQueriesAreRefused)
{
    FileKeychain keychain(m_path);
    EXPECT_EQ(keychain.SecItemAdd({}), errSecParam);
    EXPECT_EQ(keychain.SecItemCopyMatching({}, &m_result), errSecParam);
    EXPECT_EQ(keychain.SecItemDelete({}), errSecParam);
    EXPECT_FALSE(QFile::exists(m_path));
}

TEST_F(FileKeychainTest, severalWritersLoseNothing)
{
    std::vector<std::thread> writers;
    std::vector<OSStatus> statuses(4, errSecIO);
    writers.reserve(statuses.size());
    for (std::size_t index = 0; index < statuses.size(); ++index) {
        writers.emplace_back([this, index, &statuses] {
            statuses[index] = add(QString::number(index), QByteArray::number(int(index)));
        });
    }
    for (std::thread &writer : writers) {
        writer.join();
    }
    for (std::size_t index = 0; index < statuses.size(); ++index) {
        EXPECT_EQ(statuses[index], errSecSuccess);
        EXPECT_EQ(read(QString::number(index)), errSecSuccess);
        EXPECT_EQ(m_result.toByteArray(), QByteArray::number(int(index)));
    }
}

} // namespace tarnwik
