#include "SecretServiceTest.h"

#include "platform/PlatformServices.h"
#include "secure/KeychainStore.h"

#include <QCoreApplication>

#include <chrono>
#include <csignal>
#include <thread>

namespace tarnwik::test {

namespace {

using std::chrono::steady_clock;

// Kills the fixture's process that \a variable names, as soon as the person has been asked something.
void killOnceAsked(const char *variable)
{
    const auto limit = steady_clock::now() + std::chrono::seconds(10);
    while (SecretServiceTest::questions() == 0 && steady_clock::now() < limit) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    ::kill(static_cast<pid_t>(std::stol(std::getenv(variable))), SIGKILL);
}

// What KeychainStore::save, which deletes and then adds, fails with.
OSStatus statusOfSaving(const SecretServiceKeychain &keychain, const char *account)
{
    PlatformServices services;
    services.keychain = std::make_shared<SecretServiceKeychain>(keychain);
    const ScopedPlatform platform(services);
    try {
        KeychainStore(QStringLiteral("Tarnwik"), std::nullopt).save(QStringLiteral("value"), QLatin1String(account));
    } catch (const KeychainError &error) {
        return error.status();
    }
    return errSecSuccess;
}

constexpr auto anHour = std::chrono::hours(1);
constexpr auto noTime = std::chrono::milliseconds(0);

} // namespace

// A locked keyring, and nobody to ask. In two situations: nothing that asks is installed, or it cannot start.
using SecretServiceLocked = SecretServiceTest;

TEST_F(SecretServiceLocked, nothingCanBeReadStoredOrDeleted)
{
    EXPECT_EQ(read("from-before"), errSecInteractionNotAllowed);
    EXPECT_EQ(add("new", "value"), errSecInteractionNotAllowed);
    EXPECT_EQ(remove("from-before"), errSecInteractionNotAllowed);
}

TEST_F(SecretServiceLocked, anItemThatIsNotSeenMayStillBeThere)
{
    EXPECT_EQ(read("not-seen"), errSecInteractionNotAllowed);
    EXPECT_EQ(remove("not-seen"), errSecInteractionNotAllowed);
}

TEST_F(SecretServiceLocked, whetherAnItemIsThereNeedsNoUnlocking)
{
    EXPECT_EQ(m_keychain.SecItemCopyMatching(query("from-before"), nullptr), errSecSuccess);
}

// A locked keyring, and a person who knows the password. Each test runs in a session of its own.
using SecretServiceUnlocking = SecretServiceTest;

TEST_F(SecretServiceUnlocking, readingAsksOnce)
{
    EXPECT_EQ(read("from-before"), errSecSuccess);
    EXPECT_EQ(result(), "secret");
    EXPECT_EQ(read("from-before"), errSecSuccess);
    EXPECT_EQ(questions(), 1);
}

TEST_F(SecretServiceUnlocking, deletingAsksOnce)
{
    EXPECT_EQ(remove("from-before"), errSecSuccess);
    EXPECT_EQ(read("from-before"), errSecItemNotFound);
    EXPECT_EQ(questions(), 1);
}

TEST_F(SecretServiceUnlocking, addingAsksOnceAndFindsTheDuplicate)
{
    EXPECT_EQ(add("from-before", "value"), errSecDuplicateItem);
    EXPECT_EQ(add("new", "value"), errSecSuccess);
    EXPECT_EQ(add("from-before", "value", "A"), errSecSuccess);
    EXPECT_EQ(questions(), 1);
}

TEST_F(SecretServiceUnlocking, anAbsentItemIsNotFoundOnceUnlocked)
{
    EXPECT_EQ(read("absent"), errSecItemNotFound);
    EXPECT_EQ(questions(), 1);
}

// As before, but the person mistypes the password at first.
using SecretServiceMistyping = SecretServiceTest;

TEST_F(SecretServiceMistyping, isAskedAgain)
{
    EXPECT_EQ(read("from-before"), errSecSuccess);
    EXPECT_EQ(result(), "secret");
    EXPECT_EQ(questions(), 2);
}

// A locked keyring, and a person who closes the question.
using SecretServiceDismissing = SecretServiceTest;

TEST_F(SecretServiceDismissing, everyCallIsCancelledByTheUser)
{
    m_keychain = SecretServiceKeychain(std::chrono::minutes(1), noTime);
    const int before = questions();
    EXPECT_EQ(read("from-before"), errSecUserCanceled);
    EXPECT_EQ(remove("from-before"), errSecUserCanceled);
    EXPECT_EQ(add("new", "value"), errSecUserCanceled);
    EXPECT_EQ(read("not-seen"), errSecUserCanceled);
    EXPECT_EQ(questions() - before, 4);
}

TEST_F(SecretServiceDismissing, savingAsksOnce)
{
    for (const char *account : {"from-before", "new"}) {
        const int before = questions();
        EXPECT_EQ(statusOfSaving(SecretServiceKeychain(), account), errSecUserCanceled);
        EXPECT_EQ(questions() - before, 1);
    }
}

TEST_F(SecretServiceDismissing, asksAgainAfterAWhile)
{
    const auto refusalMemory = std::chrono::milliseconds(500);
    m_keychain = SecretServiceKeychain(std::chrono::minutes(1), refusalMemory);
    const int before = questions();
    EXPECT_EQ(read("from-before"), errSecUserCanceled);
    EXPECT_EQ(read("from-before"), errSecUserCanceled);
    EXPECT_EQ(questions() - before, 1);
    std::this_thread::sleep_for(refusalMemory);
    EXPECT_EQ(read("from-before"), errSecUserCanceled);
    EXPECT_EQ(questions() - before, 2);
}

TEST_F(SecretServiceDismissing, whatNeedsNoUnlockingIsAnsweredAllTheSame)
{
    EXPECT_EQ(read("from-before"), errSecUserCanceled);
    EXPECT_EQ(m_keychain.SecItemCopyMatching(query("from-before"), nullptr), errSecSuccess);
}

// A locked keyring, and a person who is out.
using SecretServiceIgnoring = SecretServiceTest;

TEST_F(SecretServiceIgnoring, aCallEndsWhenTheTimeIsUp)
{
    m_keychain = SecretServiceKeychain(std::chrono::milliseconds(200), noTime);
    for (int round = 0; round < 2; ++round) {
        const auto start = steady_clock::now();
        EXPECT_EQ(read("from-before"), errSecInteractionNotAllowed);
        const auto duration = steady_clock::now() - start;
        EXPECT_GE(duration, std::chrono::milliseconds(200));
        EXPECT_LT(duration, std::chrono::seconds(2));
    }
}

TEST_F(SecretServiceIgnoring, savingAsksOnceAndTakesNoLongerThanOneCall)
{
    const auto limit = std::chrono::seconds(1);
    const auto start = steady_clock::now();
    EXPECT_EQ(statusOfSaving(SecretServiceKeychain(limit, anHour), "from-before"), errSecInteractionNotAllowed);
    EXPECT_LT(steady_clock::now() - start, 2 * limit);
    EXPECT_EQ(questions(), 1);
}

TEST_F(SecretServiceIgnoring, aServiceThatDiesMeanwhileIsNotAvailable)
{
    std::thread killer(killOnceAsked, "TARNWIK_KEYRING_PID");
    EXPECT_EQ(read("from-before"), errSecNotAvailable);
    killer.join();
    EXPECT_EQ(read("from-before"), errSecNotAvailable);
}

TEST_F(SecretServiceIgnoring, aBusThatDiesMeanwhileIsNotAvailableAndEndsNothingElse)
{
    std::thread killer(killOnceAsked, "TARNWIK_BUS_PID");
    EXPECT_EQ(read("from-before"), errSecNotAvailable);
    killer.join();
    EXPECT_EQ(read("from-before"), errSecNotAvailable);
    QCoreApplication::processEvents();
}

// A locked keyring, and a person who takes half a second to answer.
using SecretServiceAnsweringLate = SecretServiceTest;

TEST_F(SecretServiceAnsweringLate, theAnswerServesTheNextCall)
{
    m_keychain = SecretServiceKeychain(std::chrono::milliseconds(200));
    EXPECT_EQ(read("from-before"), errSecInteractionNotAllowed);
    m_keychain = SecretServiceKeychain();
    EXPECT_EQ(read("from-before"), errSecSuccess);
    EXPECT_EQ(result(), "secret");
}

TEST_F(SecretServiceAnsweringLate, whatWasUnlockedMeanwhileIsUsedAtOnce)
{
    m_keychain = SecretServiceKeychain(std::chrono::milliseconds(200), anHour);
    EXPECT_EQ(read("from-before"), errSecInteractionNotAllowed);
    const auto end = steady_clock::now() + std::chrono::seconds(10);
    while (read("from-before") == errSecInteractionNotAllowed && steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_EQ(result(), "secret");
    EXPECT_EQ(questions(), 1);
}

} // namespace tarnwik::test
