#include "service/AddressPool.h"

#include <limits>

namespace tarnwik::service {

namespace {

constexpr int leastHostBits = 2;
constexpr int mostIpv6HostBits = 64;

} // namespace

std::optional<AddressPool> AddressPool::fromString(const QString &text)
{
    const auto [network, prefixLength] = QHostAddress::parseSubnet(text);
    if (network.isNull() || text != network.toString() + u'/' + QString::number(prefixLength))
        return std::nullopt;
    const bool isIpv6 = network.protocol() == QAbstractSocket::IPv6Protocol;
    const int hostBits = (isIpv6 ? 128 : 32) - prefixLength;
    if (hostBits < leastHostBits || (isIpv6 && hostBits > mostIpv6HostBits))
        return std::nullopt;
    return AddressPool(network, hostBits);
}

qint64 AddressPool::lastHost() const
{
    constexpr int bitsOfHostNumbers = std::numeric_limits<qint64>::digits;
    if (m_hostBits >= bitsOfHostNumbers)
        return std::numeric_limits<qint64>::max();
    return (qint64(1) << m_hostBits) - (isIpv6() ? 1 : 2);
}

QString AddressPool::address(qint64 host) const
{
    if (!isIpv6())
        return QHostAddress(m_network.toIPv4Address() + quint32(host)).toString();
    // No carry can come about: the host bits of the network are all zero.
    Q_IPV6ADDR bytes = m_network.toIPv6Address();
    for (int index = 15; host > 0; --index, host >>= 8)
        bytes[index] |= quint8(host & 0xff);
    return QHostAddress(bytes).toString();
}

} // namespace tarnwik::service
