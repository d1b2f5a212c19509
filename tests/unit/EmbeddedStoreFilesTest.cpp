#include "EmbeddedStoreFixture.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <iostream>
#include <stdexcept>
#include <vector>

namespace tarnwik::test {

namespace {

using namespace std::chrono_literals;

class EmbeddedStoreFiles : public EmbeddedStoreTest
{
protected:
    void SetUp() override { testing::FLAGS_gtest_death_test_style = "threadsafe"; }

    QStringList filesAside(const char *name) const
    {
        return QDir(m_path).entryList({QString::fromLatin1(name) + QStringLiteral(".broken-*")}, QDir::Files);
    }

    QString nameAside(const char *name) const
    {
        return QString::fromLatin1(name) + now().toLocalTime().toString(QStringLiteral("'.broken-'yyyyMMdd-HHmmss"));
    }

    /// What permissions forbid does not hold the superuser up: \a check runs as somebody else, in a process of its own,
    /// which this ends; with success unless an expectation failed.
    [[noreturn]] void runAsNobody(const std::function<void()> &check)
    {
        const uid_t nobody = 65534;
        if (geteuid() == 0) {
            EXPECT_EQ(chown(QFile::encodeName(m_folder.path()), nobody, nobody), 0);
            EXPECT_EQ(setresgid(nobody, nobody, nobody), 0);
            EXPECT_EQ(setresuid(nobody, nobody, nobody), 0);
        }
        // The fixture's own folder is the superuser's.
        m_path = m_folder.filePath(QStringLiteral("own"));
        m_store = open();
        configure("success");
        check();
        permit(m_path, 0700);
        _exit(HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
    }

    static void permit(const QString &path, mode_t mode) { chmod(QFile::encodeName(path), mode); }

    /// Runs \a action in \a count processes at once; whether all of them succeeded.
    static bool runInProcesses(int count, const std::function<void(int)> &action)
    {
        std::vector<pid_t> children;
        for (int index = 0; index < count; ++index) {
            const pid_t child = fork();
            if (child == 0) {
                try {
                    action(index);
                } catch (const std::exception &error) {
                    std::cerr << error.what() << '\n';
                    _exit(EXIT_FAILURE);
                }
                _exit(EXIT_SUCCESS);
            }
            children.push_back(child);
        }
        bool isGood = true;
        for (const pid_t child : children) {
            int status = 0;
            isGood = waitpid(child, &status, 0) == child && status == 0 && isGood;
        }
        return isGood;
    }
};

} // namespace

TEST_F(EmbeddedStoreFiles, belongToTheirOwnerAlone)
{
    buy(monthly);
    for (const char *name : {"transactions.json", "identity.pem", "root.pem"}) {
        struct stat status{};
        ASSERT_EQ(stat(QFile::encodeName(file(name)), &status), 0) << name;
        EXPECT_EQ(status.st_mode & 0777U, 0600U) << name;
    }
    EXPECT_FALSE(content(file("root.pem")).contains("PRIVATE"));
    EXPECT_EQ(embeddedStoreRoot(m_path), content(file("root.pem")));
}

TEST_F(EmbeddedStoreFiles, aBrokenRecordIsKeptAsideAndTheNextOperationStartsAfresh)
{
    const quint64 former = buy(monthly).verification->transaction.id;
    for (const QByteArray &broken :
         {QByteArray(), QByteArray("\x00\xff nonsense", 11), content(file("transactions.json")).chopped(3),
          QByteArray(R"({"last_serial": 1, "transactions": [{"id": 1, "revision": 2, "is_finished": false, "jws": ""}],
                         "pending_purchases": []})")}) {
        write("transactions.json", broken);
        const QString aside = file(nameAside("transactions.json").toLatin1());
        const QString sentence = failure([&] { entitledTo(m_store); });
        EXPECT_TRUE(sentence.endsWith(
            QStringLiteral("The file “%1” was renamed to “%2”.").arg(file("transactions.json"), aside)))
            << sentence.toStdString();
        EXPECT_EQ(content(aside), broken);
        EXPECT_FALSE(QFile::exists(file("transactions.json")));
        EXPECT_TRUE(entitledTo(m_store).isEmpty());
        m_time += 1s;
        const PurchaseResult bought = buy(monthly);
        EXPECT_FALSE(bought.verification->verificationError);
        EXPECT_GT(bought.verification->transaction.id, former) << "numbers are not given again";
    }
    EXPECT_EQ(filesAside("transactions.json").size(), 4);
}

TEST_F(EmbeddedStoreFiles, nothingThatWasKeptAsideIsOverwritten)
{
    for (int round = 0; round < 3; ++round) {
        write("transactions.json", QByteArray::number(round));
        EXPECT_THROW(control().revoke(monthly), StoreError);
    }
    const QString name = nameAside("transactions.json");
    EXPECT_EQ(content(file(name.toLatin1())), "0");
    EXPECT_EQ(content(file(QString(name + QStringLiteral("-2")).toLatin1())), "1");
    EXPECT_EQ(content(file(QString(name + QStringLiteral("-3")).toLatin1())), "2");
}

TEST_F(EmbeddedStoreFiles, aBrokenConfigurationFailsOneOperation)
{
    buy(monthly);
    const QByteArray broken = storeConfiguration("sucess");
    const std::vector<std::function<void()>> operations{[&] { run(m_store->products({monthly}, {})); },
                                                        [&] { buy(yearly); },
                                                        [&] { run(m_store->sync({})); },
                                                        [&] { control().renew(monthly); },
                                                        [&] { control().purchaseElsewhere(yearly); },
                                                        [&] { control().approve(); }};
    for (const auto &operation : operations) {
        write("configuration.json", broken);
        const QString sentence = failure(operation);
        EXPECT_TRUE(sentence.startsWith(QStringLiteral("The store configuration is refused: next_purchase.outcome")))
            << sentence.toStdString();
        EXPECT_TRUE(sentence.contains(file("configuration.json")) && sentence.contains(QStringLiteral(".broken-")));
        EXPECT_FALSE(QFile::exists(file("configuration.json")));
        m_time += 1s;
    }
    const QStringList aside = filesAside("configuration.json");
    EXPECT_EQ(aside.size(), qsizetype(operations.size()));
    for (const QString &name : aside)
        EXPECT_EQ(content(file(name.toLatin1())), broken);
    EXPECT_EQ(entitledTo(m_store), QStringList{monthly});
    Running<> sync(m_store->sync({}));
    settleEvents();
    m_clock->advance(500ms);
    EXPECT_NO_THROW(sync.result()) << "without a file the built-in configuration holds";
}

TEST_F(EmbeddedStoreFiles, aBrokenIdentityIsKeptAsideAndItsTransactionsAreUnverified)
{
    buy(monthly);
    const QByteArray broken = content(file("identity.pem")).left(100);
    write("identity.pem", broken);
    EXPECT_EQ(entitledTo(m_store), QStringList{monthly}) << "reading needs the root alone";
    const QString sentence = failure([&] { buy(yearly); });
    EXPECT_TRUE(sentence.contains(file("identity.pem"))) << sentence.toStdString();
    ASSERT_EQ(filesAside("identity.pem").size(), 1);
    EXPECT_EQ(content(file(filesAside("identity.pem")[0].toLatin1())), broken);
    EXPECT_FALSE(buy(yearly).verification->verificationError);
    EXPECT_EQ(entitledTo(m_store), (QStringList{monthly + u'?', yearly}));
}

TEST_F(EmbeddedStoreFiles, aRootThatWasChangedIsMendedByTheNextPurchase)
{
    buy(monthly);
    const auto root = embeddedStoreRoot(m_path);
    for (const QByteArray &changed : {QByteArray("nonsense"), QByteArray()}) {
        write("root.pem", changed);
        EXPECT_EQ(entitledTo(m_store), QStringList{monthly + u'?'});
        EXPECT_FALSE(buy(monthly).verification->verificationError);
        EXPECT_EQ(embeddedStoreRoot(m_path), root);
    }
    QFile::remove(file("root.pem"));
    EXPECT_EQ(entitledTo(m_store), QStringList{monthly});
    EXPECT_EQ(embeddedStoreRoot(m_path), root);
}

TEST_F(EmbeddedStoreFiles, finishingNeverFails)
{
    const StoreTransaction bought = buy(monthly).verification->transaction;
    StoreTransaction unknown;
    unknown.id = 7;
    const QByteArray before = content(file("transactions.json"));
    EXPECT_NO_THROW(run(m_store->finish(unknown)));
    EXPECT_EQ(content(file("transactions.json")), before);
    write("transactions.json", "nonsense");
    EXPECT_NO_THROW(run(m_store->finish(bought)));
    EXPECT_EQ(content(file("transactions.json")), "nonsense") << "nobody would be told";
    EXPECT_THROW(entitledTo(m_store), StoreError);
    EXPECT_EQ(filesAside("transactions.json").size(), 1);
}

TEST_F(EmbeddedStoreFiles, inAReadOnlyFolderNothingChangesAndReadingWorks)
{
    EXPECT_EXIT(runAsNobody([this] {
                    buy(monthly);
                    const QByteArray before = content(file("transactions.json"));
                    permit(m_path, 0500);
                    EXPECT_EQ(entitledTo(m_store), QStringList{monthly});
                    EXPECT_EQ(failure([&] { buy(yearly); }),
                              QStringLiteral("Nothing can be written to the store’s folder “%1”.").arg(m_path));
                    EXPECT_NO_THROW(run(m_store->finish(currentEntitlements(m_store)[0].transaction)));
                    EXPECT_EQ(content(file("transactions.json")), before);
                    permit(m_path, 0700);
                    EXPECT_EQ(entitledTo(m_store), QStringList{monthly});
                }),
                testing::ExitedWithCode(EXIT_SUCCESS), "");
}

TEST_F(EmbeddedStoreFiles, aBrokenFileThatCannotBeRenamedStaysAndIsToldOf)
{
    EXPECT_EXIT(runAsNobody([this] {
                    write("transactions.json", "nonsense");
                    permit(m_path, 0500);
                    for (int round = 0; round < 2; ++round) {
                        const QString sentence = failure([&] { entitledTo(m_store); });
                        EXPECT_TRUE(sentence.contains(QStringLiteral("could not be renamed, and is left as it is")))
                            << sentence.toStdString();
                        EXPECT_EQ(content(file("transactions.json")), "nonsense");
                        m_time += 1s;
                    }
                    EXPECT_TRUE(filesAside("transactions.json").isEmpty());
                }),
                testing::ExitedWithCode(EXIT_SUCCESS), "");
}

TEST_F(EmbeddedStoreFiles, aFullDiskLosesNothing)
{
    buy(monthly);
    const QByteArray before = content(file("transactions.json"));
    ASSERT_TRUE(runInProcesses(1, [this](int) {
        // No file may grow beyond this, as if there were no room for more.
        const rlimit limit{1000, 1000};
        (void)std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
        const QString sentence = failure([&] { control().revoke(monthly); });
        if (!sentence.startsWith(
                QStringLiteral("The store’s file “%1” cannot be written").arg(file("transactions.json"))))
            throw std::runtime_error(sentence.toStdString());
    }));
    EXPECT_EQ(content(file("transactions.json")), before);
    EXPECT_EQ(entitledTo(m_store), QStringList{monthly});
}

TEST_F(EmbeddedStoreFiles, anUnreadableFileIsNotTakenForABrokenOne)
{
    EXPECT_EXIT(
        runAsNobody([this] {
            buy(monthly);
            for (const char *name : {"transactions.json", "configuration.json", "identity.pem"}) {
                permit(file(name), 0);
                const QString sentence = failure([&] { buy(yearly); });
                EXPECT_TRUE(sentence.startsWith(QStringLiteral("The store’s file “%1” cannot be read").arg(file(name))))
                    << sentence.toStdString();
                permit(file(name), 0600);
                EXPECT_TRUE(filesAside(name).isEmpty());
            }
            EXPECT_EQ(entitledTo(m_store), QStringList{monthly});
        }),
        testing::ExitedWithCode(EXIT_SUCCESS), "");
}

TEST_F(EmbeddedStoreFiles, programsThatStartAtOnceShareOneIdentityAndLoseNothing)
{
    constexpr int programs = 4;
    write("configuration.json", [] {
        QByteArrayList products;
        for (int index = 0; index < programs; ++index)
            products << R"({"id": "p)" + QByteArray::number(index)
                    + R"(", "period": "P1M", "display_prices": {"USA": "$1"}})";
        return R"({"storefront": "USA", "products": [)" + products.join(',') + "]}";
    }());
    ASSERT_TRUE(
        runInProcesses(programs, [this](int index) { control().purchaseElsewhere(QStringLiteral("p%1").arg(index)); }));
    const UpdateListener listener(open());
    ASSERT_TRUE(listener.hears(programs));
    QSet<quint64> ids;
    QSet<QString> products;
    for (const VerificationResult &result : listener.results()) {
        EXPECT_FALSE(result.verificationError) << "signed with an identity that is no more";
        ids.insert(result.transaction.id);
        products.insert(result.transaction.productID);
    }
    EXPECT_EQ(ids.size(), programs);
    EXPECT_EQ(products.size(), programs);
}

} // namespace tarnwik::test
