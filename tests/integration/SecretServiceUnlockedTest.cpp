#include "SecretServiceTest.h"

#include "platform/PlatformServices.h"
#include "secure/KeychainStore.h"

#include <libsecret/secret.h>

#include <QCoreApplication>
#include <QTimer>

#include <map>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace tarnwik::test {

namespace {

class SecretServiceUnlocked : public SecretServiceTest
{
protected:
    SecretServiceUnlocked()
        : m_platform(servicesOfTest())
    {
    }

    static PlatformServices servicesOfTest()
    {
        PlatformServices services;
        services.keychain = std::make_shared<SecretServiceKeychain>();
        return services;
    }

    static OSStatus statusOfReading(const KeychainStore &store, const QString &account)
    {
        try {
            store.read(account);
        } catch (const KeychainError &error) {
            return error.status();
        }
        ADD_FAILURE() << "Reading did not fail.";
        return errSecSuccess;
    }

    ScopedPlatform m_platform;
};

struct SeenItem
{
    std::string label;
    std::map<std::string, std::string> attributes;
};

// What another program sees of an account's items.
std::vector<SeenItem> itemsOf(const char *account)
{
    GHashTable *attributes = g_hash_table_new(g_str_hash, g_str_equal);
    g_hash_table_insert(attributes, const_cast<char *>("account"), const_cast<char *>(account));
    GList *list = secret_service_search_sync(nullptr, nullptr, attributes, SECRET_SEARCH_ALL, nullptr, nullptr);
    std::vector<SeenItem> items;
    for (GList *link = list; link != nullptr; link = link->next) {
        SeenItem item;
        char *label = secret_item_get_label(SECRET_ITEM(link->data));
        item.label = label;
        g_free(label);
        GHashTable *found = secret_item_get_attributes(SECRET_ITEM(link->data));
        GHashTableIter iterator;
        gpointer key = nullptr;
        gpointer value = nullptr;
        g_hash_table_iter_init(&iterator, found);
        while (g_hash_table_iter_next(&iterator, &key, &value) != FALSE) {
            item.attributes[static_cast<const char *>(key)] = static_cast<const char *>(value);
        }
        g_hash_table_unref(found);
        items.push_back(std::move(item));
    }
    g_list_free_full(list, g_object_unref);
    g_hash_table_unref(attributes);
    return items;
}

} // namespace

TEST_F(SecretServiceUnlocked, readsWhatWasAdded)
{
    EXPECT_EQ(add("present", "value"), errSecSuccess);
    EXPECT_EQ(read("present"), errSecSuccess);
    EXPECT_EQ(result(), "value");
}

TEST_F(SecretServiceUnlocked, readingAnAbsentItemIsNotFound)
{
    EXPECT_EQ(read("absent"), errSecItemNotFound);
    EXPECT_FALSE(m_result.isValid());
}

