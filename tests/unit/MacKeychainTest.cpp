#include "platform/macos/MacKeychain.h"

#include "MacAdapterStandIns.h"
#include "platform/PlatformServices.h"
#include "secure/KeychainStore.h"

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

using mac::KeychainAttribute;
using mac::KeychainConstant;

const QString account = QStringLiteral("tarnwik-device-7-private-key");
const QString group = QStringLiteral("TEAM.example.tarnwik.client");

/// The keychain store of the program over this adapter.
class MacKeychainTest : public testing::Test
{
protected:
    MacKeychainTest() { MacStandIns::current() = {}; }

    static PlatformServices services()
    {
        PlatformServices services;
        services.keychain = std::make_shared<MacKeychain>();
        return services;
    }

    static const std::vector<MacStandIns::KeychainCall> &calls() { return MacStandIns::current().keychainCalls; }

    const mac::KeychainDictionary m_item = {
        {KeychainAttribute::Class, KeychainConstant::ClassGenericPassword},
        {KeychainAttribute::Service, std::string("Tarnwik")},
        {KeychainAttribute::Account, std::string("tarnwik-device-7-private-key")},
    };
    const ScopedPlatform m_platform{services()};
    const KeychainStore m_store{QStringLiteral("Tarnwik"), std::nullopt};
    MacKeychain m_keychain;
};

TEST_F(MacKeychainTest, savesAnItemWithItsSixAttributesAndNoOther)
{
    const KeychainStore store(QStringLiteral("Tarnwik"), group);
    store.save(QStringLiteral("kéy"), account);

    auto item = m_item;
    item[KeychainAttribute::AccessGroup] = group.toStdString();
    ASSERT_EQ(calls().size(), 2u);
    EXPECT_EQ(calls()[0].operation, "delete");
    EXPECT_EQ(calls()[0].attributes, item);
    item[KeychainAttribute::ValueData] = mac::KeychainData{"k\xc3\xa9y"};
    item[KeychainAttribute::Accessible] = KeychainConstant::AccessibleAfterFirstUnlockThisDeviceOnly;
    EXPECT_EQ(calls()[1].operation, "add");
    EXPECT_EQ(calls()[1].attributes, item);
}

TEST_F(MacKeychainTest, savesAnItemWhateverBecameOfTheOneBefore)
{
    for (const OSStatus status : {errSecItemNotFound, errSecInteractionNotAllowed, errSecParam}) {
        MacStandIns::current() = {};
        MacStandIns::current().deleteStatus = status;
        EXPECT_NO_THROW(m_store.save(QStringLiteral("key"), account)) << status;
        ASSERT_EQ(calls().size(), 2u) << status;
        EXPECT_EQ(calls()[1].operation, "add");
    }
}

TEST_F(MacKeychainTest, namesAnAccessGroupOnlyWhereThereIsOne)
{
    m_store.delete_(account);
    EXPECT_EQ(calls().back().attributes, m_item);

    KeychainStore(QStringLiteral("Tarnwik"), QString()).delete_(account);
    auto item = m_item;
    item[KeychainAttribute::AccessGroup] = std::string();
    EXPECT_EQ(calls().back().attributes, item);
}

TEST_F(MacKeychainTest, looksUpTheDataOfOneItem)
{
    MacStandIns::current().match = {0, "k\xc3\xa9y"};
    EXPECT_EQ(m_store.read(account), QStringLiteral("kéy"));

    auto query = m_item;
    query[KeychainAttribute::ReturnData] = true;
    query[KeychainAttribute::MatchLimit] = KeychainConstant::MatchLimitOne;
    ASSERT_EQ(calls().size(), 1u);
    EXPECT_EQ(calls()[0].operation, "copyMatching");
    EXPECT_EQ(calls()[0].attributes, query);
}

TEST_F(MacKeychainTest, handsOutDataAsItIs)
{
    const std::string bytes("\xff\x00k\xc3", 4); // No UTF-8.
    MacStandIns::current().match = {errSecSuccess, bytes};
    QVariant result;
    EXPECT_EQ(m_keychain.SecItemCopyMatching({{kSecClass, kSecClassGenericPassword},
                                              {kSecAttrService, QStringLiteral("Tarnwik")},
                                              {kSecAttrAccount, account},
                                              {kSecReturnData, true},
                                              {kSecMatchLimit, kSecMatchLimitOne}},
                                             &result),
              errSecSuccess);
    EXPECT_EQ(result, QVariant(QByteArray::fromStdString(bytes)));
}

TEST_F(MacKeychainTest, answersWithTheStatusOfTheKeychain)
{
    MacStandIns::current().addStatus = errSecInteractionNotAllowed;
    MacStandIns::current().match = {errSecItemNotFound, std::nullopt};
    const auto failure = [](const auto &operation) -> OSStatus {
        try {
            operation();
        } catch (const KeychainError &error) {
            return error.status();
        }
        return 1;
    };
    EXPECT_EQ(failure([&] { m_store.save(QStringLiteral("key"), account); }), errSecInteractionNotAllowed);
    EXPECT_EQ(failure([&] { m_store.read(account); }), errSecItemNotFound);

    MacStandIns::current().match = {errSecSuccess, std::nullopt};
    EXPECT_EQ(failure([&] { m_store.read(account); }), errSecSuccess) << "what was found is no data";
}

TEST_F(MacKeychainTest, passesNoMalformedCallOn)
{
    const QVariantMap item{
        {kSecClass, kSecClassGenericPassword}, {kSecAttrService, QStringLiteral("s")}, {kSecAttrAccount, account}};
    auto labelled = item;
    labelled.insert(QStringLiteral("labl"), QStringLiteral("a label"));
    EXPECT_EQ(m_keychain.SecItemDelete(labelled), errSecParam);

    QVariant result;
    auto several = item;
    several.insert(kSecMatchLimit, QStringLiteral("m_LimitAll"));
    EXPECT_EQ(m_keychain.SecItemCopyMatching(several, &result), errSecParam);

    auto open = item;
    open.insert(kSecValueData, QByteArray("key"));
    open.insert(kSecAttrAccessible, QStringLiteral("dk"));
    EXPECT_EQ(m_keychain.SecItemAdd(open), errSecParam) << "an accessibility that the program never asks for";
    EXPECT_TRUE(calls().empty());
}

} // namespace

} // namespace tarnwik::test
