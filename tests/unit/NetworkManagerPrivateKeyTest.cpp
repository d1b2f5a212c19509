#include "platform/linux/NetworkManagerPrivateKey.h"

#include "support/networkmanager/InMemoryKeychain.h"

#include <gtest/gtest.h>

namespace tarnwik {

namespace {

const QString service = QStringLiteral("Tarnwik");
const QString account = QStringLiteral("tarnwik-device-1-private-key");

NetworkManagerStringMap data()
{
    return {{QStringLiteral("keychain_service"), service}, {QStringLiteral("client_private_key_ref"), account}};
}

TEST(NetworkManagerPrivateKey, isTheItemThatTheConnectionNames)
{
    test::InMemoryKeychain keychain;
    keychain.put(service, account, "the key");
    NetworkManagerPrivateKey key;
    EXPECT_EQ(key.read(keychain, data()), errSecSuccess);
    EXPECT_EQ(key.text(), QStringLiteral("the key"));
    const QVariantMap query{{kSecClass, kSecClassGenericPassword},
                            {kSecAttrService, service},
                            {kSecAttrAccount, account},
                            {kSecReturnData, true},
                            {kSecMatchLimit, kSecMatchLimitOne}};
    EXPECT_EQ(keychain.lastQuery, query);
}

TEST(NetworkManagerPrivateKey, isLookedUpInTheAccessGroupThatTheConnectionNamesEvenAnEmptyOne)
{
    test::InMemoryKeychain keychain;
    auto items = data();
    items.insert(QStringLiteral("keychain_access_group"), QString());
    NetworkManagerPrivateKey().read(keychain, items);
    EXPECT_TRUE(keychain.lastQuery.contains(kSecAttrAccessGroup));
    EXPECT_EQ(keychain.lastQuery.value(kSecAttrAccessGroup), QString());

    items.insert(QStringLiteral("keychain_access_group"), QStringLiteral("group"));
    NetworkManagerPrivateKey().read(keychain, items);
    EXPECT_EQ(keychain.lastQuery.value(kSecAttrAccessGroup), QStringLiteral("group"));
}

TEST(NetworkManagerPrivateKey, passesTheKeychainsStatusOn)
{
    test::InMemoryKeychain keychain;
    NetworkManagerPrivateKey key;
    EXPECT_EQ(key.read(keychain, data()), errSecItemNotFound);
    keychain.refusal = errSecInteractionNotAllowed;
    EXPECT_EQ(key.read(keychain, data()), errSecInteractionNotAllowed);
    EXPECT_TRUE(key.text().isEmpty());
}

TEST(NetworkManagerPrivateKey, anItemThatIsNoTextCannotBeDecoded)
{
    test::InMemoryKeychain keychain;
    NetworkManagerPrivateKey key;
    for (const auto &bytes : {QByteArray("\xff\xfe"), QByteArray("abc\xc3"), QByteArray()}) {
        keychain.put(service, account, bytes);
        EXPECT_EQ(key.read(keychain, data()), errSecDecode);
    }
}

} // namespace

} // namespace tarnwik
