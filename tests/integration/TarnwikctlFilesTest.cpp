#include "ServiceProcess.h"
#include "TarnwikctlFixture.h"

#include <QDir>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

namespace tarnwik {

namespace {

using service::ServiceProcess;
using test::ProgramResult;
using test::text;
using test::words;

/// What becomes of the client's files, and of the client without them.
class TarnwikctlFiles : public test::TarnwikctlFixture
{
protected:
    ProgramResult signIn(std::function<void()> childSetup = {})
    {
        return run(words("sign-in --email demo@tarnwik.example --server") << m_service.waitForOriginOnce(), "demo\n",
                   std::move(childSetup));
    }

    std::optional<QByteArray> defaults() { return m_home.read(text(defaultsFile)); }
    QStringList files() { return QDir(m_home.path(text("config/tarnwik"))).entryList(QDir::Files | QDir::Hidden); }

    /// The one sentence about the settings file that ends with \a reason.
    QByteArray cannotBeWritten(const QByteArray &reason)
    {
        return "The settings file “" + m_home.path(text(defaultsFile)).toUtf8() + "” cannot be written: " + reason;
    }

    struct Service : ServiceProcess
    {
        QString waitForOriginOnce()
        {
            if (origin.isEmpty())
                origin = waitForOrigin();
            return origin;
        }
        QString origin;
    };

    Service m_service;
    static constexpr auto defaultsFile = "config/tarnwik/defaults.json";
    static constexpr QFile::Permissions readOnlyFolder = QFile::ReadOwner | QFile::ExeOwner;
};

TEST_F(TarnwikctlFiles, corruptDefaultsAreKeptAsideAndStartedAfresh)
{
    for (const QByteArray &broken :
         {QByteArray("{\"TarnwikAuthToken\": \"abc"), QByteArray("\x00\xff\x01", 3), QByteArray("[]"), QByteArray()}) {
        m_home.write(text(defaultsFile), broken);
        EXPECT_EQ(run("nodes"), failure("Not signed in.", 3));
        EXPECT_EQ(files(), QStringList{text("defaults.json.broken")});
        EXPECT_EQ(m_home.read(text("config/tarnwik/defaults.json.broken")), broken);
        EXPECT_EQ(signIn().status, 0);
        EXPECT_EQ(run("nodes").status, 0);
        QDir(m_home.path(text("config"))).removeRecursively();
    }
}

TEST_F(TarnwikctlFiles, defaultsOfTheWrongTypeAreNone)
{
    m_home.write(text(defaultsFile), R"({"TarnwikAuthToken": 5, "TarnwikServerURL": [u"x"]})");
    EXPECT_EQ(run("nodes"), failure("Not signed in.", 3));
    EXPECT_EQ(json("status")[u"server_url"].toString(), text("https://api.tarnwik.example"));
}

TEST_F(TarnwikctlFiles, aStoredServerThatIsNoURLIsToldWithoutACrash)
{
    m_home.write(text(defaultsFile), R"({"TarnwikAuthToken": "abc", "TarnwikServerURL": "https://[nonsense"})");
    const auto result = run("status");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error.count('\n'), 1);
    EXPECT_TRUE(result.output.contains("https://[nonsense"));
}

TEST_F(TarnwikctlFiles, aFolderThatTakesNoFilesFailsTheSignIn)
{
    QDir().mkpath(m_home.path(text("config/tarnwik")));
    QFile::setPermissions(m_home.path(text("config/tarnwik")), readOnlyFolder);
    EXPECT_EQ(signIn(test::obeyFilePermissions), failure(cannotBeWritten("nothing can be written to its folder.")));
    EXPECT_EQ(files(), QStringList());
    QFile::setPermissions(m_home.path(text("config/tarnwik")), readOnlyFolder | QFile::WriteOwner);
}

TEST_F(TarnwikctlFiles, aFolderThatTakesNoFilesLeavesTheSessionAsItWas)
{
    EXPECT_EQ(signIn().status, 0);
    const auto before = defaults();
    QFile::setPermissions(m_home.path(text("config/tarnwik")), readOnlyFolder);
    EXPECT_EQ(signIn(test::obeyFilePermissions).status, 1);
    EXPECT_EQ(run(words("sign-out"), {}, test::obeyFilePermissions).status, 1);
    EXPECT_EQ(defaults(), before);
    QFile::setPermissions(m_home.path(text("config/tarnwik")), readOnlyFolder | QFile::WriteOwner);
}

TEST_F(TarnwikctlFiles, aHomeThatCannotBeWrittenFailsWithASentence)
{
    for (const char *variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "HOME"})
        m_home.environment.remove(text(variable));
    for (const char *home : {"/proc/self", "/dev/null"}) {
        m_home.environment.insert(text("HOME"), text(home));
        for (const auto &result :
             {signIn(test::obeyFilePermissions),
              run(words("--demo sign-in --email demo@tarnwik.example"), "demo\n", test::obeyFilePermissions)}) {
            EXPECT_EQ(result.status, 1) << home;
            EXPECT_EQ(result.output, "") << home;
            EXPECT_EQ(result.error.count('\n'), 1) << result.error.constData();
        }
        const auto status = run(words("--demo status"), {}, test::obeyFilePermissions);
        EXPECT_EQ(status.status, 0);
        EXPECT_EQ(status.error, "");
    }
}

TEST_F(TarnwikctlFiles, noHomeAtAllIsNoCrash)
{
    for (const char *variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "HOME"})
        m_home.environment.remove(text(variable));
    const auto result = run("--version");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    const auto usage = run("--demo status now");
    EXPECT_EQ(usage.status, 2);
}

