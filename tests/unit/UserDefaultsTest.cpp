#include "platform/qt/SettingsUserDefaults.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <thread>

namespace tarnwik {

namespace {

const QString key = QStringLiteral("TarnwikAuthToken");

unsigned modeOf(const QString &path)
{
    struct stat status = {};
    EXPECT_EQ(stat(QFile::encodeName(path), &status), 0);
    return status.st_mode & 0777U;
}

class UserDefaultsTest : public testing::Test
{
protected:
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("a/b/settings.json"));
    SettingsUserDefaults m_defaults{m_path};
};

TEST_F(UserDefaultsTest, withoutAFileHoldNothingAndMakeNone)
{
    EXPECT_EQ(m_defaults.string(key), std::nullopt);
    EXPECT_FALSE(QFile::exists(m_path));
}

TEST_F(UserDefaultsTest, keepWhatIsStored)
{
    m_defaults.setString(QStringLiteral("abc"), key);
    EXPECT_EQ(m_defaults.string(key), QStringLiteral("abc"));
    EXPECT_EQ(SettingsUserDefaults(m_path).string(key), QStringLiteral("abc"));
    EXPECT_EQ(m_defaults.string(QStringLiteral("Other")), std::nullopt);
}

TEST_F(UserDefaultsTest, replaceAndRemove)
{
    m_defaults.setString(QStringLiteral("one"), key);
    m_defaults.setString(QStringLiteral("two"), key);
    m_defaults.setString(QStringLiteral("other"), QStringLiteral("Other"));
    EXPECT_EQ(m_defaults.string(key), QStringLiteral("two"));
    m_defaults.removeObject(key);
    EXPECT_EQ(m_defaults.string(key), std::nullopt);
    EXPECT_EQ(m_defaults.string(QStringLiteral("Other")), QStringLiteral("other"));
}

TEST_F(UserDefaultsTest, removingWhatIsNotThereIsFine)
{
    EXPECT_NO_THROW(m_defaults.removeObject(key));
}

TEST_F(UserDefaultsTest, seeAtOnceWhatAnotherWrote)
{
    SettingsUserDefaults other(m_path);
    for (int i = 0; i < 20; ++i) {
        // Of one size, and mostly within one tick of the file system's clock.
        const QString value = QString::number(10 + i);
        other.setString(value, key);
        ASSERT_EQ(m_defaults.string(key), value);
        m_defaults.setString(value, QStringLiteral("Other"));
        ASSERT_EQ(other.string(QStringLiteral("Other")), value);
    }
}

TEST_F(UserDefaultsTest, changesAtTheSameTimeDoNotUndoEachOther)
{
    const auto storeMany = [this](const QString &prefix) {
        SettingsUserDefaults defaults(m_path);
        for (int i = 0; i < 10; ++i)
            defaults.setString(QStringLiteral("value"), prefix + QString::number(i));
    };
    std::thread other(storeMany, QStringLiteral("other"));
    storeMany(QStringLiteral("this"));
    other.join();
    for (int i = 0; i < 10; ++i) {
        EXPECT_TRUE(m_defaults.string(QStringLiteral("other") + QString::number(i))) << i;
        EXPECT_TRUE(m_defaults.string(QStringLiteral("this") + QString::number(i))) << i;
    }
}

TEST_F(UserDefaultsTest, areTheirOwnersAlone)
{
    const auto before = umask(0);
    m_defaults.setString(QStringLiteral("abc"), key);
    m_defaults.setString(QStringLiteral("def"), key);
    umask(before);
    EXPECT_EQ(modeOf(m_path), 0600U);
    EXPECT_EQ(modeOf(m_folder.filePath(QStringLiteral("a/b"))), 0700U);
}

TEST_F(UserDefaultsTest, leaveNoOtherFileBehind)
{
    m_defaults.setString(QStringLiteral("abc"), key);
    m_defaults.removeObject(key);
    const QDir folder(m_folder.filePath(QStringLiteral("a/b")));
    EXPECT_EQ(folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{QStringLiteral("settings.json")});
}

TEST_F(UserDefaultsTest, aReaderNeverSeesAHalfWrittenFile)
{
    m_defaults.setString(QStringLiteral("abc"), key);
    // Whoever opened the file before a change goes on reading what it held then.
    QFile reader(m_path);
    ASSERT_TRUE(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    m_defaults.setString(QStringLiteral("changed"), key);
    const QByteArray text = reader.readAll();
    EXPECT_TRUE(text.contains("abc"));
    EXPECT_FALSE(text.contains("changed"));
}

class UserDefaultsValue : public UserDefaultsTest, public testing::WithParamInterface<QString>
{
};

TEST_P(UserDefaultsValue, survivesTheRoundTrip)
{
    m_defaults.setString(GetParam(), key);
    const auto read = SettingsUserDefaults(m_path).string(key);
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, GetParam());
    m_defaults.setString(QStringLiteral("value"), GetParam());
    EXPECT_EQ(SettingsUserDefaults(m_path).string(GetParam()), QStringLiteral("value")) << "as a key";
}

INSTANTIATE_TEST_SUITE_P(Every, UserDefaultsValue,
                         testing::Values(QString(), QStringLiteral(" "), QStringLiteral("  a  "),
                                         QStringLiteral("a%20b%"), QStringLiteral("a,b"), QStringLiteral("@Invalid()"),
                                         QStringLiteral("@"), QStringLiteral("a;b"), QStringLiteral("a=b"),
                                         QStringLiteral("[a]"), QStringLiteral("a/b\\c"), QStringLiteral("\"'"),
                                         QStringLiteral("\n\r\t"), QStringLiteral("a") + QChar(0) + QStringLiteral("b"),
                                         QStringLiteral("ü€例え😀\u2028\ufeff"), QString(QChar(0xffff)),
                                         QString(100'000, u'x')));

} // namespace

} // namespace tarnwik
