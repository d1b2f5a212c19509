#pragma once

#include <QHostAddress>
#include <QString>

#include <optional>

namespace tarnwik::service {

/// The addresses that a node gives to devices: a network of which each device gets one host.
class AddressPool
{
public:
    /// The host number of the first device. Host 0 names the network, and host 1 is the node itself.
    static constexpr qint64 firstHost = 2;

    /// The pool that \a text names: "10.64.1.0/24" or "fd00:64:1::/64". Nothing unless it is a network of one of the two
    /// families, written without host bits, of 2 to 32 host bits for IPv4 and 2 to 64 for IPv6.
    static std::optional<AddressPool> fromString(const QString &text);

    bool isIpv6() const { return m_network.protocol() == QAbstractSocket::IPv6Protocol; }

    /// The last host number that a device may have. The last address of an IPv4 network is its broadcast address.
    qint64 lastHost() const;

    /// The address of a host number from 0 to lastHost().
    QString address(qint64 host) const;

private:
    AddressPool(const QHostAddress &network, int hostBits)
        : m_network(network)
        , m_hostBits(hostBits)
    {
    }

    QHostAddress m_network;
    int m_hostBits;
};

} // namespace tarnwik::service
