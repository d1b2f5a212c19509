#include "platform/qt/SettingsUserDefaults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwik {

namespace {

using testing::EndsWith;
using testing::HasSubstr;

const QString key = QStringLiteral("TarnwikAuthToken");

class UserDefaultsFailure : public testing::Test
{
protected:
    void write(const QByteArray &text) const
    {
        QFile file(m_path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    static QByteArray contents(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QStringList files() const
    {
        return QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }

    /// Storing fails, with one sentence that names the file.
    void expectRefusal(SettingsUserDefaults &defaults, const QString &value = QStringLiteral("new")) const
    {
        try {
            defaults.setString(value, key);
            ADD_FAILURE() << "it was stored";
        } catch (const UserDefaultsError &error) {
            EXPECT_THAT(error.what(), HasSubstr(m_path.toStdString()));
            EXPECT_THAT(error.what(), EndsWith("."));
            EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos);
        }
    }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("settings"));
    QString m_broken = m_path + QStringLiteral(".broken");
    SettingsUserDefaults m_defaults{m_path};
};

class BrokenUserDefaults : public UserDefaultsFailure, public testing::WithParamInterface<QByteArray>
{
};

TEST_P(BrokenUserDefaults, areKeptAsideAndStartedAfresh)
{
    write(GetParam());
    EXPECT_EQ(m_defaults.string(key), std::nullopt);
    EXPECT_EQ(contents(m_broken), GetParam());
    EXPECT_EQ(files(), QStringList{QStringLiteral("settings.broken")});

    m_defaults.setString(QStringLiteral("abc"), key);
    EXPECT_EQ(m_defaults.string(key), QStringLiteral("abc"));
    EXPECT_EQ(contents(m_broken), GetParam());
}

TEST_P(BrokenUserDefaults, areKeptAsideByAChangeToo)
{
    write(GetParam());
    m_defaults.setString(QStringLiteral("abc"), key);
    EXPECT_EQ(m_defaults.string(key), QStringLiteral("abc"));
    EXPECT_EQ(contents(m_broken), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Every, BrokenUserDefaults,
                         testing::Values(QByteArray("\0\x01\xff\xfe\x80 garbage", 13), QByteArray("not settings"),
                                         QByteArray("[General]\nTarnwikAuthToken=abc\n"),
                                         QByteArray("{\"TarnwikAuthToken\": \"ab"), QByteArray("[]"),
                                         QByteArray("{\"TarnwikAuthToken\": \"\xff\"}"), QByteArray("{} x")));

TEST_F(UserDefaultsFailure, nothingThatWasKeptAsideIsOverwritten)
{
    for (const char *text : {"first", "second", "third"}) {
        write(text);
        EXPECT_EQ(m_defaults.string(key), std::nullopt);
    }
    EXPECT_EQ(contents(m_broken), "first");
    EXPECT_EQ(contents(m_broken + QStringLiteral("-2")), "second");
    EXPECT_EQ(contents(m_broken + QStringLiteral("-3")), "third");
}

TEST_F(UserDefaultsFailure, aFolderInPlaceOfTheFileIsKeptAside)
{
    ASSERT_TRUE(QDir().mkpath(m_path + QStringLiteral("/inside")));
    m_defaults.setString(QStringLiteral("abc"), key);
    EXPECT_EQ(m_defaults.string(key), QStringLiteral("abc"));
    EXPECT_TRUE(QDir(m_broken + QStringLiteral("/inside")).exists());
}

TEST_F(UserDefaultsFailure, aPipeInPlaceOfTheFileBlocksNobody)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(m_path), 0600), 0);
    EXPECT_EQ(m_defaults.string(key), std::nullopt);
    m_defaults.setString(QStringLiteral("abc"), key);
    EXPECT_EQ(m_defaults.string(key), QStringLiteral("abc"));
    EXPECT_EQ(files(), (QStringList{QStringLiteral("settings"), QStringLiteral("settings.broken")}));
}

TEST_F(UserDefaultsFailure, anEntryThatIsNoStringIsNone)
{
    write(R"({"TarnwikAuthToken": 5, "Other": "kept"})");
    EXPECT_EQ(m_defaults.string(key), std::nullopt);
    m_defaults.setString(QStringLiteral("abc"), key);
    EXPECT_EQ(m_defaults.string(QStringLiteral("Other")), QStringLiteral("kept"));
}

