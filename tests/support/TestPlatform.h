#pragma once

#include "platform/InformationDictionary.h"
#include "platform/KeychainServices.h"
#include "platform/PlatformServices.h"
#include "platform/UserDefaults.h"
#include "support/FakeAppStore.h"
#include "support/FakeDesktop.h"
#include "support/FakeHTTPSession.h"
#include "support/FakeTunnelManager.h"
#include "support/ManualClock.h"

#include <QMap>

namespace tarnwik::test {

/// An information dictionary that the test fills.
class MemoryInformationDictionary final : public InformationDictionary
{
public:
    QVariantMap objects;

    QVariant object(const QString &key) const override { return objects.value(key); }
};

/// User defaults in memory, which can be made to refuse writing.
class MemoryUserDefaults final : public UserDefaults
{
public:
    QMap<QString, QString> strings;
    bool isWritable = true;
    /// Every write, in order: "set KEY" or "remove KEY".
    QStringList writes;

    std::optional<QString> string(const QString &key) const override;
    void setString(const QString &value, const QString &key) override;
    void removeObject(const QString &key) override;

private:
    void write(const QString &what);
};

/// A keychain in memory, which records the dictionaries that it is called with.
class MemoryKeychain final : public KeychainServices
{
public:
    struct Call
    {
        QString operation;
        QVariantMap attributes;
    };

    QList<Call> calls;
    /// The data of each item, by account.
    QMap<QString, QByteArray> items;
    /// What each operation answers instead of doing its work, by its name.
    QMap<QString, OSStatus> failures;

    OSStatus SecItemAdd(const QVariantMap &attributes) override;
    OSStatus SecItemCopyMatching(const QVariantMap &query, QVariant *result) override;
    OSStatus SecItemDelete(const QVariantMap &query) override;

private:
    OSStatus record(const QString &operation, const QVariantMap &attributes);
};

/// A whole platform of stand-ins, the process-wide one for as long as it lives.
struct TestPlatform
{
    std::shared_ptr<MemoryInformationDictionary> informationDictionary =
        std::make_shared<MemoryInformationDictionary>();
    std::shared_ptr<MemoryUserDefaults> userDefaults = std::make_shared<MemoryUserDefaults>();
    std::shared_ptr<FakeHTTPSession> httpSession = std::make_shared<FakeHTTPSession>();
    std::shared_ptr<MemoryKeychain> keychain = std::make_shared<MemoryKeychain>();
    std::shared_ptr<FakeTunnelManager> tunnelManager = std::make_shared<FakeTunnelManager>();
    std::shared_ptr<FakeAppStore> appStore = std::make_shared<FakeAppStore>();
    std::shared_ptr<FakeDesktop> desktop = std::make_shared<FakeDesktop>();
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();

    TestPlatform();

private:
    PlatformServices services() const;

    ScopedPlatform m_scope;
};

} // namespace tarnwik::test
