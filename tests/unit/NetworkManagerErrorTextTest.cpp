#include "platform/linux/NetworkManagerErrorText.h"

#include <gtest/gtest.h>

namespace tarnwik {

namespace {

QString text(const char *name)
{
    const NetworkManagerCallError error(QString::fromLatin1(name), QStringLiteral("What the daemon said."));
    return tunnelError(error, QStringLiteral("example.tarnwik.client.tunnel")).localizedDescription();
}

TEST(NetworkManagerErrorText, aMissingDaemonIsNotRunning)
{
    EXPECT_EQ(text("org.freedesktop.DBus.Error.ServiceUnknown"), QStringLiteral("NetworkManager is not running."));
    EXPECT_EQ(text("org.freedesktop.DBus.Error.NameHasNoOwner"), QStringLiteral("NetworkManager is not running."));
}

TEST(NetworkManagerErrorText, aMissingBusIsNoMissingDaemon)
{
    EXPECT_EQ(text("org.freedesktop.DBus.Error.Disconnected"),
              QStringLiteral("The system message bus cannot be reached."));
}

TEST(NetworkManagerErrorText, namesTheServiceThatIsNotInstalled)
{
    EXPECT_EQ(text("org.freedesktop.NetworkManager.ConnectionNotAvailable"),
              QStringLiteral("The VPN service 'example.tarnwik.client.tunnel' is not installed."));
}

TEST(NetworkManagerErrorText, aMissingBaseConnectionTellsToConnectFirst)
{
    EXPECT_EQ(text("org.freedesktop.NetworkManager.UnknownConnection"),
              QStringLiteral("There is no network connection for the VPN to run over. Connect to a network first."));
}

TEST(NetworkManagerErrorText, everyDenialIsToldTheSameWay)
{
    const auto denied = text("org.freedesktop.NetworkManager.PermissionDenied");
    EXPECT_TRUE(denied.startsWith(QStringLiteral("Your user account is not allowed")));
    EXPECT_EQ(text("org.freedesktop.NetworkManager.Settings.PermissionDenied"), denied);
    EXPECT_EQ(text("org.freedesktop.NetworkManager.AgentManager.PermissionDenied"), denied);
    EXPECT_EQ(text("org.freedesktop.DBus.Error.AccessDenied"), denied);
}

TEST(NetworkManagerErrorText, anyOtherErrorCarriesTheDaemonsWords)
{
    EXPECT_EQ(text("org.freedesktop.NetworkManager.Failed"),
              QStringLiteral("NetworkManager refused: What the daemon said."));
}

} // namespace

} // namespace tarnwik
