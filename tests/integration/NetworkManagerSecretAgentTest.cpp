#include "support/EventLoop.h"
#include "support/networkmanager/NetworkManagerFixture.h"

#include "platform/linux/NetworkManagerEndReason.h"
#include "platform/linux/NetworkManagerNames.h"

#include <QCryptographicHash>
#include <QDBusConnectionInterface>
#include <QDBusPendingCall>
#include <QDirIterator>
#include <QFile>

namespace tarnwik {

namespace {

using test::run;
using test::StatusLog;

const QString name = QStringLiteral("Tarnwik");

constexpr auto noSecrets = uint(NetworkManagerEndReason::NoSecrets);

class NetworkManagerAgent : public test::NetworkManagerTest
{
protected:
    void SetUp() override
    {
        NetworkManagerTest::SetUp();
        setProviderMode("secrets");
        QFile::remove(keyDigestFile());
    }

    static QString keyDigestFile() { return directory() + QStringLiteral("/provider-key"); }

    /// The SHA-256 of the key that the provider was given.
    static QByteArray keyDigest()
    {
        QFile file(keyDigestFile());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// How often the daemon, in all its lives, says that an agent has registered.
    static qsizetype registrations()
    {
        QFile file(directory() + QStringLiteral("/log/networkmanager.log"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll().count("agent registered");
    }

    static QByteArray digest(const QByteArray &key)
    {
        return QCryptographicHash::hash(key, QCryptographicHash::Sha256).toHex();
    }

    /// Starts a configuration once, so that the agent is registered and gives the key for it, and stops it again.
    std::shared_ptr<TunnelConfiguration> servedOnce()
    {
        auto configuration = saved();
        const StatusLog log(*manager, configuration);
        run(configuration->startVPNTunnel());
        EXPECT_TRUE(log.waitFor(VPNStatus::Connected));
        run(configuration->stopVPNTunnel());
        EXPECT_TRUE(log.waitFor(VPNStatus::Disconnected));
        keychain->lookUps = 0;
        QFile::remove(keyDigestFile());
        return configuration;
    }

    void expectRefusal(OSStatus status, const QString &sentence)
    {
        keychain->refusal = status;
        const auto configuration = saved();
        const StatusLog log(*manager, configuration);
        run(configuration->startVPNTunnel());
        ASSERT_TRUE(test::spinUntil([&] { return configuration->lastDisconnectError().has_value(); }));
        EXPECT_TRUE(log.waitFor(VPNStatus::Disconnected));
        EXPECT_EQ(configuration->lastDisconnectError()->toStdString(), sentence.toStdString());
        EXPECT_EQ(keyDigest(), QByteArray());
    }
};

TEST_F(NetworkManagerAgent, givesTheProviderTheKeyFromTheKeychain)
{
    const auto configuration = saved();
    const StatusLog log(*manager, configuration);
    run(configuration->startVPNTunnel());
    EXPECT_TRUE(log.waitFor(VPNStatus::Connected));
    EXPECT_EQ(keyDigest(), digest(test::privateKey));
}

TEST_F(NetworkManagerAgent, theKeyIsInNoFile)
{
    servedOnce();
    run(saved()->startVPNTunnel());
    control("restart");
    int files = 0;
    QDirIterator entries(directory(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        QFile file(entries.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
        EXPECT_FALSE(file.readAll().contains(test::privateKey)) << file.fileName().toStdString();
        ++files;
    }
    EXPECT_GT(files, 5);
}

TEST_F(NetworkManagerAgent, aMissingKeyIsToldWithTheKeychainsStatus)
{
    expectRefusal(errSecItemNotFound, QStringLiteral("The private key is not in the keychain (status -25300)."));
}

TEST_F(NetworkManagerAgent, aLockedKeychainIsToldWithItsStatus)
{
    expectRefusal(errSecInteractionNotAllowed,
                  QStringLiteral("The private key could not be read from the keychain (status -25308)."));
}

TEST_F(NetworkManagerAgent, aDismissedUnlockPromptIsToldWithItsStatus)
{
    expectRefusal(errSecUserCanceled,
                  QStringLiteral("The private key could not be read from the keychain (status -128)."));
}

TEST_F(NetworkManagerAgent, withoutAStartThereIsNoAgentAndTheProviderGetsNoKey)
{
    const test::EndLog ends;
    saved();
    EXPECT_EQ(ends.waitFor(activate(pathOf(name))), noSecrets);
    EXPECT_EQ(keychain->lookUps, 0);
}

TEST_F(NetworkManagerAgent, servesAStartFromElsewhereOnceTheProgramHasStartedTheTunnel)
{
    const auto configuration = servedOnce();
    activate(pathOf(name));
    EXPECT_TRUE(StatusLog(*manager, configuration).waitFor(VPNStatus::Connected));
    EXPECT_EQ(keychain->lookUps, 1);
}

TEST_F(NetworkManagerAgent, isKnownToADaemonThatWasRestarted)
{
    const auto configuration = servedOnce();
    const auto before = registrations();
    control("restart");
    ASSERT_TRUE(test::spinUntil([&] { return registrations() > before; }));
    activate(pathOf(name));
    EXPECT_TRUE(StatusLog(*manager, configuration).waitFor(VPNStatus::Connected));
    EXPECT_EQ(keychain->lookUps, 1);
}

TEST_F(NetworkManagerAgent, refusesAnotherConnectionThatNamesOurKey)
{
    servedOnce();
    auto stolen = settings(pathOf(name));
    stolen[QStringLiteral("connection")][QStringLiteral("id")] = QStringLiteral("Stolen");
    stolen[QStringLiteral("connection")].remove(QStringLiteral("uuid"));
    const test::EndLog ends;
    EXPECT_EQ(ends.waitFor(activate(addConnection(stolen))), noSecrets);
    EXPECT_EQ(keychain->lookUps, 0);
    EXPECT_EQ(keyDigest(), QByteArray());
}

TEST_F(NetworkManagerAgent, refusesOurConnectionWhenItsProviderWasExchanged)
{
    servedOnce();
    auto exchanged = settings(pathOf(name));
    exchanged[QStringLiteral("vpn")][QStringLiteral("service-type")] = test::otherProviderService;
    updateConnection(pathOf(name), exchanged);
    const test::EndLog ends;
    EXPECT_EQ(ends.waitFor(activate(pathOf(name))), noSecrets);
    EXPECT_EQ(keychain->lookUps, 0);
    EXPECT_EQ(keyDigest(), QByteArray());
}

TEST_F(NetworkManagerAgent, answersNobodyButNetworkManager)
{
    const auto configuration = servedOnce();
    const auto connection = settings(pathOf(name));
    const auto bus = QDBusConnection::connectToBus(QDBusConnection::SystemBus, QStringLiteral("snoop"));
    const auto names = bus.interface()->registeredServiceNames().value();
    int refusals = 0;
    for (const auto &program : names) {
        if (!program.startsWith(u':') || program == bus.baseService())
            continue;
        auto question =
            QDBusMessage::createMethodCall(program, networkmanager::secretAgentPath,
                                           networkmanager::secretAgentInterface, QStringLiteral("GetSecrets"));
        question.setArguments({QVariant::fromValue(connection), QVariant::fromValue(QDBusObjectPath(pathOf(name))),
                               QStringLiteral("vpn"), QStringList(), 0U});
        const auto pending = bus.asyncCall(question);
        test::spinUntil([&] { return pending.isFinished(); });
        refusals +=
            pending.error().name() == QStringLiteral("org.freedesktop.NetworkManager.SecretAgent.PermissionDenied");
        EXPECT_TRUE(pending.isError());
    }
    EXPECT_EQ(refusals, 1);
    EXPECT_EQ(keychain->lookUps, 0);
}

} // namespace

} // namespace tarnwik
