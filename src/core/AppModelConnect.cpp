// Connecting and disconnecting.

#include "async/OwnerGuard.h"
#include "core/AppModel.h"
#include "core/AppModelError.h"
#include "core/Platform.h"
#include "secure/WireGuardKeyGenerator.h"

#include <algorithm>

namespace tarnwik {

Task<> AppModel::connect(std::stop_token token)
{
    return runLoading([=, this] { return performConnect(token); }, token);
}

Task<> AppModel::disconnect(std::stop_token token)
{
    return runLoading([=, this] { return m_vpnController->disconnect(token); }, token);
}

Task<> AppModel::performConnect(std::stop_token token)
{
    const async::OwnerGuard guard(this);
    const auto node = selectedNode();
    if (!node)
        throw AppModelError::noNodeAvailable();
    const CustomerDevice device = co_await preferredDevice(token);
    guard.check();
    const DeviceProfileResponse response =
        co_await m_apiClient.createProfile(device.id, node->id, QStringLiteral("amneziawg"), token);
    guard.check();
    if (!response.tunnelProfile)
        throw TarnwikClientError::missingTunnelProfile();

    // The key itself is not wanted here, only the certainty that the tunnel will find it.
    const QString keyAccount = privateKeyAccount(device.id);
    m_keychain.read(keyAccount);
    co_await m_vpnController->connect(*response.tunnelProfile, keyAccount, token);
    guard.check();
    co_await refresh(token);
    guard.check();
    m_selectedNodeID = node->id;
}

Task<CustomerDevice> AppModel::preferredDevice(std::stop_token token)
{
    const async::OwnerGuard guard(this);
    if (const auto candidate = candidateDevice(); candidate && hasPrivateKey(*candidate))
        co_return *candidate;

    const WireGuardKeyPair keys = WireGuardKeyGenerator::generate();
    const CustomerDevice device = co_await m_apiClient.createDevice(
        Platform::current().defaultDeviceName(), Platform::current().apiValue(), keys.publicKey, token);
    guard.check();
    m_keychain.save(keys.privateKey, privateKeyAccount(device.id));
    m_devices = QList<CustomerDevice>(m_devices) << device;
    co_return device;
}

std::optional<CustomerDevice> AppModel::candidateDevice() const
{
    const QList<CustomerDevice> devices = m_devices;
    if (devices.isEmpty())
        return std::nullopt;
    const auto ofThisPlatform = std::find_if(devices.begin(), devices.end(), [](const CustomerDevice &device) {
        return device.platform == Platform::current().apiValue();
    });
    return ofThisPlatform != devices.end() ? *ofThisPlatform : devices.first();
}

bool AppModel::hasPrivateKey(const CustomerDevice &device) const
{
    try {
        m_keychain.read(privateKeyAccount(device.id));
        return true;
    } catch (const KeychainError &) {
        // A key that cannot be read is as good as none: the device is then another computer's.
        return false;
    }
}

QString AppModel::privateKeyAccount(qint64 deviceID)
{
    return QStringLiteral("tarnwik-device-%1-private-key").arg(deviceID);
}

} // namespace tarnwik
