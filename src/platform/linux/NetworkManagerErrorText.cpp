#include "platform/linux/NetworkManagerErrorText.h"

#include "platform/linux/NetworkManagerNames.h"

#include <array>
#include <utility>

using namespace tarnwik::networkmanager;

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
    Row{errors::serviceUnknown, notRunning},
    Row{errors::nameHasNoOwner, notRunning},
    Row{errors::disconnected, QLatin1StringView("The system message bus cannot be reached.")},
    Row{errors::noReply, notAnswering},
    Row{errors::timeout, notAnswering},
    Row{errors::timedOut, notAnswering},
    Row{errors::unknownMethod, starting},
    Row{errors::unknownObject, starting},
    Row{errors::unknownInterface, starting},
    Row{errors::accessDenied, notAllowed},
    Row{errors::permissionDenied, notAllowed},
    Row{errors::settingsPermissionDenied, notAllowed},
    Row{errors::agentManagerPermissionDenied, notAllowed},
    Row{errors::unknownConnection,
        QLatin1StringView("There is no network connection for the VPN to run over. Connect to a network first.")},
    Row{errors::invalidConnection,
        QLatin1StringView("The VPN configuration is no longer among the system's network settings.")},
};

QString sentence(const NetworkManagerCallError &error, const QString &providerBundleIdentifier)
{
    if (error.name() == errors::connectionNotAvailable)
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

TunnelError notAnsweringError()
{
    return TunnelError(notAnswering);
}

} // namespace tarnwik