TEST_F(UserDefaultsFailure, aFullDiskLosesNothingAndIsNotMadeUpForLater)
{
    m_defaults.setString(QStringLiteral("old"), key);
    const auto before = contents(m_path);

    // A file may grow to a few bytes here, as on a disk that has no more left.
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit unlimited = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &unlimited), 0);
    const rlimit limited{.rlim_cur = 256, .rlim_max = unlimited.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
    expectRefusal(m_defaults, QString(10'000, u'x'));
    EXPECT_EQ(m_defaults.string(key), QStringLiteral("old"));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &unlimited), 0);
    std::signal(SIGXFSZ, handler);

    EXPECT_EQ(contents(m_path), before);
    EXPECT_EQ(files(), QStringList{QStringLiteral("settings")});
    m_defaults.setString(QStringLiteral("other"), QStringLiteral("Other"));
    EXPECT_EQ(m_defaults.string(key), QStringLiteral("old"));
}

TEST_F(UserDefaultsFailure, aFolderThatCannotBeMadeIsToldOf)
{
    write("a file");
    m_path += QStringLiteral("/settings");
    SettingsUserDefaults defaults(m_path);
    expectRefusal(defaults);
    EXPECT_EQ(defaults.string(key), std::nullopt);
}

/// What permissions forbid does not hold the superuser up: these run as somebody else, in processes of their own.
class UserDefaultsPermissions : public UserDefaultsFailure
{
protected:
    void SetUp() override { testing::FLAGS_gtest_death_test_style = "threadsafe"; }

    /// Ends the process, with success unless an expectation of \a check failed.
    [[noreturn]] void runAsNobody(const std::function<void()> &check)
    {
        const uid_t nobody = 65534;
        if (geteuid() == 0) {
            EXPECT_EQ(chown(QFile::encodeName(m_folder.path()), nobody, nobody), 0);
            EXPECT_EQ(setresgid(nobody, nobody, nobody), 0);
            EXPECT_EQ(setresuid(nobody, nobody, nobody), 0);
        }
        check();
        chmod(QFile::encodeName(m_folder.path()), 0700);
        m_folder.remove();
        std::_Exit(HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
    }
};

TEST_F(UserDefaultsPermissions, anUnwritableFolderIsToldOf)
{
    EXPECT_EXIT(runAsNobody([this] {
                    m_defaults.setString(QStringLiteral("old"), key);
                    chmod(QFile::encodeName(m_folder.path()), 0500);
                    expectRefusal(m_defaults);
                    EXPECT_EQ(m_defaults.string(key), QStringLiteral("old"));
                }),
                testing::ExitedWithCode(EXIT_SUCCESS), "");
}

TEST_F(UserDefaultsPermissions, aReadOnlyFileStaysAsItIs)
{
    EXPECT_EXIT(runAsNobody([this] {
                    m_defaults.setString(QStringLiteral("old"), key);
                    chmod(QFile::encodeName(m_path), 0400);
                    expectRefusal(m_defaults);
                    EXPECT_EQ(m_defaults.string(key), QStringLiteral("old"));
                }),
                testing::ExitedWithCode(EXIT_SUCCESS), "");
}

TEST_F(UserDefaultsPermissions, anUnreadableFileIsNotTakenForABrokenOne)
{
    EXPECT_EXIT(runAsNobody([this] {
                    m_defaults.setString(QStringLiteral("old"), key);
                    chmod(QFile::encodeName(m_path), 0);
                    EXPECT_EQ(m_defaults.string(key), std::nullopt);
                    expectRefusal(m_defaults);
                    EXPECT_EQ(files(), QStringList{QStringLiteral("settings")});
                    chmod(QFile::encodeName(m_path), 0600);
                    EXPECT_EQ(m_defaults.string(key), QStringLiteral("old"));
                }),
                testing::ExitedWithCode(EXIT_SUCCESS), "");
}

TEST_F(UserDefaultsPermissions, aBrokenFileThatCannotBeKeptAsideStays)
{
    EXPECT_EXIT(runAsNobody([this] {
                    write("garbage");
                    chmod(QFile::encodeName(m_folder.path()), 0500);
                    EXPECT_EQ(m_defaults.string(key), std::nullopt);
                    expectRefusal(m_defaults);
                    EXPECT_EQ(contents(m_path), "garbage");
                }),
                testing::ExitedWithCode(EXIT_SUCCESS), "");
}

} // namespace

} // namespace tarnwik
