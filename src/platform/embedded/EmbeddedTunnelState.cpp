#include "platform/embedded/EmbeddedTunnelState.h"

#include "platform/OwnFile.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>

namespace tarnwik {

namespace {

// The file's own keys. The provider configuration keeps the keys that it came with.
const QString descriptionKey = QStringLiteral("description");
const QString enabledKey = QStringLiteral("enabled");
const QString protocolKey = QStringLiteral("protocol");
const QString providerKey = QStringLiteral("provider");
const QString serverKey = QStringLiteral("server");
const QString sleepKey = QStringLiteral("disconnect_on_sleep");
const QString configurationKey = QStringLiteral("provider_configuration");
const QString goingUpKey = QStringLiteral("going_up");
const QString sentAtKey = QStringLiteral("sent_at_ms");

/// Other processes hold the lock for as long as it takes to write one small file.
constexpr int lockPatience = 5000; // milliseconds

TunnelError writeError(const QString &path)
{
    return TunnelError(QStringLiteral("The VPN settings cannot be written to “%1”.").arg(path));
}

} // namespace

VPNStatus EmbeddedTunnelState::statusAt(std::chrono::milliseconds now) const
{
    if (!isSaved)
        return VPNStatus::Invalid;
    if (settlesIn(now))
        return isGoingUp ? VPNStatus::Connecting : VPNStatus::Disconnecting;
    return isGoingUp ? VPNStatus::Connected : VPNStatus::Disconnected;
}

std::optional<std::chrono::milliseconds> EmbeddedTunnelState::settlesIn(std::chrono::milliseconds now) const
{
    const auto remaining = sentAt + (isGoingUp ? embeddedConnectTime : embeddedDisconnectTime) - now;
    return isSaved && remaining.count() > 0 ? std::optional(remaining) : std::nullopt;
}

EmbeddedTunnelState EmbeddedTunnelFile::read() const
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    if (object.isEmpty())
        return {};

    EmbeddedTunnelState state;
    state.isSaved = true;
    if (object.contains(descriptionKey))
        state.localizedDescription = object[descriptionKey].toString();
    if (object.contains(protocolKey)) {
        const QJsonObject protocol = object[protocolKey].toObject();
        state.protocolConfiguration =
            TunnelProviderProtocol{.providerBundleIdentifier = protocol[providerKey].toString(),
                                   .serverAddress = protocol[serverKey].toString(),
                                   .disconnectOnSleep = protocol[sleepKey].toBool(),
                                   .providerConfiguration = protocol[configurationKey].toObject().toVariantMap()};
    }
    state.isEnabled = object[enabledKey].toBool();
    state.isGoingUp = object[goingUpKey].toBool();
    state.sentAt = std::chrono::milliseconds(object[sentAtKey].toInteger());
    return state;
}

EmbeddedTunnelState EmbeddedTunnelFile::change(const std::function<void(EmbeddedTunnelState &)> &edit) const
{
    QDir().mkpath(QFileInfo(m_path).path());
    QLockFile lock(m_path + QStringLiteral(".lock"));
    if (!lock.tryLock(lockPatience))
        throw writeError(m_path);
    EmbeddedTunnelState state = read();
    edit(state);
    write(state);
    return state;
}

void EmbeddedTunnelFile::write(const EmbeddedTunnelState &state) const
{
    QJsonObject object{
        {enabledKey, state.isEnabled}, {goingUpKey, state.isGoingUp}, {sentAtKey, qint64(state.sentAt.count())}};
    if (state.localizedDescription)
        object.insert(descriptionKey, *state.localizedDescription);
    if (const auto &protocol = state.protocolConfiguration) {
        object.insert(protocolKey,
                      QJsonObject{{providerKey, protocol->providerBundleIdentifier},
                                  {serverKey, protocol->serverAddress},
                                  {sleepKey, protocol->disconnectOnSleep},
                                  {configurationKey, QJsonObject::fromVariantMap(protocol->providerConfiguration)}});
    }
    // The preshared key is in it: it is its owner's alone.
    if (replaceOwnFile(m_path, QJsonDocument(object).toJson()))
        throw writeError(m_path);
}

} // namespace tarnwik
