#pragma once

#include "platform/KeychainServices.h"
#include "platform/linux/NetworkManagerConnectionSettings.h"

#include <QString>

namespace tarnwik {

/// A private key as text, wiped from memory when it goes out of scope.
class NetworkManagerPrivateKey
{
public:
    NetworkManagerPrivateKey() = default;
    ~NetworkManagerPrivateKey();

    NetworkManagerPrivateKey(const NetworkManagerPrivateKey &) = delete;
    NetworkManagerPrivateKey &operator=(const NetworkManagerPrivateKey &) = delete;

    /// Reads the keychain item that the items of \a vpnData name. Gives the keychain's status; errSecDecode for an item
    /// that is no text.
    OSStatus read(KeychainServices &keychain, const NetworkManagerStringMap &vpnData);

    /// Whoever shares the text must have let go of it before this object ends, or a copy is wiped in its place.
    const QString &text() const { return m_text; }

private:
    QString m_text;
};

} // namespace tarnwik
