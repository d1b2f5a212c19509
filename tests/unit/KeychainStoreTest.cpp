#include "secure/KeychainStore.h"

#include "platform/InformationDictionary.h"
#include "platform/PlatformServices.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace tarnwik {

namespace {

// A keychain that writes down what it is asked, and answers as it is told.
class RecordingKeychain final : public KeychainServices
{
public:
    OSStatus SecItemAdd(const QVariantMap &attributes) override
    {
        calls.emplace_back("add", attributes);
        // As a store that keeps the data beyond the call would.
        added = QByteArray(attributes.value(kSecValueData).toByteArray().constData());
        return addStatus;
    }
    OSStatus SecItemCopyMatching(const QVariantMap &query, QVariant *result) override
    {
        calls.emplace_back("copy", query);
        *result = copied;
        return copyStatus;
    }
    OSStatus SecItemDelete(const QVariantMap &query) override
    {
        calls.emplace_back("delete", query);
        return deleteStatus;
    }

    std::vector<std::pair<std::string, QVariantMap>> calls;
    QByteArray added;
    QVariant copied;
    OSStatus addStatus = errSecSuccess;
    OSStatus copyStatus = errSecSuccess;
    OSStatus deleteStatus = errSecSuccess;
};

class FixedDictionary final : public InformationDictionary
{
public:
    QVariant object(const QString &key) const override { return values.value(key); }

    QVariantMap values;
};

class KeychainStoreTest : public testing::Test
{
protected:
    KeychainStoreTest()
        : m_platform([this] {
            PlatformServices services;
            services.keychain = m_keychain;
            services.informationDictionary = m_dictionary;
            return services;
        }())
    {
    }

    static QVariantMap baseQuery()
    {
        return {
            {kSecClass, kSecClassGenericPassword},
            {kSecAttrService, QStringLiteral("Tarnwik")},
            {kSecAttrAccount, QStringLiteral("account")},
        };
    }

    void expectError(OSStatus status, const QString &text, const std::function<void()> &operation)
    {
        try {
            operation();
            ADD_FAILURE() << "It did not fail.";
        } catch (const KeychainError &error) {
            EXPECT_EQ(error.status(), status);
            EXPECT_EQ(error.localizedDescription(), text);
        }
    }

    std::shared_ptr<RecordingKeychain> m_keychain = std::make_shared<RecordingKeychain>();
    std::shared_ptr<FixedDictionary> m_dictionary = std::make_shared<FixedDictionary>();
    ScopedPlatform m_platform;
    const QString m_account = QStringLiteral("account");
};

} // namespace

TEST_F(KeychainStoreTest, defaultsToItsServiceAndTheConfiguredAccessGroup)
{
    EXPECT_EQ(KeychainStore().service(), QStringLiteral("Tarnwik"));
    EXPECT_EQ(KeychainStore().accessGroup(), std::nullopt);
    m_dictionary->values.insert(QStringLiteral("TarnwikKeychainAccessGroup"), QStringLiteral("TEAM.group"));
    EXPECT_EQ(KeychainStore().accessGroup(), QStringLiteral("TEAM.group"));
}

TEST_F(KeychainStoreTest, savingDeletesThenAdds)
{
    KeychainStore().save(QStringLiteral("Schlüssel"), m_account);
    ASSERT_EQ(m_keychain->calls.size(), 2U);
    EXPECT_EQ(m_keychain->calls[0].first, "delete");
    EXPECT_EQ(m_keychain->calls[0].second, baseQuery());
    EXPECT_EQ(m_keychain->calls[1].first, "add");
    EXPECT_EQ(m_keychain->added, "Schl\xc3\xbcssel");
    EXPECT_EQ(m_keychain->calls[1].second.value(kSecAttrAccessible), kSecAttrAccessibleAfterFirstUnlockThisDeviceOnly);
    EXPECT_EQ(m_keychain->calls[1].second.keys(),
              QStringList({kSecAttrAccount, kSecClass, kSecAttrAccessible, kSecAttrService, kSecValueData}));
}

TEST_F(KeychainStoreTest, aFailedDeleteDoesNotStopASave)
{
    for (const OSStatus status : {errSecItemNotFound, errSecInteractionNotAllowed, errSecUserCanceled, errSecIO}) {
        m_keychain->deleteStatus = status;
        m_keychain->added.clear();
        EXPECT_NO_THROW(KeychainStore().save(QStringLiteral("value"), m_account));
        EXPECT_EQ(m_keychain->added, "value");
    }
}

TEST_F(KeychainStoreTest, aFailedAddIsThrownAsItIs)
{
    m_keychain->addStatus = errSecDuplicateItem;
    expectError(errSecDuplicateItem, QStringLiteral("Keychain operation failed with status -25299."),
                [this] { KeychainStore().save(QStringLiteral("value"), m_account); });
    EXPECT_EQ(m_keychain->calls.size(), 2U);
}

