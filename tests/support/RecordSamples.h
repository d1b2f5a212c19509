#pragma once

#include "api/Models.h"

#include <QByteArray>

namespace tarnwik::test {

// One full body per record, as a server would send it, written out by hand: the keys in them are compared with those
// that the records compute.

inline const QByteArray accountJSON = R"({"id":7,"email":"ada@example.com","role":"customer","status":"active",
    "subscription_status":"active","service_enabled":true,"plan_gb":100,"quota_bytes":107374182400,
    "used_bytes":5000000000,"cycle_used_bytes":4999999999,"cycle_quota_bytes":107374182400,
    "monthly_price_cents":499,"billing_provider":"app_store","billing_portal_url":"https://billing.example.com/7",
    "billing_account_token":"0b1d7bd0-7b0e-4a0f-8a52-0c4a4d0c1a11",
    "subscription_current_period_start":"2026-11-01T00:00:00Z",
    "subscription_current_period_end":"2026-12-01T00:00:00Z","service_block_reason":"none"})";

inline const QByteArray nodeJSON = R"({"id":3,"name":"Reykjavík","provider":"Northern","region":"is","status":"online",
    "runtime":"awg","endpoint":"192.0.2.3:51820","awg_enabled":true,"has_ipv6":false})";

inline const QByteArray deviceProfileJSON = R"({"id":21,"node_id":3,"node_name":"Reykjavík","region":"is",
    "protocol":"amneziawg","assigned_ip":"10.8.0.2","assigned_ipv6":"","enabled":true,
    "last_handshake_at":"2026-11-21T08:00:00Z","rx_bytes":4294967297,"tx_bytes":8589934593})";

inline const QByteArray deviceJSON = R"({"id":12,"name":"macOS device","platform":"macos","enabled":true,
    "public_key":"aGVsbG8gd29ybGQgaGVsbG8gd29ybGQgaGVsbG8gd28=","last_selected_node_id":3,"profiles":[)"
    + deviceProfileJSON + "]}";

inline const QByteArray tunnelInterfaceJSON =
    R"({"addresses":["10.8.0.2/32","fd00::2/128"],"dns":["10.8.0.1"],"mtu":1280,"private_key":"server-side"})";

inline const QByteArray tunnelPeerJSON = R"({"public_key":"cGVlcg==","preshared_key":"","endpoint":"192.0.2.3:51820",
    "allowed_ips":["0.0.0.0/0","::/0"],"persistent_keepalive":25})";

inline const QByteArray tunnelNodeJSON =
    R"({"id":3,"name":"Reykjavík","region":"is","status":"online","runtime":"awg"})";

inline const QByteArray tunnelProfileJSON = R"({"id":21,"protocol":"amneziawg","interface":)" + tunnelInterfaceJSON
    + R"(,"peer":)" + tunnelPeerJSON + R"(,"amneziawg":{"jc":4,"S1":0,"some_key":-5,"jMax_2":1000},"node":)"
    + tunnelNodeJSON + "}";

/// A record's full body.
template<typename Record>
QByteArray sampleJSON();

template<>
inline QByteArray sampleJSON<Account>()
{
    return accountJSON;
}
template<>
inline QByteArray sampleJSON<SessionResponse>()
{
    return R"({"token":"secret-token","account":)" + accountJSON + "}";
}
template<>
inline QByteArray sampleJSON<AccountResponse>()
{
    return R"({"account":)" + accountJSON + "}";
}
template<>
inline QByteArray sampleJSON<SubscriptionResponse>()
{
    return R"({"subscription":)" + accountJSON + "}";
}
template<>
inline QByteArray sampleJSON<APIErrorEnvelope>()
{
    return R"({"error":"quota_exceeded","status":"active","subscription_status":"expired","account":)" + accountJSON
        + "}";
}
template<>
inline QByteArray sampleJSON<ExitNode>()
{
    return nodeJSON;
}
template<>
inline QByteArray sampleJSON<NodeListResponse>()
{
    return R"({"nodes":[)" + nodeJSON + "]}";
}
template<>
inline QByteArray sampleJSON<DeviceProfile>()
{
    return deviceProfileJSON;
}
template<>
inline QByteArray sampleJSON<CustomerDevice>()
{
    return deviceJSON;
}
template<>
inline QByteArray sampleJSON<DeviceListResponse>()
{
    return R"({"devices":[)" + deviceJSON + "]}";
}
template<>
inline QByteArray sampleJSON<DeviceCreateResponse>()
{
    return R"({"device":)" + deviceJSON + R"(,"private_key":"from-the-server"})";
}
template<>
inline QByteArray sampleJSON<TunnelInterface>()
{
    return tunnelInterfaceJSON;
}
template<>
inline QByteArray sampleJSON<TunnelPeer>()
{
    return tunnelPeerJSON;
}
template<>
inline QByteArray sampleJSON<TunnelNode>()
{
    return tunnelNodeJSON;
}
template<>
inline QByteArray sampleJSON<TunnelProfile>()
{
    return tunnelProfileJSON;
}
template<>
inline QByteArray sampleJSON<DeviceProfileResponse>()
{
    return R"({"profile":)" + deviceProfileJSON + R"(,"tunnel_profile":)" + tunnelProfileJSON
        + R"(,"config":"[Interface]","created":true})";
}

} // namespace tarnwik::test
