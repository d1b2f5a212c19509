#pragma once

#include "platform/linux/SecretServiceKeychain.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace tarnwik::test {

/// The keychain that the fixture started, and what a test of it says again and again.
class SecretServiceTest : public testing::Test
{
public:
    /// How many questions the person has been asked since the fixture started.
    static int questions()
    {
        std::ifstream log(std::getenv("TARNWIK_PROMPTER_LOG"));
        int count = 0;
        for (std::string line; std::getline(log, line);) {
            ++count;
        }
        return count;
    }

protected:
    static QVariantMap query(const char *account, const char *group = nullptr)
    {
        QVariantMap attributes{
            {kSecClass, kSecClassGenericPassword},
            {kSecAttrService, QStringLiteral("Tarnwik")},
            {kSecAttrAccount, QString::fromLatin1(account)},
        };
        if (group != nullptr) {
            attributes.insert(kSecAttrAccessGroup, QString::fromLatin1(group));
        }
        return attributes;
    }

    OSStatus add(const char *account, const QByteArray &data, const char *group = nullptr)
    {
        QVariantMap attributes = query(account, group);
        attributes.insert(kSecValueData, data);
        attributes.insert(kSecAttrAccessible, kSecAttrAccessibleAfterFirstUnlockThisDeviceOnly);
        return m_keychain.SecItemAdd(attributes);
    }

    OSStatus read(const char *account, const char *group = nullptr)
    {
        QVariantMap attributes = query(account, group);
        attributes.insert(kSecReturnData, true);
        attributes.insert(kSecMatchLimit, kSecMatchLimitOne);
        m_result.clear();
        return m_keychain.SecItemCopyMatching(attributes, &m_result);
    }

    OSStatus remove(const char *account, const char *group = nullptr)
    {
        return m_keychain.SecItemDelete(query(account, group));
    }

    QByteArray result() const { return m_result.toByteArray(); }

    SecretServiceKeychain m_keychain;
    QVariant m_result;
};

} // namespace tarnwik::test