TEST_F(TarnwikctlFiles, aLimitOnFilesFailsTheSignInAndLeavesTheSessionAsItWas)
{
    EXPECT_EQ(signIn().status, 0);
    const auto before = defaults();
    const auto listing = files();
    const auto result =
        run(words("sign-in --email demo@tarnwik.example --server") << m_service.origin + u'/', "demo\n", [] {
            // Writing fails as it does on a full disk.
            const rlimit none{};
            setrlimit(RLIMIT_FSIZE, &none);
            ::signal(SIGXFSZ, SIG_IGN);
        });
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.error.count('\n'), 1) << result.error.constData();
    EXPECT_EQ(defaults(), before);
    EXPECT_EQ(files(), listing);
    EXPECT_EQ(run("nodes").status, 0);
}

/// Runs tarnwikctl with a full disk where its files lie.
class TarnwikctlFullDisk : public TarnwikctlFiles
{
protected:
    /// The result of a shell script in a mount namespace of its own; its first argument is the program.
    ProgramResult shell(const QString &script, const QStringList &arguments, const QByteArray &input = {})
    {
        QStringList words = test::words(geteuid() == 0 ? "--mount" : "--user --map-root-user --mount");
        words << test::words("bash -c") << script << QStringLiteral(TARNWIKCTL_PROGRAM) << arguments;
        return test::Program(QStringLiteral("unshare"), words, {m_home.environment, input, nullptr, {}}).result();
    }

    void SetUp() override
    {
        if (shell(QStringLiteral("true"), {}).status != 0)
            GTEST_SKIP() << "This machine does not allow namespaces.";
    }
};

TEST_F(TarnwikctlFullDisk, failsTheSignInAndLeavesTheSessionAsItWas)
{
    QDir().mkpath(m_home.path(text("config")));
    const QString script = QStringLiteral(R"shell(
        mount -t tmpfs -o size=16k tmpfs "$XDG_CONFIG_HOME" && cd "$XDG_CONFIG_HOME" && mkdir tarnwik || exit 90
        echo '{"TarnwikAuthToken":"old","TarnwikServerURL":"https://old.example"}' > tarnwik/defaults.json
        dd if=/dev/zero of=filler bs=4k 2>/dev/null
        before=$(ls -A tarnwik; cat tarnwik/defaults.json)
        "$0" "$@"; status=$?
        [ "$before" = "$(ls -A tarnwik; cat tarnwik/defaults.json)" ] || exit 91
        exit $status)shell");
    const auto result = shell(
        script, words("sign-in --email demo@tarnwik.example --server") << m_service.waitForOriginOnce(), "demo\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(result.error.startsWith(cannotBeWritten(""))) << result.error.constData();
    EXPECT_EQ(result.error.count('\n'), 1) << result.error.constData();
}

TEST_F(TarnwikctlFullDisk, failsTheDemoWithASentence)
{
    QDir().mkpath(m_home.path(text("data")));
    const QString script = QStringLiteral(R"shell(
        mount -t tmpfs -o size=16k tmpfs "$XDG_DATA_HOME" || exit 90
        dd if=/dev/zero of="$XDG_DATA_HOME/filler" bs=4k 2>/dev/null
        exec "$0" "$@")shell");
    const auto result = shell(script, words("--demo sign-in --email demo@tarnwik.example"), "demo\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.error.count('\n'), 1) << result.error.constData();
}

TEST_F(TarnwikctlFiles, outputThatGoesNowhereFailsTheCommand)
{
    signIntoDemo();
    for (const char *command : {"--demo nodes", "--demo --json status", "--help", "--demo watch"}) {
        const QString script = QStringLiteral("\"$0\" %1 > /dev/full").arg(text(command));
        test::Program shell(text("bash"), {text("-c"), script, text(TARNWIKCTL_PROGRAM)},
                            {m_home.environment, {}, nullptr, {}});
        EXPECT_EQ(shell.result(), failure("The output cannot be written: No space left on device.")) << command;
    }
}

TEST_F(TarnwikctlFiles, brokenFilesOfTheDemoAreToldWithoutACrash)
{
    signIntoDemo();
    for (const char *name : {"service.sqlite", "keychain.json", "vpn/tunnel.json"}) {
        m_home.write(text("data/tarnwik/demo/") + text(name), QByteArray(5000, '\xfe'));
        const auto result = run("--demo connect");
        const bool isStartedAfresh = QByteArray(name) == "vpn/tunnel.json";
        EXPECT_EQ(result.status, isStartedAfresh ? 0 : 1) << name << ": " << result.error.constData();
        EXPECT_EQ(result.error.count('\n'), isStartedAfresh ? 0 : 1) << result.error.constData();
        QFile::remove(m_home.path(text("data/tarnwik/demo/") + text(name)));
        signIntoDemo();
    }
}

} // namespace

} // namespace tarnwik