TEST_F(KeychainStoreTest, readingAsksForTheDataOfOneItem)
{
    m_keychain->copied = QByteArray("Schl\xc3\xbcssel");
    EXPECT_EQ(KeychainStore().read(m_account), QStringLiteral("Schlüssel"));
    QVariantMap query = baseQuery();
    query.insert(kSecReturnData, true);
    query.insert(kSecMatchLimit, kSecMatchLimitOne);
    ASSERT_EQ(m_keychain->calls.size(), 1U);
    EXPECT_EQ(m_keychain->calls[0].second, query);
}

TEST_F(KeychainStoreTest, readingAnAccountThatWasNeverSavedIsNotFound)
{
    m_keychain->copyStatus = errSecItemNotFound;
    expectError(errSecItemNotFound, QStringLiteral("Keychain operation failed with status -25300."),
                [this] { KeychainStore().read(m_account); });
}

TEST_F(KeychainStoreTest, aFailedReadIsNeverTakenForAValue)
{
    m_keychain->copyStatus = errSecInteractionNotAllowed;
    m_keychain->copied = QByteArray("left over");
    expectError(errSecInteractionNotAllowed, QStringLiteral("Keychain operation failed with status -25308."),
                [this] { KeychainStore().read(m_account); });
}

TEST_F(KeychainStoreTest, bytesThatAreNoUTF8ReadAsStatusZero)
{
    // A stray byte, an overlong form, half a surrogate pair, beyond the last character, cut off.
    for (const QByteArray &bytes : {QByteArray("\xff"), QByteArray("\xc0\xaf"), QByteArray("\xed\xa0\x80"),
                                    QByteArray("\xf4\x90\x80\x80"), QByteArray("key\xe2\x82")}) {
        m_keychain->copied = bytes;
        expectError(errSecSuccess, QStringLiteral("Keychain operation failed with status 0."),
                    [this] { KeychainStore().read(m_account); });
    }
}

TEST_F(KeychainStoreTest, anItemThatIsNoBytesReadsAsStatusZero)
{
    for (const QVariant &item : {QVariant(), QVariant(QStringLiteral("text")), QVariant(7)}) {
        m_keychain->copied = item;
        expectError(errSecSuccess, QStringLiteral("Keychain operation failed with status 0."),
                    [this] { KeychainStore().read(m_account); });
    }
}

TEST_F(KeychainStoreTest, keepsEveryTextAsItIs)
{
    const QString mark = QChar(0xfeff) + QStringLiteral("text");
    for (const QString &value : {QString(), QStringLiteral("a\n"), QStringLiteral("📱"), mark}) {
        m_keychain->copied = value.toUtf8();
        EXPECT_EQ(KeychainStore().read(m_account), value);
    }
    const QString withNUL = QString::fromUtf16(u"a\0b", 3);
    m_keychain->copied = withNUL.toUtf8();
    EXPECT_EQ(KeychainStore().read(m_account), withNUL);
}

TEST_F(KeychainStoreTest, withoutAnAccessGroupNoneIsNamed)
{
    m_keychain->copied = QByteArray("value");
    const KeychainStore store(QStringLiteral("Tarnwik"), std::nullopt);
    store.save(QStringLiteral("value"), m_account);
    store.read(m_account);
    store.delete_(m_account);
    ASSERT_EQ(m_keychain->calls.size(), 4U);
    for (const auto &[name, query] : m_keychain->calls) {
        EXPECT_FALSE(query.contains(kSecAttrAccessGroup)) << name;
    }
}

TEST_F(KeychainStoreTest, anAccessGroupIsNamedEvenWhenEmpty)
{
    m_keychain->copied = QByteArray("value");
    for (const QString &group : {QStringLiteral("TEAM.group"), QStringLiteral("")}) {
        m_keychain->calls.clear();
        const KeychainStore store(QStringLiteral("Tarnwik"), group);
        store.save(QStringLiteral("value"), m_account);
        store.read(m_account);
        store.delete_(m_account);
        ASSERT_EQ(m_keychain->calls.size(), 4U);
        for (const auto &[name, query] : m_keychain->calls) {
            ASSERT_TRUE(query.contains(kSecAttrAccessGroup)) << name;
            EXPECT_EQ(query.value(kSecAttrAccessGroup).toString(), group) << name;
        }
    }
}

TEST_F(KeychainStoreTest, deletingNeverFails)
{
    for (const OSStatus status : {errSecSuccess, errSecItemNotFound, errSecInteractionNotAllowed}) {
        m_keychain->deleteStatus = status;
        m_keychain->calls.clear();
        EXPECT_NO_THROW(KeychainStore().delete_(m_account));
        ASSERT_EQ(m_keychain->calls.size(), 1U);
        EXPECT_EQ(m_keychain->calls[0].second, baseQuery());
    }
}

TEST_F(KeychainStoreTest, everyOperationGoesToThePlatformOfTheMoment)
{
    const KeychainStore store;
    const auto other = std::make_shared<RecordingKeychain>();
    PlatformServices services = PlatformServices::current();
    services.keychain = other;
    const ScopedPlatform platform(services);
    store.delete_(m_account);
    EXPECT_TRUE(m_keychain->calls.empty());
    EXPECT_EQ(other->calls.size(), 1U);
}

} // namespace tarnwik