TEST_F(SecretServiceUnlocked, keepsAnyBytes)
{
    const QByteArray everyByte = [] {
        QByteArray bytes("\0start", 6);
        for (int byte = 0; byte < 256; ++byte) {
            bytes.append(static_cast<char>(byte));
        }
        return bytes;
    }();
    for (const QByteArray &data : {QByteArray(), QByteArray(1, '\0'), everyByte, QByteArray(100'000, 'x')}) {
        remove("bytes");
        EXPECT_EQ(add("bytes", data), errSecSuccess);
        EXPECT_EQ(read("bytes"), errSecSuccess);
        EXPECT_EQ(m_result.metaType(), QMetaType::fromType<QByteArray>());
        EXPECT_EQ(result(), data);
    }
}

TEST_F(SecretServiceUnlocked, addingNeverOverwrites)
{
    EXPECT_EQ(add("duplicate", "first"), errSecSuccess);
    EXPECT_EQ(add("duplicate", "second"), errSecDuplicateItem);
    EXPECT_EQ(read("duplicate"), errSecSuccess);
    EXPECT_EQ(result(), "first");
}

TEST_F(SecretServiceUnlocked, itemsOfDifferentGroupsAreDifferentItems)
{
    EXPECT_EQ(add("groups", "none"), errSecSuccess);
    EXPECT_EQ(add("groups", "a", "A"), errSecSuccess);
    EXPECT_EQ(add("groups", "empty", ""), errSecSuccess);
    EXPECT_EQ(add("groups", "a", "A"), errSecDuplicateItem);
    EXPECT_EQ(add("groups", "empty", ""), errSecDuplicateItem);
    EXPECT_EQ(add("groups", "none"), errSecDuplicateItem);

    EXPECT_EQ(read("groups", "A"), errSecSuccess);
    EXPECT_EQ(result(), "a");
    EXPECT_EQ(read("groups", ""), errSecSuccess);
    EXPECT_EQ(result(), "empty");
    EXPECT_EQ(read("groups", "B"), errSecItemNotFound);
}

TEST_F(SecretServiceUnlocked, addingWithoutAGroupLeavesAGroupsItemAlone)
{
    EXPECT_EQ(add("grouped", "a", "A"), errSecSuccess);
    EXPECT_EQ(add("grouped", "none"), errSecSuccess);
    EXPECT_EQ(read("grouped", "A"), errSecSuccess);
    EXPECT_EQ(result(), "a");
}

TEST_F(SecretServiceUnlocked, aQueryWithoutAGroupMatchesAnyGroup)
{
    EXPECT_EQ(add("any", "a", "A"), errSecSuccess);
    EXPECT_EQ(read("any"), errSecSuccess);
    EXPECT_EQ(result(), "a");
    EXPECT_EQ(add("any", "b", "B"), errSecSuccess);
    EXPECT_EQ(remove("any"), errSecSuccess);
    EXPECT_TRUE(itemsOf("any").empty());
}

TEST_F(SecretServiceUnlocked, deletingWithAGroupLeavesOtherGroupsAlone)
{
    EXPECT_EQ(add("one-group", "a", "A"), errSecSuccess);
    EXPECT_EQ(add("one-group", "b", "B"), errSecSuccess);
    EXPECT_EQ(remove("one-group", "A"), errSecSuccess);
    EXPECT_EQ(read("one-group", "A"), errSecItemNotFound);
    EXPECT_EQ(read("one-group", "B"), errSecSuccess);
}

TEST_F(SecretServiceUnlocked, deletingAnAbsentItemIsNotFound)
{
    EXPECT_EQ(remove("never-there"), errSecItemNotFound);
}

TEST_F(SecretServiceUnlocked, otherAccountsAndServicesAreOtherItems)
{
    EXPECT_EQ(add("mine", "value"), errSecSuccess);
    QVariantMap other = query("mine");
    other.insert(kSecAttrService, QStringLiteral("Another"));
    EXPECT_EQ(m_keychain.SecItemCopyMatching(other, nullptr), errSecItemNotFound);
    EXPECT_EQ(m_keychain.SecItemDelete(other), errSecItemNotFound);
    EXPECT_EQ(read("min"), errSecItemNotFound);
    EXPECT_EQ(read("mine"), errSecSuccess);
}

TEST_F(SecretServiceUnlocked, anItemHasANameAPersonUnderstandsAndNoGroupThatWasNotGiven)
{
    EXPECT_EQ(add("seen", "value"), errSecSuccess);
    EXPECT_EQ(add("seen-group", "value", ""), errSecSuccess);

    const auto plain = itemsOf("seen");
    ASSERT_EQ(plain.size(), 1U);
    EXPECT_EQ(plain[0].label, "Tarnwik device key");
    EXPECT_EQ(plain[0].attributes.at("service"), "Tarnwik");
    EXPECT_EQ(plain[0].attributes.count("access_group"), 0U);

    const auto grouped = itemsOf("seen-group");
    ASSERT_EQ(grouped.size(), 1U);
    EXPECT_EQ(grouped[0].attributes.at("access_group"), "");
}

TEST_F(SecretServiceUnlocked, malformedQueriesAreRefused)
{
    QVariantMap withoutClass = query("malformed");
    withoutClass.remove(kSecClass);
    EXPECT_EQ(m_keychain.SecItemCopyMatching(withoutClass, &m_result), errSecParam);
    EXPECT_EQ(m_keychain.SecItemDelete(withoutClass), errSecParam);
    EXPECT_EQ(m_keychain.SecItemAdd(query("malformed")), errSecParam);
}

TEST_F(SecretServiceUnlocked, noEventIsHandledWhileACallBlocks)
{
    int count = 0;
    QTimer timer;
    timer.setInterval(0);
    QObject::connect(&timer, &QTimer::timeout, [&] { ++count; });
    timer.start();
    EXPECT_EQ(add("events", "value"), errSecSuccess);
    EXPECT_EQ(read("events"), errSecSuccess);
    EXPECT_EQ(remove("events"), errSecSuccess);
    EXPECT_EQ(count, 0);
    QCoreApplication::processEvents();
    EXPECT_GT(count, 0);
}

TEST_F(SecretServiceUnlocked, callsMayComeFromSeveralThreadsAtOnce)
{
    std::vector<std::thread> threads;
    std::vector<int> failures(4, 0);
    threads.reserve(failures.size());
    for (std::size_t index = 0; index < failures.size(); ++index) {
        threads.emplace_back([index, &failures] {
            SecretServiceKeychain keychain;
            QVariantMap attributes = query("threads");
            attributes.insert(kSecAttrAccount, QStringLiteral("thread-%1").arg(index));
            QVariantMap item = attributes;
            const QByteArray data = QByteArray::number(static_cast<int>(index));
            item.insert(kSecValueData, data);
            attributes.insert(kSecReturnData, true);
            QVariantMap deletion = attributes;
            deletion.remove(kSecReturnData);
            for (int round = 0; round < 10; ++round) {
                QVariant result;
                failures[index] += keychain.SecItemAdd(item) != errSecSuccess;
                failures[index] += keychain.SecItemCopyMatching(attributes, &result) != errSecSuccess;
                failures[index] += result.toByteArray() != data;
                failures[index] += keychain.SecItemDelete(deletion) != errSecSuccess;
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(failures, std::vector<int>(failures.size(), 0));
}

TEST_F(SecretServiceUnlocked, savingTwiceLeavesOneItemWithTheSecondValue)
{
    for (const std::optional<QString> &group :
         {std::optional<QString>(), std::optional<QString>(QStringLiteral("G"))}) {
        const KeychainStore store(QStringLiteral("Tarnwik"), group);
        const QString account = group ? QStringLiteral("twice-group") : QStringLiteral("twice");
        store.save(QStringLiteral("first"), account);
        store.save(QStringLiteral("zweite ✓"), account);
        EXPECT_EQ(store.read(account), QStringLiteral("zweite ✓"));
        EXPECT_EQ(itemsOf(account.toLatin1().constData()).size(), 1U);
    }
}

TEST_F(SecretServiceUnlocked, bytesThatAreNoUTF8ReadAsStatusZero)
{
    EXPECT_EQ(add("not-utf8", "\xff\xfe"), errSecSuccess);
    const KeychainStore store(QStringLiteral("Tarnwik"), std::nullopt);
    EXPECT_EQ(statusOfReading(store, QStringLiteral("not-utf8")), errSecSuccess);
}

TEST_F(SecretServiceUnlocked, theStoreReportsAMissingItemAndDeletesItSilently)
{
    const KeychainStore store(QStringLiteral("Tarnwik"), std::nullopt);
    EXPECT_NO_THROW(store.delete_(QStringLiteral("missing")));
    EXPECT_EQ(statusOfReading(store, QStringLiteral("missing")), errSecItemNotFound);
}

} // namespace tarnwik::test
