#include "platform/KeychainQuery.h"

#include <gtest/gtest.h>

namespace tarnwik {

namespace {

using Operation = KeychainQuery::Operation;

constexpr Operation everyOperation[] = {Operation::Add, Operation::CopyMatching, Operation::Delete};

// What each operation is satisfied with.
QVariantMap attributes(Operation operation)
{
    QVariantMap result{
        {kSecClass, kSecClassGenericPassword},
        {kSecAttrService, QStringLiteral("service")},
        {kSecAttrAccount, QStringLiteral("account")},
    };
    if (operation == Operation::Add) {
        result.insert(kSecValueData, QByteArray("data"));
    }
    return result;
}

bool isAccepted(Operation operation, const QString &key, const QVariant &value)
{
    QVariantMap changed = attributes(operation);
    changed.insert(key, value);
    return KeychainQuery::fromAttributes(changed, operation).has_value();
}

} // namespace

TEST(KeychainQuery, readsWhatItIsGiven)
{
    QVariantMap add = attributes(Operation::Add);
    add.insert(kSecAttrAccessGroup, QStringLiteral("group"));
    add.insert(kSecAttrAccessible, kSecAttrAccessibleAfterFirstUnlockThisDeviceOnly);
    const auto query = KeychainQuery::fromAttributes(add, Operation::Add);
    ASSERT_TRUE(query);
    EXPECT_EQ(query->service, QStringLiteral("service"));
    EXPECT_EQ(query->account, QStringLiteral("account"));
    EXPECT_EQ(query->accessGroup, QStringLiteral("group"));
    EXPECT_EQ(query->data, "data");
    EXPECT_FALSE(query->isDataWanted);

    QVariantMap copy = attributes(Operation::CopyMatching);
    copy.insert(kSecReturnData, true);
    copy.insert(kSecMatchLimit, kSecMatchLimitOne);
    const auto wanted = KeychainQuery::fromAttributes(copy, Operation::CopyMatching);
    ASSERT_TRUE(wanted);
    EXPECT_TRUE(wanted->isDataWanted);
}

TEST(KeychainQuery, anEmptyAccessGroupIsPresent)
{
    for (const Operation operation : everyOperation) {
        QVariantMap changed = attributes(operation);
        EXPECT_EQ(KeychainQuery::fromAttributes(changed, operation)->accessGroup, std::nullopt);
        changed.insert(kSecAttrAccessGroup, QStringLiteral(""));
        EXPECT_EQ(KeychainQuery::fromAttributes(changed, operation)->accessGroup, QStringLiteral(""));
    }
}

TEST(KeychainQuery, whatIsRequiredMustBeThere)
{
    for (const Operation operation : everyOperation) {
        for (const QString &key : attributes(operation).keys()) {
            QVariantMap changed = attributes(operation);
            changed.remove(key);
            EXPECT_FALSE(KeychainQuery::fromAttributes(changed, operation)) << qPrintable(key);
        }
    }
}

TEST(KeychainQuery, onlyGenericPasswordsAreKnown)
{
    for (const Operation operation : everyOperation) {
        EXPECT_FALSE(isAccepted(operation, kSecClass, QStringLiteral("inet")));
    }
}

TEST(KeychainQuery, namesMustBeTextsThatStayDifferentInUTF8)
{
    for (const Operation operation : everyOperation) {
        for (const QString &key : {kSecAttrService, kSecAttrAccount, kSecAttrAccessGroup}) {
            EXPECT_TRUE(isAccepted(operation, key, QString()));
            EXPECT_TRUE(isAccepted(operation, key, QStringLiteral("Gerät 📱")));
            EXPECT_FALSE(isAccepted(operation, key, 7)) << qPrintable(key);
            EXPECT_FALSE(isAccepted(operation, key, QByteArray("text"))) << qPrintable(key);
            EXPECT_FALSE(isAccepted(operation, key, QVariant())) << qPrintable(key);
            EXPECT_FALSE(isAccepted(operation, key, QString(QChar(u'\0')))) << qPrintable(key);
            EXPECT_FALSE(isAccepted(operation, key, QString(QChar(0xd800)))) << qPrintable(key);
        }
    }
}

TEST(KeychainQuery, dataMustBeBytes)
{
    EXPECT_FALSE(isAccepted(Operation::Add, kSecValueData, QStringLiteral("data")));
    EXPECT_TRUE(isAccepted(Operation::Add, kSecValueData, QByteArray()));
}

TEST(KeychainQuery, attributesOfAnotherOperationAreRefused)
{
    EXPECT_FALSE(isAccepted(Operation::CopyMatching, kSecValueData, QByteArray("data")));
    EXPECT_FALSE(isAccepted(Operation::Delete, kSecReturnData, true));
    EXPECT_FALSE(isAccepted(Operation::Add, kSecMatchLimit, kSecMatchLimitOne));
    EXPECT_FALSE(isAccepted(Operation::CopyMatching, kSecMatchLimit, QStringLiteral("m_LimitAll")));
    EXPECT_FALSE(isAccepted(Operation::CopyMatching, QStringLiteral("labl"), QStringLiteral("label")));
}

} // namespace tarnwik
