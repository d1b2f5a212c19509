#pragma once

#include "platform/linux/NetworkManagerConnectionSettings.h"
#include "platform/linux/NetworkManagerNames.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QHash>

#include <gtest/gtest.h>

namespace tarnwik::test {

/// Stands in for a NetworkManager that agrees to everything and then does nothing: a tunnel that was to end never does.
/// The real daemon stands still like that only by chance. It must not run while one of these exists.
class UnendingNetworkManager final : public QDBusVirtualObject
{
public:
    UnendingNetworkManager()
    {
        EXPECT_TRUE(m_bus.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath));
        EXPECT_TRUE(m_bus.registerService(networkmanager::serviceName));
    }
    ~UnendingNetworkManager() override
    {
        m_bus.unregisterService(networkmanager::serviceName);
        m_bus.unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
    }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        connection.send(message.createReply(m_answers.value(message.member())));
        return true;
    }

private:
    static QVariant path(const QString &text) { return QVariant::fromValue(QDBusObjectPath(text)); }

    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SystemBus, QStringLiteral("stand-in"));
    const QHash<QString, QVariantList> m_answers{
        {QStringLiteral("AddConnection2"), {path(networkmanager::settingsPath + QStringLiteral("/1")), QVariantMap()}},
        {QStringLiteral("Update2"), {QVariantMap()}},
        {QStringLiteral("GetSettings"), {QVariant::fromValue(NetworkManagerConnectionSettings())}},
        {QStringLiteral("ActivateConnection"),
         {path(networkmanager::managerPath + QStringLiteral("/ActiveConnection/1"))}},
    };
};

} // namespace tarnwik::test
