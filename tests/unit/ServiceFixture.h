#pragma once

#include "api/JSON.h"
#include "service/CustomerService.h"
#include "service/Seed.h"

#include <gmock/gmock.h>

#include <QJsonDocument>
#include <QJsonObject>

#include <memory>

namespace tarnwik::service {

/// Names the error of an answer in a test: "404 not_found", or "200 " for an answer without one.
inline std::string outcome(const ServiceResponse &response)
{
    const QJsonObject body = QJsonDocument::fromJson(response.body).object();
    return std::to_string(response.status) + ' ' + body.value(QLatin1String("error")).toString().toStdString();
}

inline QByteArray headerOf(const ServiceResponse &response, const QByteArray &name)
{
    for (const auto &[key, value] : response.headers) {
        if (key == name)
            return value;
    }
    return {};
}

/// A service in memory on a clock that the test moves, with cheap password hashes.
class ServiceTest : public testing::Test
{
protected:
    static constexpr auto path = "/api/customer/v1/";

    /// The service, made from m_seed when it is first used.
    CustomerService &service()
    {
        if (!m_service)
            m_service = makeService();
        return *m_service;
    }

    std::unique_ptr<CustomerService> makeService() const
    {
        return std::make_unique<CustomerService>(CustomerServiceOptions{.databasePath = m_databasePath,
                                                                        .seed = m_seed,
                                                                        .passwordCost = PasswordCost::Least,
                                                                        .now = [this] { return m_now; },
                                                                        .storeRoot = m_storeRoot});
    }

    /// The one account of the built-in seed, or the one of \a index.
    Account &seedAccount(qsizetype index = 0) { return m_seed.accounts[index].account; }

    /// Adds a second account with the password "other".
    void addOtherAccount()
    {
        SeedAccount other = m_seed.accounts.first();
        other.account.id = 2;
        other.account.email = QStringLiteral("other@tarnwik.example");
        other.password = QStringLiteral("other");
        m_seed.accounts.append(other);
    }

    ServiceResponse send(const char *method, const QString &tail, const QByteArray &body = {},
                         const QByteArray &token = {})
    {
        return service().handle({.method = method,
                                 .path = QLatin1String(path) + tail,
                                 .authorization = token.isEmpty() ? QByteArray() : "Bearer " + token,
                                 .contentType = body.isEmpty() ? QByteArray() : QByteArray("application/json"),
                                 .body = body});
    }

    ServiceResponse trySignIn(const QByteArray &email = "demo@tarnwik.example", const QByteArray &password = "demo")
    {
        return send("POST", QStringLiteral("session"),
                    R"({"email":")" + email + R"(","password":")" + password
                        + R"(","device_name":"Desk","platform":"macos"})");
    }

    QByteArray signIn(const QByteArray &email = "demo@tarnwik.example", const QByteArray &password = "demo")
    {
        const ServiceResponse response = trySignIn(email, password);
        EXPECT_EQ(response.status, 200) << response.body.constData();
        return decode<SessionResponse>(response.body).token.toLatin1();
    }

    ServiceResponse tryCreateDevice(const QByteArray &token, const QString &key)
    {
        return send("POST", QStringLiteral("devices"),
                    R"({"name":"macOS device","platform":"macos","public_key":")" + key.toLatin1() + R"("})", token);
    }

    /// A new device with a new key.
    CustomerDevice createDevice(const QByteArray &token)
    {
        const ServiceResponse response = tryCreateDevice(token, newKey());
        EXPECT_EQ(response.status, 201) << response.body.constData();
        return decode<DeviceCreateResponse>(response.body).device;
    }

    ServiceResponse tryCreateProfile(const QByteArray &token, qint64 deviceId, qint64 nodeId)
    {
        return send("POST", QStringLiteral("devices/%1/node-profiles").arg(deviceId),
                    R"({"node_id":)" + QByteArray::number(nodeId) + R"(,"protocol":"amneziawg"})", token);
    }

    DeviceProfileResponse createProfile(const QByteArray &token, qint64 deviceId, qint64 nodeId)
    {
        const ServiceResponse response = tryCreateProfile(token, deviceId, nodeId);
        EXPECT_TRUE(response.status == 200 || response.status == 201) << response.body.constData();
        return decode<DeviceProfileResponse>(response.body);
    }

    Account account(const QByteArray &token)
    {
        return decode<AccountResponse>(send("GET", QStringLiteral("session"), {}, token).body).account;
    }

    QList<CustomerDevice> devices(const QByteArray &token)
    {
        return decode<DeviceListResponse>(send("GET", QStringLiteral("devices"), {}, token).body).devices;
    }

    /// A public key that no device has yet: nearly every 32 bytes are one.
    QString newKey()
    {
        QByteArray bytes(32, 9);
        bytes[0] = char(++m_keyCount);
        bytes[1] = char(m_keyCount >> 8);
        return QString::fromLatin1(bytes.toBase64());
    }

    Seed m_seed = builtInSeed();
    StoreRootSource m_storeRoot = nullptr;
    QString m_databasePath = QStringLiteral(":memory:");
    Moment m_now{std::chrono::sys_days{std::chrono::year{2026} / 5 / 4} + std::chrono::hours(12)};

private:
    std::unique_ptr<CustomerService> m_service;
    int m_keyCount = 0;
};

} // namespace tarnwik::service
