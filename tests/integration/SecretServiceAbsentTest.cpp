#include "SecretServiceTest.h"

#include <chrono>
#include <csignal>

namespace tarnwik::test {

// A session bus without a Secret Service.
using SecretServiceAbsent = SecretServiceTest;

TEST_F(SecretServiceAbsent, everyCallIsNotAvailable)
{
    EXPECT_EQ(read("any"), errSecNotAvailable);
    EXPECT_EQ(add("any", "value"), errSecNotAvailable);
    EXPECT_EQ(remove("any"), errSecNotAvailable);
}

// No session bus.
using SecretServiceWithoutBus = SecretServiceTest;

TEST_F(SecretServiceWithoutBus, everyCallIsNotAvailable)
{
    EXPECT_EQ(read("any"), errSecNotAvailable);
    EXPECT_EQ(add("any", "value"), errSecNotAvailable);
    EXPECT_EQ(remove("any"), errSecNotAvailable);
}

TEST_F(SecretServiceWithoutBus, aBusThatIsGoneIsNotAvailable)
{
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
    EXPECT_EQ(read("any"), errSecNotAvailable);
    ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
}

// A service that stands still.
using SecretServiceHanging = SecretServiceTest;

TEST_F(SecretServiceHanging, noCallBlocksForLongerThanTheLimit)
{
    const auto keyring = static_cast<pid_t>(std::stol(std::getenv("TARNWIK_KEYRING_PID")));
    m_keychain = SecretServiceKeychain(std::chrono::milliseconds(200));
    EXPECT_EQ(add("any", "value"), errSecSuccess);
    ::kill(keyring, SIGSTOP);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(read("any"), errSecInteractionNotAllowed);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    ::kill(keyring, SIGCONT);
    EXPECT_EQ(read("any"), errSecSuccess);
}

// A user who has no keyring yet, and nobody to ask.
using SecretServiceEmpty = SecretServiceTest;

TEST_F(SecretServiceEmpty, nothingIsFoundAndNothingCanBeStored)
{
    EXPECT_EQ(read("any"), errSecItemNotFound);
    EXPECT_EQ(remove("any"), errSecItemNotFound);
    EXPECT_EQ(add("any", "value"), errSecInteractionNotAllowed);
}

// A user who has no keyring yet, and closes the question for a password.
using SecretServiceEmptyDismissing = SecretServiceTest;

TEST_F(SecretServiceEmptyDismissing, addingIsCancelledByTheUser)
{
    EXPECT_EQ(read("any"), errSecItemNotFound);
    EXPECT_EQ(questions(), 0);
    EXPECT_EQ(add("any", "value"), errSecUserCanceled);
}

// A user who has no keyring yet, and chooses a password.
using SecretServiceEmptyCreating = SecretServiceTest;

TEST_F(SecretServiceEmptyCreating, addingCreatesTheKeyring)
{
    EXPECT_EQ(add("any", "value"), errSecSuccess);
    const int asked = questions();
    EXPECT_GT(asked, 0);
    EXPECT_EQ(read("any"), errSecSuccess);
    EXPECT_EQ(result(), "value");
    EXPECT_EQ(questions(), asked);
}

} // namespace tarnwik::test
