#include "platform/linux/NetworkManagerEndReason.h"

#include <gtest/gtest.h>

#include <QSet>

namespace tarnwik {

namespace {

TEST(NetworkManagerEndReason, anEndThatSomebodyAskedForHasNoSentence)
{
    EXPECT_FALSE(sentence(NetworkManagerEndReason::None, {}));
    EXPECT_FALSE(sentence(NetworkManagerEndReason::UserDisconnected, {}));
    EXPECT_FALSE(sentence(NetworkManagerEndReason::UserDisconnected, errSecItemNotFound));
}

TEST(NetworkManagerEndReason, everyOtherEndHasASentenceOfItsOwn)
{
    QSet<QString> sentences;
    const auto add = [&](uint reason) {
        const auto text = sentence(NetworkManagerEndReason(reason), {});
        ASSERT_TRUE(text) << reason;
        EXPECT_TRUE(text->endsWith(u'.')) << text->toStdString();
        sentences.insert(*text);
    };
    for (uint reason = 3; reason <= 12; ++reason)
        add(reason);
    add(uint(NetworkManagerEndReason::Unknown));
    add(uint(NetworkManagerEndReason::DaemonStopped));
    EXPECT_EQ(sentences.size(), 12);
}

TEST(NetworkManagerEndReason, aReasonOfALaterDaemonIsToldAsAnUnknownOne)
{
    EXPECT_EQ(sentence(NetworkManagerEndReason(99), {}), sentence(NetworkManagerEndReason::Unknown, {}));
}

TEST(NetworkManagerEndReason, tellsTheCodesApart)
{
    EXPECT_EQ(sentence(NetworkManagerEndReason(10), {}), QStringLiteral("The VPN server refused the login."));
    EXPECT_EQ(sentence(NetworkManagerEndReason(4), {}), QStringLiteral("The VPN service stopped unexpectedly."));
    EXPECT_EQ(sentence(NetworkManagerEndReason(6), {}),
              QStringLiteral("The VPN connection was not established in time."));
}

TEST(NetworkManagerEndReason, missingSecretsNameTheKeychainsStatus)
{
    EXPECT_EQ(sentence(NetworkManagerEndReason::NoSecrets, errSecItemNotFound),
              QStringLiteral("The private key is not in the keychain (status -25300)."));
    EXPECT_EQ(sentence(NetworkManagerEndReason::NoSecrets, errSecInteractionNotAllowed),
              QStringLiteral("The private key could not be read from the keychain (status -25308)."));
    EXPECT_EQ(sentence(NetworkManagerEndReason::NoSecrets, {}),
              QStringLiteral("The VPN service did not get the private key that it needs."));
}

} // namespace

} // namespace tarnwik
