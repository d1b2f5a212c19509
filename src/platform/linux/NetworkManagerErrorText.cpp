#include "platform/linux/NetworkManagerErrorText.h"

#include "platform/linux/NetworkManagerNames.h"

#include <array>
#include <utility>

namespace tarnwik {

namespace {

using Row = std::pair<QLatin1StringView, QLatin1StringView>;

constexpr QLatin1StringView
    notAllowed("Your user account is not allowed to manage VPN connections. Ask this computer's administrator.");
constexpr QLatin1StringView notRunning("NetworkManager is not running.");
constexpr QLatin1StringView notAnswering("NetworkManager does not answer.");
constexpr QLatin1StringView starting("NetworkManager is still starting. Try again in a moment.");

/// D-Bus error names and their sentences. The bus's own errors are what a missing daemon looks like.
constexpr std::array rows{
    Row{QLatin1StringView("org.freedesktop.DBus.Error.ServiceUnknown"), notRunning},
    Row{QLatin1StringView("org.freedesktop.DBus.Error.NameHasNoOwner"), notRunning},
    Row{QLatin1StringView("org.freedesktop.DBus.Error.Disconnected"),
        QLatin1StringView("The system message bus cannot be reached.")},
    Row{QLatin1StringView("org.freedesktop.DBus.Error.NoReply"), notAnswering},
    Row{QLatin1StringView("org.freedesktop.DBus.Error.Timeout"), notAnswering},
    Row{QLatin1StringView("org.freedesktop.DBus.Error.TimedOut"), notAnswering},
    Row{QLatin1StringView("org.freedesktop.DBus.Error.UnknownMethod"), starting},
    Row{QLatin1StringView("org.freedesktop.DBus.Error.UnknownObject"), starting},
    Row{QLatin1StringView("org.freedesktop.DBus.Error.UnknownInterface"), starting},
    Row{QLatin1StringView("org.freedesktop.DBus.Error.AccessDenied"), notAllowed},
    Row{QLatin1StringView("org.freedesktop.NetworkManager.PermissionDenied"), notAllowed},
    Row{QLatin1StringView("org.freedesktop.NetworkManager.Settings.PermissionDenied"), notAllowed},
    Row{QLatin1StringView("org.freedesktop.NetworkManager.AgentManager.PermissionDenied"), notAllowed},
    Row{QLatin1StringView("org.freedesktop.NetworkManager.UnknownConnection"),
        QLatin1StringView("There is no network connection for the VPN to run over. Connect to a network first.")},
    Row{QLatin1StringView("org.freedesktop.NetworkManager.Settings.InvalidConnection"),
        QLatin1StringView("The VPN configuration is no longer among the system's network settings.")},
};

QString sentence(const NetworkManagerCallError &error, const QString &providerBundleIdentifier)
{
    if (error.name() == QLatin1StringView("org.freedesktop.NetworkManager.ConnectionNotAvailable"))
        return QStringLiteral("The VPN service '%1' is not installed.").arg(providerBundleIdentifier);
    for (const auto &[name, text] : rows) {
        if (error.name() == name)
            return text;
    }
    return QStringLiteral("NetworkManager refused: %1").arg(error.message());
}

} // namespace

TunnelError tunnelError(const NetworkManagerCallError &error, const QString &providerBundleIdentifier)
{
    return TunnelError(sentence(error, providerBundleIdentifier));
}

} // namespace tarnwik
