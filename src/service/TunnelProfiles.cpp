#include "service/TunnelProfiles.h"

#include <QStringList>

namespace tarnwik::service {

namespace {

QString line(const QString &key, const QString &value)
{
    return key + QStringLiteral(" = ") + value + u'\n';
}

QString joined(const QList<QString> &items)
{
    return QStringList(items).join(QStringLiteral(", "));
}

QString interfaceText(const TunnelProfile &profile)
{
    QString text = QStringLiteral("[Interface]\n");
    text += line(QStringLiteral("Address"), joined(profile.interface.addresses));
    if (!profile.interface.dns.isEmpty())
        text += line(QStringLiteral("DNS"), joined(profile.interface.dns));
    text += line(QStringLiteral("MTU"), QString::number(profile.interface.mtu));
    // "jmin" is spelled "Jmin" there.
    for (auto item = profile.amneziawg.begin(); item != profile.amneziawg.end(); ++item)
        text += line(item.key().left(1).toUpper() + item.key().mid(1), QString::number(item.value()));
    return text;
}

QString peerText(const TunnelPeer &peer)
{
    QString text = QStringLiteral("[Peer]\n");
    text += line(QStringLiteral("PublicKey"), peer.publicKey);
    if (!peer.presharedKey.isEmpty())
        text += line(QStringLiteral("PresharedKey"), peer.presharedKey);
    text += line(QStringLiteral("AllowedIPs"), joined(peer.allowedIps));
    text += line(QStringLiteral("Endpoint"), peer.endpoint);
    if (peer.persistentKeepalive > 0)
        text += line(QStringLiteral("PersistentKeepalive"), QString::number(peer.persistentKeepalive));
    return text;
}

} // namespace

TunnelProfile makeTunnelProfile(const StoredProfile &stored, const SeedNode &node)
{
    const DeviceProfile &profile = stored.profile;
    const NodeTunnel &tunnel = node.tunnel;
    QList<QString> addresses{profile.assignedIp + QStringLiteral("/32")};
    if (!profile.assignedIpv6.isEmpty())
        addresses.append(profile.assignedIpv6 + QStringLiteral("/128"));

    return {.id = profile.id,
            .protocolName = profile.protocolName,
            .interface = {.addresses = addresses, .dns = tunnel.dns, .mtu = tunnel.mtu, .privateKey = std::nullopt},
            .peer = {.publicKey = tunnel.publicKey,
                     .presharedKey = stored.presharedKey,
                     .endpoint = tunnel.endpoint,
                     .allowedIps = tunnel.allowedIps,
                     .persistentKeepalive = tunnel.persistentKeepalive},
            .amneziawg = tunnel.amneziawg,
            .node = {.id = node.node.id,
                     .name = node.node.name,
                     .region = node.node.region,
                     .status = node.node.status,
                     .runtime = node.node.runtime}};
}

QString configurationText(const TunnelProfile &profile)
{
    return interfaceText(profile) + u'\n' + peerText(profile.peer);
}

} // namespace tarnwik::service
